// Conversions that replace what is bad. A StreamConverter stops at each bad element; here is decided what stands in its
// place, and where the conversion goes on.
#include <Lum/LossyConversion.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace Lum {

namespace {

bool HasBadElement(ConversionStatus status) noexcept {
    return status == ConversionStatus::kMalformed || status == ConversionStatus::kUnmappable;
}

/// Converts a whole text without a converter's help where nothing is bad, which is nearly always.
template <class Unit, class Strict>
ConvertedText<std::basic_string<Unit>> Convert(std::string_view bytes, const std::string& from, const std::string& to,
                                               const BadElementFunction& onBad, const Strict& strict) {
    ConvertedText<std::basic_string<Unit>> result = strict();
    if (result.status == ConversionStatus::kDone || result.status == ConversionStatus::kNoSuchEncoding) {
        return result;
    }
    result = {{}, ConversionStatus::kOutputFull, 0};
    LossyConverter converter(from, to, onBad);
    std::array<Unit, 8192 / sizeof(Unit)> block;
    const std::span<char> output(reinterpret_cast<char*>(block.data()), sizeof block);
    while (result.status == ConversionStatus::kOutputFull) {
        const ConversionResult step = converter.Finish(bytes.substr(result.offset), output);
        result.text.append(block.data(), step.written / sizeof(Unit));
        result.offset += step.read;
        result.status = step.status;
    }
    return result;
}

}  // namespace

LossyConverter::LossyConverter(const std::string& from, const std::string& to, BadElementFunction onBad)
    : m_Converter(from, to), m_OnBad(std::move(onBad)) {}

void LossyConverter::Clear() noexcept {
    m_Converter.Clear();
    m_Offset = 0;
    m_Waiting.clear();
    m_Written = 0;
    m_End = ConversionStatus::kDone;
    m_IsFinishing = false;
}

/// Writes what fits of the last replacement.
void LossyConverter::WriteWaiting(std::span<char> output, ConversionResult& result) {
    const std::size_t size = std::min(m_Waiting.size() - m_Written, output.size() - result.written);
    if (size != 0) {
        std::memcpy(output.data() + result.written, m_Waiting.data() + m_Written, size);
    }
    m_Written += size;
    result.written += size;
    if (m_Written == m_Waiting.size()) {
        m_Waiting.clear();
        m_Written = 0;
    }
}

/// Puts a replacement in the place of the bad element that `rest` begins with, and returns the size of that element. If
/// the function ends the conversion, sets m_End and returns 0.
std::size_t LossyConverter::Replace(std::string_view rest, ConversionStatus status) {
    const std::string_view bytes = rest.substr(0, m_Converter.BadSize(rest, status));
    const auto replacement = m_OnBad ? m_OnBad({m_Offset, bytes, status}) : std::optional<std::u16string>(u"\uFFFD");
    if (!replacement) {
        m_End = status;
        return 0;
    }
    m_Waiting = m_Converter.PassOver(bytes.size(), *replacement);
    m_Offset += bytes.size();
    return bytes.size();
}

/// Converts and replaces. What is incomplete is bad if `isLast`.
ConversionResult LossyConverter::ConvertAll(std::string_view input, std::span<char> output, bool isLast) {
    ConversionResult result{m_End, 0, 0};
    while (m_End == ConversionStatus::kDone) {
        WriteWaiting(output, result);
        if (!m_Waiting.empty()) {
            result.status = ConversionStatus::kOutputFull;
            break;
        }
        const std::string_view rest = input.substr(result.read);
        const ConversionResult step = m_Converter.Convert(rest, output.subspan(result.written));
        result.status = step.status;
        result.read += step.read;
        result.written += step.written;
        m_Offset += step.read;
        if (!HasBadElement(step.status) && !(isLast && step.status == ConversionStatus::kIncomplete)) {
            break;
        }
        result.read += Replace(rest.substr(step.read), step.status);
    }
    return result;
}

ConversionResult LossyConverter::Convert(std::string_view input, std::span<char> output) {
    return ConvertAll(input, output, false);
}

ConversionResult LossyConverter::Finish(std::string_view unread, std::span<char> output) {
    ConversionResult result{};
    for (;;) {
        if (!m_IsFinishing) {
            const ConversionResult rest = ConvertAll(unread.substr(result.read), output.subspan(result.written), true);
            result = {rest.status, result.read + rest.read, result.written + rest.written};
            if (result.status != ConversionStatus::kDone) {
                return result;
            }
        }
        const ConversionResult end = m_Converter.Finish(output.subspan(result.written));
        result.written += end.written;
        result.status = end.status;
        m_IsFinishing = end.status == ConversionStatus::kOutputFull;
        if (m_IsFinishing) {
            return result;
        }
        if (end.status == ConversionStatus::kDone || end.status == ConversionStatus::kNoSuchEncoding) {
            Clear();
            return result;
        }
        // All bytes are read, but the last of them hold the start of one more character, as in UTF-7.
        Replace({}, end.status);
    }
}

ConvertedText<std::string> ConvertLossy(std::string_view bytes, const std::string& from, const std::string& to,
                                        const BadElementFunction& onBad) {
    return Convert<char>(bytes, from, to, onBad, [&] { return ConvertText(bytes, from, to); });
}

ConvertedText<std::u16string> ConvertLossyToUTF16(std::string_view bytes, const std::string& from,
                                                  const BadElementFunction& onBad) {
    return Convert<char16_t>(bytes, from, "utf-16", onBad, [&] { return ConvertTextToUTF16(bytes, from); });
}

ConvertedText<std::string> ConvertLossyFromUTF16(std::u16string_view text, const std::string& to,
                                                 const BadElementFunction& onBad) {
    const std::string_view bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
    auto result = Convert<char>(bytes, "utf-16", to, onBad, [&] {
        auto strict = ConvertTextFromUTF16(text, to);
        strict.offset *= sizeof(char16_t);
        return strict;
    });
    result.offset /= sizeof(char16_t);
    return result;
}

}  // namespace Lum
