// Lum: Lum::TimeStamp.
#include <Lum/TimeStamp.h>

#include "time/TimeFamily.h"

namespace Bench::Time {
namespace {

/// The subject's own count begins in 1601; the bridge from 1970 is no part of what is measured.
Lum::TimeStamp FromTicksTo1970(std::int64_t ticks) {
    return Lum::TimeStamp::FromTicks(ticks + Lum::TimeStamp::kTicksTo1970);
}

void AddCases(const std::string& name, const Inputs& inputs) {
    std::vector<Lum::TimeStamp> times;
    for (const std::int64_t ticks : inputs.ticks) {
        times.push_back(FromTicksTo1970(ticks));
    }
    AddTimeCase(kToTicks, name, inputs.fields, times, kAsGiven, [](const Fields& f) {
        return Lum::TimeStamp(f.year, f.month, f.day, f.hour, f.minute, f.second, f.fraction);
    });
    AddTimeCase(kToFields, name, inputs.ticks, inputs.fields, FromTicksTo1970, [](Lum::TimeStamp time) {
        Fields f;
        time.ToYMDHMSF(f.year, f.month, f.day, f.hour, f.minute, f.second, f.fraction);
        return f;
    });
    AddTimeCase(kToText, name, inputs.ticks, inputs.texts, FromTicksTo1970,
                [](Lum::TimeStamp time) { return time.ToW3DTF(); });
}

const AddSubject add{{"Lum", AddCases}};

}  // namespace
}  // namespace Bench::Time
