// Lum::Transcoder: text from one encoding to another; Lum::StreamConverter: the same piece by piece.
//
// Encodings are named as on the Internet ("utf-8", "shift_jis", "iso-8859-1", case ignored) or by their
// TextEncoding number. Narrow text is bytes in the encoding in question, wide text UTF-16. A byte order
// mark is a character like any other; "utf-16" as bytes is in the host's order.
//
// The Transcoder takes a whole text and gives a whole text. It never throws but std::bad_alloc and says
// nothing of failures: without a converter the result is empty; at an element that is malformed,
// incomplete or not in the target encoding the conversion ends, and the result is what was converted
// so far, with the last piece of it (of at most 512 units or 512 bytes) twice. Whoever wants to know
// takes a StreamConverter, which tells where and why it stopped.
//
// Threads: the Transcoder's operations may be called from any thread and from static initialisers; the
// host's converters, which they keep for further use, are shared behind a lock. A StreamConverter is
// used by one thread at a time.
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
    TextEncoding encoding;
    std::string name;                  ///< The preferred one.
    std::vector<std::string> aliases;  ///< Its other names.
    bool isConvertible;                ///< Whether there are converters from and to it.
};

/// Every encoding that EncodingToCharSetID knows by name, by number. Tries each converter: some
/// milliseconds.
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
    /// The name of the encoding of the system's script, "macintosh" say; "utf-8" where there is none.
    [[nodiscard]] static std::string PlatformEncoding();

    // ---- To UTF-16 -------------------------------------------------------------------------------

    [[nodiscard]] static std::u16string EncodingToUTF16(const std::string& bytes, const std::string& encoding);
    [[nodiscard]] static std::u16string UTF8ToUTF16(const std::string& bytes);
    /// The same.
    [[nodiscard]] static std::u16string asUTF16(const std::string& bytes);
    /// From DefaultChannelEncoding(). The name is spelled so.
    [[nodiscard]] static std::u16string filesytemToUTF16(const std::string& bytes);

    // ---- From UTF-16 -----------------------------------------------------------------------------

    [[nodiscard]] static std::string UTF16ToEncoding(const std::u16string& text, const std::string& encoding);
    [[nodiscard]] static std::string UTF16ToUTF8(const std::u16string& text);
    /// The same.
    [[nodiscard]] static std::string asUTF8(const std::u16string& text);
    /// To DefaultChannelEncoding().
    [[nodiscard]] static std::string asFilesystemString(const std::u16string& text);

    // ---- To and from UTF-8, by way of UTF-16 -------------------------------------------------------

    [[nodiscard]] static std::string EncodingToUTF8(const std::string& bytes, const std::string& encoding);
    [[nodiscard]] static std::string UTF8ToEncoding(const std::string& bytes, const std::string& encoding);
};

/// How a call of a StreamConverter ended.
enum class ConversionStatus {
    kDone,            ///< All input is read.
    kOutputFull,      ///< The next element does not fit the output: go on with more room.
    kMalformed,       ///< The next bytes are no text of the source encoding.
    kIncomplete,      ///< The input ends within an element: go on with more input, if there is any.
    kUnmappable,      ///< The next character has no counterpart in the target encoding.
    kNoSuchEncoding,  ///< There is no converter for one of the two encodings.
};

struct ConversionResult {
    ConversionStatus status;
    std::size_t read;     ///< Bytes of the input whose text is written.
    std::size_t written;  ///< Bytes of the output.
};

/// Converts a text that comes and goes in blocks, however they are cut, from any encoding to any other:
///
///     Lum::StreamConverter converter("shift_jis", "utf-8");
///     auto result = converter.Convert(input, output);   // as often as there is input or need of room
///     result = converter.Finish(output);                // once, at the end
///
/// The shift state of both encodings is kept between calls. What a call has not read, the next one is
/// given again, with more behind it. Nothing is ever substituted.
class LUM_API StreamConverter {
public:
    /// Unknown names are no failure here; Convert then answers kNoSuchEncoding.
    StreamConverter(const std::string& from, const std::string& to);
    StreamConverter(StreamConverter&& other) noexcept;
    StreamConverter& operator=(StreamConverter&& other) noexcept;
    ~StreamConverter();

    /// Converts what it can from the start of `input`. `read` ends before an element, on failure before
    /// the one that is bad, also where it is the target that lacks it; the converter then stays there.
    /// With room for 16 bytes no call asks for more without having done something.
    [[nodiscard]] ConversionResult Convert(std::string_view input, std::span<char> output);
    /// Ends the text: writes what leads the target back to its initial state, a shift sequence say, and
    /// makes the converter ready for another text. kOutputFull where that does not fit: repeat it.
    /// After a bad element it says so again, and if the last Convert ended for want of room, kIncomplete.
    [[nodiscard]] ConversionResult Finish(std::span<char> output);
    /// Forgets whatever came before: ready for another text.
    void Clear() noexcept;

private:
    class Implementation;
    std::unique_ptr<Implementation> m_Implementation;
};

}  // namespace Lum
