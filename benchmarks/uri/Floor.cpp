// The least that the results can cost: strings filled with what is known beforehand, found by nobody.
//
// What belongs into the nine strings is asked of Lum ahead of the clock, so that floor and Lum fill
// the same record. The record of a refused text is the empty state.
#include <Lum/URI.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "Case.h"
#include "Family.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

constexpr std::size_t kComponents = 9;

/// The contents of a record in one text, and how many bytes of it belong to each string.
struct Known {
    std::string text;
    std::array<std::uint32_t, kComponents> sizes{};
};

/// Has the layout of the record that is filled, its dispatch pointer included.
struct Record {
    virtual ~Record() = default;
    std::array<std::string, kComponents> components;
    bool isValid = false;
    bool isRelative = false;
    bool isHierarchical = false;
};

/// Opens the record for reading.
struct OpenUri : Lum::URI {
    explicit OpenUri(const std::string& text) { ParseURI(text); }
    [[nodiscard]] Known Contents() const {
        Known known;
        std::size_t next = 0;
        for (const std::string* component : {&m_Scheme, &m_Authority, &m_ServerPort, &m_Path, &m_Query, &m_Fragment,
                                             &m_Username, &m_Password, &m_NonHierarchical}) {
            known.text += *component;
            known.sizes[next++] = static_cast<std::uint32_t>(component->size());
        }
        return known;
    }
};

void Fill(Record& record, const Known& known) {
    const char* from = known.text.data();
    for (std::size_t i = 0; i < kComponents; ++i) {
        if (const std::size_t size = known.sizes[i]; size != 0) {
            record.components[i].assign(from, size);
            from += size;
        } else if (!record.components[i].empty()) {
            record.components[i].clear();
        }
    }
    record.isValid = true;
}

Record FillFresh(const Known& known) {
    Record record;
    Fill(record, known);
    return record;
}

Known Foresee(const std::string& text) { return OpenUri(text).Contents(); }

std::string Copy(const std::string& text) { return text; }

void AddCases(const std::string& name, const Inputs& inputs) {
    AddPreparedCase(kParseFresh, name, inputs.urls, Foresee, FillFresh, Count::TimeAndAllocations);
    AddPreparedCase(kParseOneStep, name, inputs.urls, Foresee, FillFresh);
    AddPreparedCase(
        kParseReused, name, inputs.urls, Foresee,
        [record = Record()](const Known& known) mutable -> const Record& {
            Fill(record, known);
            return record;
        },
        Count::TimeAndAllocations);
    AddCase(kPrint, name, inputs.printed, Copy);
    for (const TextCase& c : inputs.escapes) {
        AddPreparedCase(
            c.name, name, c.texts, [](const std::string& text) -> std::string { return Lum::URI::Escape(text); }, Copy);
    }
    for (const TextCase& c : inputs.unescapes) {
        AddPreparedCase(
            c.name, name, c.texts,
            [](const std::string& text) -> std::string { return Lum::URI::Unescape(text, false); }, Copy);
    }
}

const AddSubject add{{kFloor, nullptr, AddCases}};

}  // namespace
}  // namespace Bench::Uri
