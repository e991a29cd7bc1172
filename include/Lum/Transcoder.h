// Conversion of text from one encoding to another. Lum::Transcoder converts whole texts and reports no
// failure. Lum::ConvertText converts whole texts and reports where and why a conversion stopped.
// Lum::StreamConverter does that for texts in blocks.
//
// Encodings are named as on the Internet ("utf-8", "shift_jis", "iso-8859-1", case ignored) or by their
// TextEncoding number. Narrow text is bytes in the encoding in question, wide text UTF-16. A byte order
// mark is a character like any other; "utf-16" as bytes is in the host's order.
//
// The Transcoder throws only std::bad_alloc. If there is no converter, its result is empty. At an element that
// is malformed, incomplete or not in the target encoding, the conversion ends. The result is then the text up
// to that element.
// Compatibility: the last block of that text, of at most 512 units or 512 bytes, is in the result twice, because
// callers rely on such results. ConvertText and StreamConverter write nothing twice.
//
// Threads: the Transcoder's operations and ConvertText may be called from any thread and from static initialisers; the
// host's converters, which they keep for later calls, are shared and guarded by a lock. A StreamConverter is
// used by one thread at a time.
//
// Cost: linear in the text. The first text from or to an encoding of one byte or two a character makes tables, which
// takes up to 3 milliseconds. They are kept for the life of the process: about 10 KB where every character is one byte,
// up to 200 KB otherwise.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/Export.h>
#include <Lum/Mutex.h>

namespace Lum {

/// The number of a text encoding: base in bits 0 to 15, variant 16 to 25, format 26 to 29.
using TextEncoding = std::uint32_t;

/// The encoding of a name: 0x08000100 for "utf-8", 0x0100 for "utf-16" and "unicode", 0x04000100 for
/// "utf-7", otherwise what the host knows, 0xFFFF where it does not. Only the first 255 bytes count.
[[nodiscard]] LUM_API TextEncoding EncodingToCharSetID(const std::string& name);
/// `bytes` in the encoding `from` as UTF-16; see the head of this file for what cannot be converted.
[[nodiscard]] LUM_API std::u16string CharSetToWide(const std::string& bytes, TextEncoding from);
/// UTF-16 text as bytes in the encoding `to`.
[[nodiscard]] LUM_API std::string WideToCharSet(const std::u16string& text, TextEncoding to);

/// An encoding that has a name.
struct EncodingInfo {
    TextEncoding encoding;             ///< The number, as EncodingToCharSetID gives it.
    std::string name;                  ///< The preferred one.
    std::vector<std::string> aliases;  ///< Its other names.
    bool isConvertible;                ///< Whether there are converters from and to it.
};

/// Every encoding that EncodingToCharSetID knows by name, in the order of their numbers. It makes each converter
/// once to see whether it exists, which takes half a millisecond the first time.
[[nodiscard]] LUM_API std::vector<EncodingInfo> KnownEncodings();

/// Whole texts between encodings. There are no objects of this class.
class LUM_API Transcoder {
public:
    Transcoder() = delete;

    // ---- Names -----------------------------------------------------------------------------------

    /// True for every name, known or not: an unknown one converts to nothing.
    [[nodiscard]] static bool IsValidEncoding(const std::string& name);
    /// "shift_jis" where the system's language is Japanese, otherwise "iso-8859-1".
    [[nodiscard]] static std::string DefaultChannelEncoding();
    /// The name of the encoding of the system's script, for example "macintosh"; "utf-8" if there is none.
    [[nodiscard]] static std::string PlatformEncoding();

    // ---- To UTF-16 -------------------------------------------------------------------------------

    /// From bytes in the encoding of this name.
    [[nodiscard]] static std::u16string EncodingToUTF16(const std::string& bytes, const std::string& encoding);
    /// From UTF-8.
    [[nodiscard]] static std::u16string UTF8ToUTF16(const std::string& bytes);
    /// The same.
    [[nodiscard]] static std::u16string asUTF16(const std::string& bytes);
    /// From DefaultChannelEncoding(). The name is spelled so.
    [[nodiscard]] static std::u16string filesytemToUTF16(const std::string& bytes);

    // ---- From UTF-16 -----------------------------------------------------------------------------

    /// To bytes in the encoding of this name.
    [[nodiscard]] static std::string UTF16ToEncoding(const std::u16string& text, const std::string& encoding);
    /// To UTF-8.
    [[nodiscard]] static std::string UTF16ToUTF8(const std::u16string& text);
    /// The same.
    [[nodiscard]] static std::string asUTF8(const std::u16string& text);
    /// To DefaultChannelEncoding().
    [[nodiscard]] static std::string asFilesystemString(const std::u16string& text);

    // ---- To and from UTF-8, by way of UTF-16 -------------------------------------------------------

    /// From bytes in the encoding of this name to UTF-8.
    [[nodiscard]] static std::string EncodingToUTF8(const std::string& bytes, const std::string& encoding);
    /// From UTF-8 to bytes in the encoding of this name.
    [[nodiscard]] static std::string UTF8ToEncoding(const std::string& bytes, const std::string& encoding);
};

/// How a conversion ended.
enum class ConversionStatus {
    kDone,            ///< All input is read.
    kOutputFull,      ///< The next element does not fit the output of a StreamConverter: go on with more space.
    kMalformed,       ///< The next bytes are no text of the source encoding.
    kIncomplete,      ///< The input ends within an element: a StreamConverter goes on with more input.
    kUnmappable,      ///< The next character has no counterpart in the target encoding.
    kNoSuchEncoding,  ///< There is no converter for one of the two encodings.
};

// ---- Whole texts, and how it went ----------------------------------------------------------------

/// What a text became.
template <class Text>
struct ConvertedText {
    /// All that precedes the element that could not be converted, once; all of the text if `status` is
    /// kDone. Only a whole text ends with what leads its encoding back to the initial state.
    Text text;
    ConversionStatus status;  ///< Never kOutputFull.
    /// Where that element begins in the input, counted in the input's bytes, or in its units where that is
    /// UTF-16; the input's length if `status` is kDone, 0 if it is kNoSuchEncoding.
    std::size_t offset;
};

/// Converts a whole text and reports how far it came. Text, status and offset are those of a StreamConverter that
/// gets the same text in any blocks.
///
///     const auto price = Lum::ConvertText("3 \xE2\x82\xAC", "utf-8", "iso-8859-1");
///     // price.text is "3 ", price.status kUnmappable, price.offset 2
///
/// For a name that is not known, and for an encoding without a converter, the status is kNoSuchEncoding and
/// the text empty, also if the input is empty. Nothing is ever substituted. May throw std::bad_alloc.
/// Linear.
[[nodiscard]] LUM_API ConvertedText<std::string> ConvertText(std::string_view bytes, const std::string& from,
                                                             const std::string& to);
/// The same to UTF-16.
[[nodiscard]] LUM_API ConvertedText<std::u16string> ConvertTextToUTF16(std::string_view bytes, const std::string& from);
/// The same from UTF-16. An unpaired surrogate is malformed, half a pair at the end incomplete.
[[nodiscard]] LUM_API ConvertedText<std::string> ConvertTextFromUTF16(std::u16string_view text, const std::string& to);

// ---- Texts in blocks -----------------------------------------------------------------------------

/// What one call converted.
struct ConversionResult {
    ConversionStatus status;  ///< Why the call ended.
    std::size_t read;         ///< Bytes of the input whose text is written.
    std::size_t written;      ///< Bytes of the output.
};

/// Converts a text that comes and goes in blocks, however they are cut, from any encoding to any other:
///
///     Lum::StreamConverter converter("shift_jis", "utf-8");
///     auto result = converter.Convert(input, output);   // until all input is read
///     result = converter.Finish(output);                // once, at the end
///
/// The shift state of both encodings is kept between calls. Bytes that a call has not read must
/// be passed to the next call again, followed by more input. Nothing is ever substituted. If a call throws
/// std::bad_alloc, the text is lost: Clear makes the converter ready for another one.
class LUM_API StreamConverter {
public:
    /// Unknown names are no failure here; Convert then answers kNoSuchEncoding.
    StreamConverter(const std::string& from, const std::string& to);
    /// What is moved from may only be assigned to or destroyed.
    StreamConverter(StreamConverter&& other) noexcept;
    /// Takes over the other one, with the text it is in.
    StreamConverter& operator=(StreamConverter&& other) noexcept;
    ~StreamConverter();

    /// Converts what it can from the start of `input`. `read` ends before an element, on failure before
    /// the one that is bad, also where it is the target that lacks it; the converter then stays there.
    /// With 16 bytes of output or more, every call that ends with kOutputFull has read or written something.
    [[nodiscard]] ConversionResult Convert(std::string_view input, std::span<char> output);
    /// Ends the text: writes what returns the target to its initial state, such as a shift sequence, and
    /// makes the converter ready for another text. kOutputFull where that does not fit: repeat it.
    /// After a bad element the status is that of the element again. If the last Convert ended because output or
    /// input was missing, it is kIncomplete. In both cases the converter stays as it is.
    [[nodiscard]] ConversionResult Finish(std::span<char> output);
    /// Makes the converter ready for another text, whatever came before.
    void Clear() noexcept;

private:
    friend class LossyConverter;
    class LUM_HIDDEN Implementation;

    std::size_t BadSize(std::string_view input, ConversionStatus status);
    std::string PassOver(std::size_t size, std::u16string_view replacement);

    std::unique_ptr<Implementation> m_Implementation;
};

}  // namespace Lum
