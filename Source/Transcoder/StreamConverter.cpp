// Texts in blocks, through one converter or through two with UTF-16 between them.
//
// With two converters, the first one (the decoder) is ahead of the second one (the encoder): it has read
// elements whose text is not encoded yet. Where the encoder stops, only the input whose text was encoded
// counts as read. A third converter, the follower, finds out how much that is: it decodes the input again,
// with an output of exactly the size of the encoded text.
//
// A LossyConverter passes over a bad element: BadSize says what it is, PassOver goes on behind it.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/Transcoder.h>

#include "Mac/TextConverter.h"
#include "Mac/TextEncodings.h"

namespace Lum {

using namespace Internal;

namespace {

/// Whether the meaning of bytes in this encoding may depend on shift sequences long before them.
constexpr bool KeepsState(TextEncoding encoding) noexcept {
    constexpr TextEncoding utf7 = 0x04000100;
    constexpr TextEncoding firstISO2022 = 0x0820;
    constexpr TextEncoding lastISO2022 = 0x08FF;
    constexpr TextEncoding hz = 0x0A05;
    const TextEncoding base = encoding & 0xFFFF;
    return encoding == utf7 || (base >= firstISO2022 && base <= lastISO2022) || base == hz;
}

/// The size of an encoding's units where it is UTF-16 or UTF-32, otherwise 1.
constexpr std::size_t UnitSize(TextEncoding encoding) noexcept {
    constexpr TextEncoding unicode = 0x0100;
    constexpr std::array<std::size_t, 8> sizes{2, 1, 1, 4, 2, 2, 4, 4};  // by format
    return (encoding & 0xFFFF) == unicode ? sizes[encoding >> 26 & 7] : 1;
}

/// The bytes of the character at the start of a text in UTF-16, which is not empty.
std::size_t CharacterSize(std::string_view text) noexcept {
    char16_t unit = 0;
    std::memcpy(&unit, text.data(), std::min(text.size(), sizeof unit));
    return std::min<std::size_t>((unit & 0xFC00) == 0xD800 ? 4 : 2, text.size());
}

using Block = std::array<char, 8192>;

/// Whether a conversion stopped at an element that no further input or output can help.
constexpr bool IsBad(ConversionStatus status) noexcept {
    return status == ConversionStatus::kMalformed || status == ConversionStatus::kUnmappable;
}

/// Converts with `converter`, and keeps the status in `last`. Does nothing if the input is empty or if `last`
/// is the status of a bad element: the converter is then still at that element.
ConversionResult ConvertUnlessBad(Mac::TextConverter& converter, ConversionStatus& last, std::string_view input,
                                  std::span<char> output) {
    if (IsBad(last) || input.empty()) {
        return {IsBad(last) ? last : ConversionStatus::kDone, 0, 0};
    }
    const ConversionResult step = converter.Convert(input, output);
    last = step.status;
    return step;
}

}  // namespace

class StreamConverter::Implementation {
public:
    Implementation(TextEncoding from, TextEncoding to) : m_From(from), m_To(to), m_KeepsState(KeepsState(from)) {
        const TextEncoding utf16 = Mac::UTF16Encoding();
        if (from == utf16 || to == utf16) {
            m_Encoder = Mac::TextConverter(from, to);
            return;
        }
        m_Decoder = Mac::TextConverter(from, utf16);
        m_Follower = Mac::TextConverter(from, utf16);
        if (m_Decoder && m_Follower) {
            m_Encoder = Mac::TextConverter(utf16, to);
        }
    }

    ConversionResult Convert(std::string_view input, std::span<char> output);
    ConversionResult Finish(std::span<char> output);
    void Clear() noexcept;
    std::size_t BadSize(std::string_view input, ConversionStatus status);
    std::string PassOver(std::size_t size, std::u16string_view replacement);

private:
    [[nodiscard]] std::string_view Pending() const noexcept { return {m_Text.data() + m_Begin, m_End - m_Begin}; }
    ConversionResult EncodePending(std::span<char> output);
    ConversionResult DecodeMore(std::string_view input);
    std::size_t Follow(std::string_view input, std::size_t encoded);
    void FindUnmappable(std::string_view input);
    void FlushEncoder(std::string& text);
    void Encode(std::u16string_view text, std::string& result);

    const TextEncoding m_From;
    const TextEncoding m_To;
    const bool m_KeepsState;
    Mac::TextConverter m_Decoder;   ///< To UTF-16; empty where the encoder does it alone.
    Mac::TextConverter m_Encoder;   ///< From UTF-16; empty where there is no such conversion.
    Mac::TextConverter m_Follower;  ///< Like the decoder, but at the end of what counts as read.
    std::size_t m_Ahead = 0;        ///< Bytes of input by which the decoder is ahead of the follower.
    std::size_t m_Unfollowed = 0;   ///< Bytes of encoded text that the follower has not decoded yet.
    Block m_Text{};                 ///< Decoded text; from m_Begin to m_End it is pending: not encoded yet.
    std::size_t m_Begin = 0;
    std::size_t m_End = 0;
    bool m_IsFinishing = false;
    Mac::TextConverter m_Probe;      ///< Like the decoder, for single elements that are malformed; made when needed.
    std::size_t m_UnmappedRead = 0;  ///< Bytes of the element that the encoder refuses, where they are known.
    std::size_t m_UnmappedText = 0;  ///< Bytes of its pending text.
    // The last status of each converter. One that has found a bad element is not called again.
    ConversionStatus m_Encoded = ConversionStatus::kDone;
    ConversionStatus m_Decoded = ConversionStatus::kDone;
};

ConversionResult StreamConverter::Implementation::EncodePending(std::span<char> output) {
    const ConversionResult step = ConvertUnlessBad(m_Encoder, m_Encoded, Pending(), output);
    m_Begin += step.read;
    return step;
}

/// Decodes input, and appends the text to what is pending.
ConversionResult StreamConverter::Implementation::DecodeMore(std::string_view input) {
    std::copy(m_Text.begin() + static_cast<std::ptrdiff_t>(m_Begin),
              m_Text.begin() + static_cast<std::ptrdiff_t>(m_End), m_Text.begin());
    m_End -= std::exchange(m_Begin, 0);
    const ConversionResult step = ConvertUnlessBad(m_Decoder, m_Decoded, input, std::span(m_Text).subspan(m_End));
    m_End += step.written;
    m_Ahead += step.read;
    return step;
}

/// Returns how many bytes of `input`, which begins at the follower's position, count as read after `encoded`
/// more bytes of text were encoded. Moves the follower there.
std::size_t StreamConverter::Implementation::Follow(std::string_view input, std::size_t encoded) {
    m_Unfollowed += encoded;
    // If the caller does not pass the unread bytes again, the result is wrong, but everything stays in bounds.
    const std::size_t ahead = std::min(m_Ahead, input.size());
    const bool isAllEncoded = Pending().empty();
    if (isAllEncoded && !m_KeepsState) {
        m_Ahead = m_Unfollowed = 0;
        return ahead;
    }
    if (!m_KeepsState) {
        m_Follower.Clear();
    }
    Block text;
    std::size_t read = 0;
    // All input is passed, because an element may share its last byte with the next one, as in UTF-7.
    while (m_Unfollowed > 0) {
        const std::size_t size = std::min(m_Unfollowed, text.size());
        const ConversionResult step = m_Follower.Convert(input.substr(read), std::span(text).first(size));
        read += step.read;
        m_Unfollowed -= step.written;
        if (step.written == 0) {
            break;
        }
    }
    if (!isAllEncoded) {
        m_Ahead -= std::min(read, m_Ahead);
        return read;
    }
    if (read < ahead) {
        // Shift sequences after the last character.
        m_Follower.Convert(input.substr(read, ahead - read), text);
    }
    m_Ahead = m_Unfollowed = 0;
    return ahead;
}

ConversionResult StreamConverter::Implementation::Convert(std::string_view input, std::span<char> output) {
    if (!m_Encoder) {
        return {ConversionStatus::kNoSuchEncoding, 0, 0};
    }
    if (IsBad(m_Encoded)) {
        return {m_Encoded, 0, 0};
    }
    if (!m_Decoder) {
        return ConvertUnlessBad(m_Encoder, m_Encoded, input, output);
    }
    ConversionResult result{ConversionStatus::kDone, 0, 0};
    for (;;) {
        const ConversionResult encoding = EncodePending(output.subspan(result.written));
        result.written += encoding.written;
        result.read += Follow(input.substr(result.read), encoding.read);
        if (!Pending().empty() && encoding.status != ConversionStatus::kIncomplete) {
            if (m_KeepsState && IsBad(encoding.status)) {
                // Without an output, the follower reads the shift sequences before the bad element.
                const std::size_t shifts = m_Follower.Convert(input.substr(result.read), {}).read;
                m_Ahead -= std::min(shifts, m_Ahead);
                result.read += shifts;
            }
            result.status = encoding.status;
            return result;
        }
        const ConversionResult decoding = DecodeMore(input.substr(std::min(result.read + m_Ahead, input.size())));
        if (decoding.written == 0) {
            // All input is read, or the next element cannot be decoded.
            if (Pending().empty()) {
                result.read += Follow(input.substr(result.read), 0);
            }
            result.status = decoding.status == ConversionStatus::kDone && !Pending().empty()
                                ? ConversionStatus::kIncomplete
                                : decoding.status;
            return result;
        }
    }
}

ConversionResult StreamConverter::Implementation::Finish(std::span<char> output) {
    if (!m_Encoder) {
        return {ConversionStatus::kNoSuchEncoding, 0, 0};
    }
    const bool wasBad = IsBad(m_Encoded) || IsBad(m_Decoded);
    // If the end of the text is not converted, that is reported: nothing may be dropped silently.
    const ConversionStatus last = m_Decoder ? m_Decoded : m_Encoded;
    const bool isCut = !Pending().empty() || last == ConversionStatus::kIncomplete ||
                       (!m_Decoder && last == ConversionStatus::kOutputFull);
    if (!m_IsFinishing && (wasBad || isCut)) {
        return {wasBad ? (IsBad(m_Encoded) ? m_Encoded : m_Decoded) : ConversionStatus::kIncomplete, 0, 0};
    }
    if (!std::exchange(m_IsFinishing, true) && m_Decoder) {
        m_Begin = 0;
        m_End = m_Decoder.Flush(m_Text).written;
    }
    ConversionResult step = EncodePending(output);
    std::size_t written = step.written;
    if (Pending().empty()) {
        step = m_Encoder.Flush(output.subspan(written));
        written += step.written;
    }
    if (step.status == ConversionStatus::kDone) {
        Clear();
    }
    return {step.status, 0, written};
}

/// Finds the size of the element at the start of `input` that the encoder refuses, and moves the follower behind it.
void StreamConverter::Implementation::FindUnmappable(std::string_view input) {
    constexpr std::size_t longest = 64;  // bytes of UTF-16; more than any element becomes
    std::array<char, longest> text;
    // The follower's output ends with a whole element. One that becomes more characters needs more space.
    for (std::size_t size = m_Unfollowed + CharacterSize(Pending()); size <= longest; size += sizeof(char16_t)) {
        if (!m_KeepsState) {
            m_Follower.Clear();
        }
        const ConversionResult step = m_Follower.Convert(input, std::span(text).first(size));
        if (step.written > m_Unfollowed) {
            m_UnmappedRead = step.read;
            m_UnmappedText = step.written - m_Unfollowed;
            return;
        }
    }
}

/// How many bytes the bad element has that the last call ended at with `status`, and that `input` begins with.
/// LossyConversion.h says what an element is.
std::size_t StreamConverter::Implementation::BadSize(std::string_view input, ConversionStatus status) {
    const std::size_t unit = UnitSize(m_From);
    std::size_t size = 1;
    if (input.empty()) {
        return 0;  // The caller has not passed the unread bytes again.
    }
    if (m_Decoder && IsBad(m_Encoded)) {
        FindUnmappable(input);
        size = std::max<std::size_t>(m_UnmappedRead, 1);
    } else if (unit != 1) {
        const bool isPair = status == ConversionStatus::kUnmappable && !m_Decoder;
        size = status == ConversionStatus::kIncomplete ? input.size() : isPair ? CharacterSize(input) : unit;
    } else {
        if (!m_Probe) {
            m_Probe = Mac::TextConverter(m_From, Mac::UTF16Encoding());
        }
        const auto isIncomplete = [&] {
            std::array<char, 64> text;
            m_Probe.Clear();
            return m_Probe.Convert(input.substr(0, size), text).status == ConversionStatus::kIncomplete;
        };
        // The start that could become an element, and with it the byte that prevents it.
        while (size <= input.size() && isIncomplete()) {
            ++size;
        }
        if (m_From == Mac::UTF8Encoding()) {
            size = std::max<std::size_t>(size - 1, 1);
        } else {
            const auto isAscii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
            const std::string_view rest = input.substr(1, size - 1);
            size = 1 + static_cast<std::size_t>(std::find_if(rest.begin(), rest.end(), isAscii) - rest.begin());
        }
    }
    return std::min(size, input.size());
}

/// Brings the target to its initial state, and makes an encoder that has refused a character ready to go on.
void StreamConverter::Implementation::FlushEncoder(std::string& text) {
    std::array<char, 64> output;
    for (ConversionStatus status = ConversionStatus::kOutputFull; status == ConversionStatus::kOutputFull;) {
        const ConversionResult step = m_Encoder.Flush(output);
        text.append(output.data(), step.written);
        status = step.status;
    }
    m_Encoder.Clear();
}

/// Appends `text` in the target encoding to `result`, with "?" for each character that the target lacks.
void StreamConverter::Implementation::Encode(std::u16string_view text, std::string& result) {
    std::string_view bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
    if (m_To == Mac::UTF16Encoding()) {
        result += bytes;
        return;
    }
    std::array<char, 64> output;
    while (!bytes.empty()) {
        const ConversionResult step = m_Encoder.Convert(bytes, output);
        result.append(output.data(), step.written);
        bytes.remove_prefix(step.read);
        if (bytes.empty() || step.status == ConversionStatus::kOutputFull) {
            continue;
        }
        // An unpaired surrogate is one unit, as anything but a whole character is.
        bytes.remove_prefix(step.status == ConversionStatus::kUnmappable ? CharacterSize(bytes) : sizeof(char16_t));
        FlushEncoder(result);
        const char16_t question = u'?';
        const ConversionResult instead =
            m_Encoder.Convert({reinterpret_cast<const char*>(&question), sizeof question}, output);
        result.append(output.data(), instead.written);
        if (instead.status != ConversionStatus::kDone) {
            FlushEncoder(result);
        }
    }
}

/// Goes on behind the bad element, which has `size` bytes. Returns what the replacement is in the target encoding.
std::string StreamConverter::Implementation::PassOver(std::size_t size, std::u16string_view replacement) {
    std::string text;
    if (m_Decoder && IsBad(m_Encoded)) {
        // At least a character, also if the caller does not pass the unread bytes again.
        m_Begin +=
            Pending().empty() ? 0 : std::min(std::max(m_UnmappedText, CharacterSize(Pending())), m_End - m_Begin);
        m_Ahead -= std::min(size, m_Ahead);
        FlushEncoder(text);
    } else if (m_Decoder) {
        m_Decoder.Clear();
        m_Follower.Clear();
        m_Ahead = 0;
        m_Decoded = ConversionStatus::kDone;
    } else if (m_From == Mac::UTF16Encoding()) {
        FlushEncoder(text);
    } else {
        m_Encoder.Clear();
    }
    m_Encoded = ConversionStatus::kDone;
    m_Unfollowed = m_UnmappedRead = m_UnmappedText = 0;
    Encode(replacement, text);
    return text;
}

void StreamConverter::Implementation::Clear() noexcept {
    for (Mac::TextConverter* const converter : {&m_Decoder, &m_Encoder, &m_Follower}) {
        if (*converter) {
            converter->Clear();
        }
    }
    m_Begin = m_End = m_Ahead = m_Unfollowed = m_UnmappedRead = m_UnmappedText = 0;
    m_IsFinishing = false;
    m_Encoded = m_Decoded = ConversionStatus::kDone;
}

StreamConverter::StreamConverter(const std::string& from, const std::string& to)
    : m_Implementation(std::make_unique<Implementation>(Mac::WithoutHostOrder(EncodingToCharSetID(from)),
                                                        Mac::WithoutHostOrder(EncodingToCharSetID(to)))) {}
StreamConverter::StreamConverter(StreamConverter&& other) noexcept = default;
StreamConverter& StreamConverter::operator=(StreamConverter&& other) noexcept = default;
StreamConverter::~StreamConverter() = default;

ConversionResult StreamConverter::Convert(std::string_view input, std::span<char> output) {
    return m_Implementation->Convert(input, output);
}

ConversionResult StreamConverter::Finish(std::span<char> output) { return m_Implementation->Finish(output); }

void StreamConverter::Clear() noexcept { m_Implementation->Clear(); }

std::size_t StreamConverter::BadSize(std::string_view input, ConversionStatus status) {
    return m_Implementation->BadSize(input, status);
}

std::string StreamConverter::PassOver(std::size_t size, std::u16string_view replacement) {
    return m_Implementation->PassOver(size, replacement);
}

}  // namespace Lum
