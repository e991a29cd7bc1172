// ICU: its functions for UTF-8, and its converters in two ways: open all the time, and shared by all
// threads as a library would.
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>

#include "Case.h"
#include "transcoding/TranscodingFamily.h"

namespace Bench::Transcoding {
namespace {

/// A fresh text, in a buffer that is not cleared.
template <class Unit>
struct Text {
    std::unique_ptr<Unit[]> units;
    std::int32_t size = 0;
};

void Require(UErrorCode error) {
    if (U_FAILURE(error) != 0) {
        throw std::runtime_error(std::string("ICU: ") + u_errorName(error));
    }
}

Text<char16_t> FromUTF8(const std::string& bytes) {
    Text<char16_t> text{std::unique_ptr<char16_t[]>(new char16_t[bytes.size()])};
    UErrorCode error = U_ZERO_ERROR;
    const auto size = static_cast<std::int32_t>(bytes.size());
    u_strFromUTF8(text.units.get(), size, &text.size, bytes.data(), size, &error);
    Require(error);
    return text;
}

Text<char> ToUTF8(const std::u16string& wide) {
    Text<char> text{std::unique_ptr<char[]>(new char[wide.size() * 3])};
    UErrorCode error = U_ZERO_ERROR;
    const auto size = static_cast<std::int32_t>(wide.size());
    u_strToUTF8(text.units.get(), size * 3, &text.size, wide.data(), size, &error);
    Require(error);
    return text;
}

struct Close {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, Close>;

Converter Open(const std::string& encoding) {
    UErrorCode error = U_ZERO_ERROR;
    Converter converter(ucnv_open(encoding.c_str(), &error));
    Require(error);
    return converter;
}

std::u16string ToWide(UConverter* converter, const std::string& bytes) {
    std::u16string wide;
    wide.reserve(bytes.size());
    const char* from = bytes.data();
    const char* const fromEnd = from + bytes.size();
    std::array<char16_t, 512> piece;
    UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
    while (error == U_BUFFER_OVERFLOW_ERROR) {
        error = U_ZERO_ERROR;
        char16_t* to = piece.data();
        ucnv_toUnicode(converter, &to, piece.data() + piece.size(), &from, fromEnd, nullptr, 1, &error);
        wide.append(piece.data(), to);
    }
    Require(error);
    return wide;
}

std::string FromWide(UConverter* converter, const std::u16string& wide) {
    std::string bytes;
    bytes.reserve(wide.size() * 2);
    const char16_t* from = wide.data();
    const char16_t* const fromEnd = from + wide.size();
    std::array<char, 1024> piece;
    UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
    while (error == U_BUFFER_OVERFLOW_ERROR) {
        error = U_ZERO_ERROR;
        char* to = piece.data();
        ucnv_fromUnicode(converter, &to, piece.data() + piece.size(), &from, fromEnd, nullptr, 1, &error);
        bytes.append(piece.data(), to);
    }
    Require(error);
    return bytes;
}

void AddBufferCases(const std::string& name, const UnicodeCase& c) {
    AddCase(c.toWide + kIntoBuffer, name, c.narrow,
            [buffer = BufferFor<char16_t>(c.narrow, 1)](const std::string& bytes) mutable {
                UErrorCode error = U_ZERO_ERROR;
                std::int32_t size = 0;
                u_strFromUTF8(buffer.data(), static_cast<std::int32_t>(buffer.size()), &size, bytes.data(),
                              static_cast<std::int32_t>(bytes.size()), &error);
                Require(error);
                return size;
            });
    AddCase(c.fromWide + kIntoBuffer, name, c.wide,
            [buffer = BufferFor<char>(c.wide, 3)](const std::u16string& wide) mutable {
                UErrorCode error = U_ZERO_ERROR;
                std::int32_t size = 0;
                u_strToUTF8(buffer.data(), static_cast<std::int32_t>(buffer.size()), &size, wide.data(),
                            static_cast<std::int32_t>(wide.size()), &error);
                Require(error);
                return size;
            });
}

void AddBufferCases(const std::string& name, const EncodingCase& c, const std::shared_ptr<UConverter>& converter) {
    AddCase(c.toWide + kIntoBuffer, name, c.narrow,
            [converter, buffer = BufferFor<char16_t>(c.narrow, 1)](const std::string& bytes) mutable {
                UErrorCode error = U_ZERO_ERROR;
                const auto size =
                    ucnv_toUChars(converter.get(), buffer.data(), static_cast<std::int32_t>(buffer.size()),
                                  bytes.data(), static_cast<std::int32_t>(bytes.size()), &error);
                Require(error);
                return size;
            });
    AddCase(c.fromWide + kIntoBuffer, name, c.wide,
            [converter, buffer = BufferFor<char>(c.wide, 8)](const std::u16string& wide) mutable {
                UErrorCode error = U_ZERO_ERROR;
                const auto size =
                    ucnv_fromUChars(converter.get(), buffer.data(), static_cast<std::int32_t>(buffer.size()),
                                    wide.data(), static_cast<std::int32_t>(wide.size()), &error);
                Require(error);
                return size;
            });
}

void AddOpenCases(const std::string& name, const Inputs& inputs) {
    for (const UnicodeCase& c : inputs.unicode) {
        AddBufferCases(name, c);
        AddCase(c.toWide, name, c.narrow, FromUTF8);
        AddCase(c.fromWide, name, c.wide, ToUTF8);
    }
    for (const EncodingCase& c : inputs.encodings) {
        const std::shared_ptr<UConverter> converter = Open(c.encoding);
        AddBufferCases(name, c, converter);
        AddCase(c.toWide, name, c.narrow, [=](const std::string& bytes) { return ToWide(converter.get(), bytes); });
        AddCase(c.fromWide, name, c.wide, [=](const std::u16string& wide) { return FromWide(converter.get(), wide); });
    }
}

/// A converter that is out of the map while it is in use.
class Cached {
public:
    explicit Cached(const std::string& encoding) {
        {
            const std::lock_guard lock(s_Lock);
            if (const auto found = s_Converters.find(encoding); found != s_Converters.end()) {
                m_Entry = s_Converters.extract(found);
            }
        }
        if (m_Entry.empty()) {
            std::multimap<std::string, Converter> fresh;
            m_Entry = fresh.extract(fresh.emplace(encoding, Open(encoding)));
        }
    }
    Cached(const Cached&) = delete;
    Cached& operator=(const Cached&) = delete;
    ~Cached() {
        const std::lock_guard lock(s_Lock);
        s_Converters.insert(std::move(m_Entry));
    }
    [[nodiscard]] UConverter* Get() const { return m_Entry.mapped().get(); }

private:
    static inline std::mutex s_Lock;
    static inline std::multimap<std::string, Converter> s_Converters;
    std::multimap<std::string, Converter>::node_type m_Entry;
};

void AddCachedCases(const std::string& name, const Inputs& inputs) {
    for (const UnicodeCase& c : inputs.unicode) {
        AddCase(c.toWide, name, c.narrow,
                [](const std::string& bytes) { return ToWide(Cached("utf-8").Get(), bytes); });
        AddCase(c.fromWide, name, c.wide,
                [](const std::u16string& wide) { return FromWide(Cached("utf-8").Get(), wide); });
    }
}

const AddSubject addOpen{{"ICU", AddOpenCases}};
const AddSubject addCached{{"ICU cached", AddCachedCases}};

}  // namespace
}  // namespace Bench::Transcoding
