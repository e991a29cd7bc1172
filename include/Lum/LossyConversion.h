// Conversions that go on where a text cannot be converted: something is put in the place of each bad element.
//
//     Lum::ConvertLossy("caf\xE9 \xE2\x82", "utf-8", "utf-16")           // the units of "caf", U+FFFD, " ", U+FFFD
//     Lum::ConvertLossy("3 \xE2\x82\xAC", "utf-8", "iso-8859-1").text    // "3 ?"
//
// Without a function of the caller's, an element that is bad becomes U+FFFD, or "?" where the target has no U+FFFD.
// What one bad element is:
//
// - in UTF-8 a maximal subpart (Unicode 15, section 3.9): the longest start of a well-formed character that is there,
//   otherwise one byte, so "\xE1\x80\xE2\xF0\x91\x92\xF1\xBFA" has four;
// - in UTF-16 a surrogate that is not in a pair, in UTF-32 four bytes, at the end of either the bytes that are left;
// - in any other encoding a byte, with the bytes above 7F behind it that belong to its code. An ASCII byte behind a bad
//   one is always read again, so that no quotation mark is lost;
// - where the target lacks a character, the bytes of that character.
//
// In an encoding with shift sequences (ISO 2022, HZ, UTF-7) what follows malformed bytes is read in the initial state.
//
// Threads: ConvertLossy and its siblings may be called from any thread. A LossyConverter is used by one at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include <Lum/Export.h>
#include <Lum/Transcoder.h>

namespace Lum {

/// An element that could not be converted.
struct BadElement {
    std::uint64_t offset;     ///< Where it begins, in bytes from the start of the text.
    std::string_view bytes;   ///< Valid during the call. None where bits of the last byte of UTF-7 are left over.
    ConversionStatus status;  ///< kMalformed, kIncomplete (at the end of the text) or kUnmappable.
};

/// Gives what stands in the place of a bad element, which may be nothing, or std::nullopt to end the conversion
/// there. Of this text, each character that the target lacks becomes "?". What the function throws reaches the caller.
using BadElementFunction = std::function<std::optional<std::u16string>(const BadElement& bad)>;

/// Converts a whole text. Text, status and offset are those of a LossyConverter that gets it in any blocks. The status
/// is kDone, kNoSuchEncoding, or what is wrong with the element where `onBad` ended the conversion, which is then at
/// `offset`. May throw std::bad_alloc. Linear, also where every byte is bad.
[[nodiscard]] LUM_API ConvertedText<std::string> ConvertLossy(std::string_view bytes, const std::string& from,
                                                              const std::string& to,
                                                              const BadElementFunction& onBad = {});
/// The same to UTF-16.
[[nodiscard]] LUM_API ConvertedText<std::u16string> ConvertLossyToUTF16(std::string_view bytes, const std::string& from,
                                                                        const BadElementFunction& onBad = {});
/// The same from UTF-16. `offset` counts units, the offset that `onBad` gets counts bytes.
[[nodiscard]] LUM_API ConvertedText<std::string> ConvertLossyFromUTF16(std::u16string_view text, const std::string& to,
                                                                       const BadElementFunction& onBad = {});

/// Converts a text in blocks, as StreamConverter does, and replaces what is bad:
///
///     Lum::LossyConverter converter("utf-8", "shift_jis");
///     auto result = converter.Convert(input, output);    // until all input is read, or is incomplete
///     result = converter.Finish(unread, output);         // at the end, until the status is not kOutputFull
///
/// Bytes that a call has not read must be passed to the next call again. If a call throws, the text is lost: Clear
/// makes the converter ready for another one.
class LUM_API LossyConverter {
public:
    /// Unknown names are no failure here; Convert then answers kNoSuchEncoding.
    LossyConverter(const std::string& from, const std::string& to, BadElementFunction onBad = {});

    /// Converts what it can from the start of `input`. The status is kDone, kOutputFull, kIncomplete (the rest of the
    /// input may become an element with more behind it), kNoSuchEncoding, or that of the element where the function
    /// ended the conversion; `read` ends before that element, and the converter stays there.
    /// With 16 bytes of output or more every call makes progress; a replacement may be written in parts.
    [[nodiscard]] ConversionResult Convert(std::string_view input, std::span<char> output);
    /// Ends the text. `unread` is what Convert has left of it; what is incomplete there is bad. kOutputFull where the
    /// rest does not fit: repeat it with what is still unread. With kDone the converter is ready for another text.
    [[nodiscard]] ConversionResult Finish(std::string_view unread, std::span<char> output);
    /// Makes the converter ready for another text, whatever came before.
    void Clear() noexcept;

private:
    ConversionResult ConvertAll(std::string_view input, std::span<char> output, bool isLast);
    std::size_t Replace(std::string_view rest, ConversionStatus status);
    void WriteWaiting(std::span<char> output, ConversionResult& result);

    StreamConverter m_Converter;
    BadElementFunction m_OnBad;
    std::uint64_t m_Offset = 0;  ///< How much of the text is read.
    std::string m_Waiting;       ///< Replacements in the target encoding, from m_Written on not yet written.
    std::size_t m_Written = 0;
    ConversionStatus m_End = ConversionStatus::kDone;  ///< Of the element where the function ended the conversion.
    bool m_IsFinishing = false;
};

}  // namespace Lum
