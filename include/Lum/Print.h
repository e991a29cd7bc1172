// How values read in formats, logs and the messages of tests.
//
//     fmt::print("{} {:r}\n", time, uri);            // behind fmt/format.h
//     std::format("{:>40}", uri);                    // where the standard library has it
//     EXPECT_EQ(uri, other);                         // GoogleTest prints both
//
// URIs print as ToString(false) gives them, with "r" redacted (see <Lum/Redaction.h>); CString as UTF-8; a time as
// ToW3DTF gives it; relations and conversion statuses as words; what a conversion gave as its status and where it
// ended. Formats take fill, alignment, width and precision as for a string; "r" stands where its type would: "{:>40r}".
//
// Include it behind <fmt/format.h> to format with {fmt}, from version 9.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <version>

#include <Lum/CString.h>
#include <Lum/Redaction.h>
#include <Lum/TimeStamp.h>
#include <Lum/Transcoder.h>
#include <Lum/URI.h>

#ifdef __cpp_lib_format
#include <format>
#endif

namespace Lum {

/// The text of a value, as above.
[[nodiscard]] inline std::string PrintedText(const URI& uri) { return uri.ToString(false); }
[[nodiscard]] inline std::string PrintedText(const CString& text) { return text.ToUTF8(); }
[[nodiscard]] inline std::string PrintedText(const TimeStamp& time) { return time.ToW3DTF(); }
/// "none", "child", "same" or "parent"; the number of any other value.
[[nodiscard]] inline std::string PrintedText(RelationCode relation) {
    constexpr std::array<std::string_view, 4> words{"none", "child", "same", "parent"};
    const auto number = static_cast<std::size_t>(relation);
    return number < words.size() ? std::string(words[number]) : std::to_string(number);
}
/// "done", "output full", "malformed", "incomplete", "unmappable" or "no such encoding"; else the number.
[[nodiscard]] inline std::string PrintedText(ConversionStatus status) {
    constexpr std::array<std::string_view, 6> words{"done",       "output full", "malformed",
                                                    "incomplete", "unmappable",  "no such encoding"};
    const auto number = static_cast<std::size_t>(status);
    return number < words.size() ? std::string(words[number]) : std::to_string(number);
}
/// "malformed at 3, 2 units". The text itself is not shown.
template <class Text>
[[nodiscard]] std::string PrintedText(const ConvertedText<Text>& result) {
    return PrintedText(result.status) + " at " + std::to_string(result.offset) + ", " +
           std::to_string(result.text.size()) + " units";
}
/// "done: 3 read, 6 written".
[[nodiscard]] inline std::string PrintedText(const ConversionResult& result) {
    return PrintedText(result.status) + ": " + std::to_string(result.read) + " read, " +
           std::to_string(result.written) + " written";
}

namespace Internal {

template <class Value>
inline constexpr bool isPrinted = std::derived_from<Value, URI>;
template <>
inline constexpr bool isPrinted<CString> = true;
template <>
inline constexpr bool isPrinted<TimeStamp> = true;
template <>
inline constexpr bool isPrinted<RelationCode> = true;
template <>
inline constexpr bool isPrinted<ConversionStatus> = true;
template <>
inline constexpr bool isPrinted<ConversionResult> = true;
template <class Text>
inline constexpr bool isPrinted<ConvertedText<Text>> = true;

/// What both libraries ask of a formatter, over theirs for strings and their view of a format.
template <class Value, class StringFormatter, class FormatView>
struct PrintFormatter : StringFormatter {
    template <class Context>
    constexpr auto parse(Context& context) {
        if constexpr (std::derived_from<Value, URI>) {
            const std::string_view format(context.begin(), context.end());
            const std::string_view own = format.substr(0, format.find('}'));
            if (own.ends_with('r')) {
                m_IsRedacted = true;
                FormatView rest(own.substr(0, own.size() - 1));
                static_cast<void>(StringFormatter::parse(rest));
                return context.begin() + static_cast<std::ptrdiff_t>(own.size());
            }
        }
        return StringFormatter::parse(context);
    }
    template <class Context>
    auto format(const Value& value, Context& context) const {
        std::string text = PrintedText(value);
        return StringFormatter::format(std::string_view(m_IsRedacted ? text = Redacted(text) : text), context);
    }

private:
    bool m_IsRedacted = false;
};

}  // namespace Internal

// ---- What GoogleTest looks for -------------------------------------------------------------------

/// Writes PrintedText.
inline void PrintTo(const URI& uri, std::ostream* out) { *out << PrintedText(uri); }
inline void PrintTo(const TimeStamp& time, std::ostream* out) { *out << PrintedText(time); }
inline void PrintTo(RelationCode relation, std::ostream* out) { *out << PrintedText(relation); }
inline void PrintTo(ConversionStatus status, std::ostream* out) { *out << PrintedText(status); }
inline void PrintTo(const ConversionResult& result, std::ostream* out) { *out << PrintedText(result); }
template <class Text>
void PrintTo(const ConvertedText<Text>& result, std::ostream* out) {
    *out << PrintedText(result);
}

}  // namespace Lum

/// The same, where GoogleTest finds it for a global class.
inline void PrintTo(const CString& text, std::ostream* out) { *out << Lum::PrintedText(text); }

/// @cond
#ifdef FMT_VERSION
template <class Value>
requires Lum::Internal::isPrinted<Value>
struct fmt::formatter<Value, char, void>
    : Lum::Internal::PrintFormatter<Value, fmt::formatter<std::string_view, char, void>, fmt::format_parse_context> {
};
#endif
#ifdef __cpp_lib_format
template <class Value>
requires Lum::Internal::isPrinted<Value>
struct std::formatter<Value, char>
    : Lum::Internal::PrintFormatter<Value, std::formatter<std::string_view, char>, std::format_parse_context> {
};
#endif
/// @endcond
