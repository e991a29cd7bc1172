// Text between encodings: whole texts, what went wrong and where, texts in blocks, and texts whose bad bytes are
// replaced.
#include <array>
#include <iostream>
#include <mutex>
#include <optional>
#include <string>

#include <Lum/LossyConversion.h>
#include <Lum/Mutex.h>
#include <Lum/Transcoder.h>

namespace {

const char* Say(Lum::ConversionStatus status) {
    switch (status) {
        case Lum::ConversionStatus::kDone:
            return "done";
        case Lum::ConversionStatus::kOutputFull:
            return "output full";
        case Lum::ConversionStatus::kMalformed:
            return "malformed";
        case Lum::ConversionStatus::kIncomplete:
            return "incomplete";
        case Lum::ConversionStatus::kUnmappable:
            return "unmappable";
        case Lum::ConversionStatus::kNoSuchEncoding:
            return "no such encoding";
    }
    return "?";
}

void WholeTexts() {
    using Lum::Transcoder;
    const std::u16string wide = Transcoder::EncodingToUTF16("\x83\x5C", "shift_jis");
    std::cout << Transcoder::UTF16ToUTF8(wide) << ' ' << Transcoder::UTF16ToEncoding(wide, "euc-jp").size() << ' '
              << Transcoder::UTF8ToUTF16("caf\xC3\xA9").size() << Transcoder::asUTF16("a").size()
              << Transcoder::asUTF8(u"b") << ' ' << Transcoder::EncodingToUTF8("caf\xE9", "latin1") << ' '
              << Transcoder::UTF8ToEncoding("caf\xC3\xA9", "latin1").size() << '\n';
    std::cout << Transcoder::DefaultChannelEncoding() << ' ' << Transcoder::PlatformEncoding() << ' '
              << Transcoder::filesytemToUTF16("\xE9").size() << Transcoder::asFilesystemString(u"\u00E9").size()
              << Transcoder::IsValidEncoding("any name") << '\n';

    const Lum::TextEncoding cyrillic = Lum::EncodingToCharSetID("windows-1251");
    const std::u16string word = Lum::CharSetToWide("\xEC\xE8\xF0", cyrillic);
    std::cout << Transcoder::UTF16ToUTF8(word) << ' ' << Lum::WideToCharSet(word, cyrillic).size() << '\n';

    for (const Lum::EncodingInfo& info : Lum::KnownEncodings()) {
        if (info.encoding == cyrillic) {
            std::cout << info.name << ", also " << info.aliases.size() << " names, " << info.isConvertible << '\n';
        }
    }
}

// An editor that says which character a file's encoding does not have.
void HowItWent() {
    const auto price = Lum::ConvertText("3 \xE2\x82\xAC", "utf-8", "iso-8859-1");
    std::cout << Say(price.status) << " at byte " << price.offset << " behind \"" << price.text << "\"\n";
    const Lum::ConvertedText<std::u16string> cut = Lum::ConvertTextToUTF16("\x83\x5C\x83", "shift_jis");
    std::cout << Say(cut.status) << " at byte " << cut.offset << ", "
              << Say(Lum::ConvertTextFromUTF16(u"\xD800 ", "utf-8").status) << ", "
              << Say(Lum::ConvertText("", "klingon", "utf-8").status) << '\n';
}

// A file in blocks that end within characters.
void Blocks() {
    Lum::StreamConverter converter("utf-8", "utf-16");
    converter = Lum::StreamConverter("utf-8", "utf-16be");  // The next file goes to another system.
    std::array<char, 64> output;
    std::string rest;
    for (const char* block : {"caf\xC3", "\xA9 \xE2\x82", "\xAC"}) {
        rest += block;
        const Lum::ConversionResult result = converter.Convert(rest, output);
        std::cout << result.read << " read, " << result.written << " written, " << Say(result.status) << '\n';
        rest.erase(0, result.read);
    }
    std::cout << Say(converter.Finish(output).status) << '\n';
    converter.Clear();  // Ready for the next file, whatever the last one was.
}

// A mail, shown whatever is wrong with it.
void BadBytes() {
    std::cout << Lum::ConvertLossy("caf\xE9 \xE2\x82", "utf-8", "utf-8").text << ' '
              << Lum::ConvertLossyToUTF16("\xFF", "utf-8").text.size()
              << Lum::ConvertLossyFromUTF16(u"3 \u20AC", "latin1").text << '\n';

    const Lum::BadElementFunction inHex = [](const Lum::BadElement& bad) -> std::optional<std::u16string> {
        std::cout << bad.bytes.size() << " bad at " << bad.offset << ", " << Say(bad.status) << '\n';
        return u"<?>";
    };
    Lum::LossyConverter converter("utf-8", "iso-8859-1", inHex);
    std::array<char, 64> output;
    const std::string mail = "a\xFF \xE2\x82\xAC\xC3";
    Lum::ConversionResult result = converter.Convert(mail, output);
    std::cout << std::string_view(output.data(), result.written);
    result = converter.Finish(std::string_view(mail).substr(result.read), output);
    std::cout << std::string_view(output.data(), result.written) << '\n';
    converter.Clear();
}

// A list that several threads write to. It cannot be copied by mistake.
class Log : Lum::LumThreadUncopyable {
public:
    void Add(const std::string& line) {
        const Lum::ScopedLock lock(m_Mutex);
        m_Mutex.Lock();  // The same thread may lock it again.
        m_Lines += line;
        m_Mutex.Unlock();
    }
    std::string Get() {
        const std::lock_guard<Lum::Mutex> lock(m_Mutex);
        return m_Lines;
    }
    void Clear() {
        m_Mutex.lock();
        m_Lines.clear();
        m_Mutex.unlock();
    }

private:
    Lum::Mutex m_Mutex;
    std::string m_Lines;
};

}  // namespace

int main() {
    WholeTexts();
    HowItWent();
    Blocks();
    BadBytes();
    Log log;
    log.Add("one ");
    log.Add("two");
    std::cout << log.Get() << '\n';
    log.Clear();
}
