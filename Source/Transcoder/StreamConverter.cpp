// Blocks of text through one converter, or through two with UTF-16 between them.
//
// With two, the first one runs ahead: it has read elements whose text the second has not written yet.
// Where the second one stops, the input's place is the one that belongs to the text it has taken. It
// is found by a third converter, the follower, which reads the input again and is given room for
// just that text.
#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/Transcoder.h>

#include "Mac/TextConverter.h"
#include "Mac/TextEncodings.h"

namespace Lum {
namespace {

ConversionStatus StatusOf(Mac::Outcome outcome) noexcept {
    switch (outcome) {
        case Mac::Outcome::kDone:
            return ConversionStatus::kDone;
        case Mac::Outcome::kFull:
            return ConversionStatus::kOutputFull;
        case Mac::Outcome::kIncomplete:
            return ConversionStatus::kIncomplete;
        case Mac::Outcome::kUnmappable:
            return ConversionStatus::kUnmappable;
        case Mac::Outcome::kMalformed:
        case Mac::Outcome::kFailed:
            break;
    }
    return ConversionStatus::kMalformed;
}

/// Whether what bytes mean in this encoding may hang on shift sequences long before them.
constexpr bool KeepsState(TextEncoding encoding) noexcept {
    constexpr TextEncoding utf7 = 0x04000100;
    constexpr TextEncoding firstISO2022 = 0x0820;
    constexpr TextEncoding lastISO2022 = 0x08FF;
    constexpr TextEncoding hz = 0x0A05;
    const TextEncoding base = encoding & 0xFFFF;
    return encoding == utf7 || (base >= firstISO2022 && base <= lastISO2022) || base == hz;
}

using Block = std::array<char, 8192>;

constexpr bool IsBad(Mac::Outcome outcome) noexcept {
    return outcome == Mac::Outcome::kMalformed || outcome == Mac::Outcome::kUnmappable ||
           outcome == Mac::Outcome::kFailed;
}

/// Converts with `converter`, unless there is nothing to convert or `last` says that it met a bad element
/// before.
Mac::Step ConvertUnlessBad(Mac::TextConverter& converter, Mac::Outcome& last, std::string_view input,
                           std::span<char> output) {
    if (IsBad(last) || input.empty()) {
        return {IsBad(last) ? last : Mac::Outcome::kDone, 0, 0};
    }
    const Mac::Step step = converter.Convert(input, output);
    last = step.outcome;
    return step;
}

}  // namespace

class StreamConverter::Implementation {
public:
    Implementation(TextEncoding from, TextEncoding to) : m_KeepsState(KeepsState(from)) {
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

private:
    [[nodiscard]] std::string_view Pending() const noexcept { return {m_Text.data() + m_Begin, m_End - m_Begin}; }
    Mac::Step EncodePending(std::span<char> output);
    Mac::Step DecodeMore(std::string_view input);
    std::size_t Follow(std::string_view input, std::size_t encoded);
    std::size_t SkipShifts(std::string_view input);

    const bool m_KeepsState;
    Mac::TextConverter m_Decoder;   ///< To UTF-16; empty where the encoder does it alone.
    Mac::TextConverter m_Encoder;   ///< From UTF-16; empty where there is no such conversion.
    Mac::TextConverter m_Follower;  ///< As the decoder, at the place up to which the input counts as read.
    std::size_t m_Ahead = 0;        ///< By how many bytes of input the decoder is ahead of that place.
    std::size_t m_Unfollowed = 0;   ///< Bytes of text encoded that come from behind it.
    Block m_Text{};                 ///< What is decoded; from m_Begin to m_End still to be encoded.
    std::size_t m_Begin = 0;
    std::size_t m_End = 0;
    bool m_IsFinishing = false;
    // A converter that met a bad element is at it, and is not asked again.
    Mac::Outcome m_Encoded = Mac::Outcome::kDone;
    Mac::Outcome m_Decoded = Mac::Outcome::kDone;
};

Mac::Step StreamConverter::Implementation::EncodePending(std::span<char> output) {
    const Mac::Step step = ConvertUnlessBad(m_Encoder, m_Encoded, Pending(), output);
    m_Begin += step.read;
    return step;
}

/// Decodes to behind what is pending.
Mac::Step StreamConverter::Implementation::DecodeMore(std::string_view input) {
    std::copy(m_Text.begin() + static_cast<std::ptrdiff_t>(m_Begin),
              m_Text.begin() + static_cast<std::ptrdiff_t>(m_End), m_Text.begin());
    m_End -= std::exchange(m_Begin, 0);
    const Mac::Step step = ConvertUnlessBad(m_Decoder, m_Decoded, input, std::span(m_Text).subspan(m_End));
    m_End += step.written;
    m_Ahead += step.read;
    return step;
}

/// Tells how many bytes of `input`, which starts at the follower's place, count as read when `encoded`
/// more bytes of text are encoded, and takes the follower there.
std::size_t StreamConverter::Implementation::Follow(std::string_view input, std::size_t encoded) {
    m_Unfollowed += encoded;
    // A caller who does not give the unread bytes again gets nonsense, but stays in bounds.
    const std::size_t ahead = std::min(m_Ahead, input.size());
    const bool isLevel = Pending().empty();
    if (isLevel && !m_KeepsState) {
        m_Ahead = m_Unfollowed = 0;
        return ahead;
    }
    if (!m_KeepsState) {
        m_Follower.Clear();
    }
    Block text;
    std::size_t read = 0;
    // All input is offered, for an element may share its last byte with the next one, as in UTF-7.
    while (m_Unfollowed > 0) {
        const std::size_t room = std::min(m_Unfollowed, text.size());
        const Mac::Step step = m_Follower.Convert(input.substr(read), std::span(text).first(room));
        read += step.read;
        m_Unfollowed -= step.written;
        if (step.written == 0) {
            break;
        }
    }
    if (!isLevel) {
        m_Ahead -= std::min(read, m_Ahead);
        return read;
    }
    if (read < ahead) {
        // Shift sequences behind the last character.
        m_Follower.Convert(input.substr(read, ahead - read), text);
    }
    m_Ahead = m_Unfollowed = 0;
    return ahead;
}

/// How many bytes of shift sequences are at the follower's place, ahead of the bad element. Leaves it
/// somewhere behind them: it is not needed any more.
std::size_t StreamConverter::Implementation::SkipShifts(std::string_view input) {
    Block text;
    std::size_t read = 0;
    std::size_t offered = 1;
    while (read + offered <= input.size()) {
        const Mac::Step step = m_Follower.Convert(input.substr(read, offered), text);
        if (step.written != 0 || IsBad(step.outcome)) {
            break;
        }
        read += step.read;
        offered = step.read == 0 ? offered + 1 : 1;
    }
    return read;
}

ConversionResult StreamConverter::Implementation::Convert(std::string_view input, std::span<char> output) {
    if (!m_Encoder) {
        return {ConversionStatus::kNoSuchEncoding, 0, 0};
    }
    if (IsBad(m_Encoded)) {
        return {StatusOf(m_Encoded), 0, 0};
    }
    if (!m_Decoder) {
        const Mac::Step step = ConvertUnlessBad(m_Encoder, m_Encoded, input, output);
        return {StatusOf(step.outcome), step.read, step.written};
    }
    ConversionResult result{ConversionStatus::kDone, 0, 0};
    for (;;) {
        const Mac::Step encoding = EncodePending(output.subspan(result.written));
        result.written += encoding.written;
        result.read += Follow(input.substr(result.read), encoding.read);
        if (!Pending().empty() && encoding.outcome != Mac::Outcome::kIncomplete) {
            if (m_KeepsState && IsBad(encoding.outcome)) {
                result.read += SkipShifts(input.substr(result.read));
            }
            result.status = StatusOf(encoding.outcome);
            return result;
        }
        const Mac::Step decoding = DecodeMore(input.substr(std::min(result.read + m_Ahead, input.size())));
        if (decoding.written == 0) {
            // All is read, or what comes next is bad.
            if (Pending().empty()) {
                result.read += Follow(input.substr(result.read), 0);
            }
            result.status = decoding.outcome == Mac::Outcome::kDone && !Pending().empty()
                                ? ConversionStatus::kIncomplete
                                : StatusOf(decoding.outcome);
            return result;
        }
    }
}

ConversionResult StreamConverter::Implementation::Finish(std::span<char> output) {
    if (!m_Encoder) {
        return {ConversionStatus::kNoSuchEncoding, 0, 0};
    }
    const bool wasBad = IsBad(m_Encoded) || IsBad(m_Decoded);
    if (!m_IsFinishing && (wasBad || !Pending().empty())) {
        return {wasBad ? StatusOf(IsBad(m_Encoded) ? m_Encoded : m_Decoded) : ConversionStatus::kIncomplete, 0, 0};
    }
    if (!std::exchange(m_IsFinishing, true) && m_Decoder) {
        m_Begin = 0;
        m_End = m_Decoder.Flush(m_Text).written;
    }
    Mac::Step step = EncodePending(output);
    std::size_t written = step.written;
    if (Pending().empty()) {
        step = m_Encoder.Flush(output.subspan(written));
        written += step.written;
    }
    if (step.outcome == Mac::Outcome::kDone) {
        Clear();
    }
    return {StatusOf(step.outcome), 0, written};
}

void StreamConverter::Implementation::Clear() noexcept {
    for (Mac::TextConverter* const converter : {&m_Decoder, &m_Encoder, &m_Follower}) {
        if (*converter) {
            converter->Clear();
        }
    }
    m_Begin = m_End = m_Ahead = m_Unfollowed = 0;
    m_IsFinishing = false;
    m_Encoded = m_Decoded = Mac::Outcome::kDone;
}

StreamConverter::StreamConverter(const std::string& from, const std::string& to)
    : m_Implementation(std::make_unique<Implementation>(EncodingToCharSetID(from), EncodingToCharSetID(to))) {}
StreamConverter::StreamConverter(StreamConverter&& other) noexcept = default;
StreamConverter& StreamConverter::operator=(StreamConverter&& other) noexcept = default;
StreamConverter::~StreamConverter() = default;

ConversionResult StreamConverter::Convert(std::string_view input, std::span<char> output) {
    return m_Implementation->Convert(input, output);
}

ConversionResult StreamConverter::Finish(std::span<char> output) { return m_Implementation->Finish(output); }

void StreamConverter::Clear() noexcept { m_Implementation->Clear(); }

}  // namespace Lum
