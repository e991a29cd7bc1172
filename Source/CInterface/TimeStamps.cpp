// Time stamps for C, where they are plain counts of ticks.
#include <cstdint>
#include <limits>
#include <string>

#include <Lum/TimeStamp.h>

#include "Source/CInterface/Call.h"

using namespace Lum::Internal;
using Lum::TimeStamp;

static_assert(LUM_TICKS_PER_SECOND == TimeStamp::kTicksPerSecond && LUM_TICKS_TO_1970 == TimeStamp::kTicksTo1970);

int64_t lum_time_now() {
    TimeStamp now;
    now.SetToCurrentTime();
    return now.GetTicks();
}

lum_status lum_time_from_fields(const lum_time_fields* fields, int64_t* ticks) {
    if (fields == nullptr || ticks == nullptr) {
        return LUM_BAD_ARGUMENT;
    }
    // Without a fraction, which TimeStamp takes as decimal digits and splits into ticks.
    const TimeStamp second(fields->year, fields->month, fields->day, fields->hour, fields->minute, fields->second, 0);
    using Limits = std::numeric_limits<std::int64_t>;
    if (__builtin_add_overflow(second.GetTicks(), fields->ticks, ticks)) {
        *ticks = fields->ticks < 0 ? Limits::min() : Limits::max();
    }
    return LUM_OK;
}

lum_status lum_time_to_fields(int64_t ticks, lum_time_fields* fields) {
    if (fields == nullptr) {
        return LUM_BAD_ARGUMENT;
    }
    unsigned int fraction = 0;
    TimeStamp::FromTicks(ticks).ToYMDHMSF(fields->year, fields->month, fields->day, fields->hour, fields->minute,
                                          fields->second, fraction);
    // Negative before 1601, where it is kept modulo 2^32.
    fields->ticks = static_cast<int>(fraction);
    return LUM_OK;
}

lum_status lum_time_text(int64_t ticks, char* buffer, size_t capacity, size_t* size) {
    return Answered(Buffer<char>{buffer, capacity, size}, [&](std::string& text) {
        text = TimeStamp::FromTicks(ticks).ToW3DTF();
        return LUM_OK;
    });
}
