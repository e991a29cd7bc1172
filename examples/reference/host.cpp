// What the host gives: its strings, names as HFS and old files keep them, handles, resource files, texts by number and
// by name, tables of translations; and the functions with another runtime's names.
#include <cstring>
#include <filesystem>
#include <iostream>
#include <string>

#include <Lum/CString.h>
#include <Lum/Platform.h>
#include <Lum/ResourceFile.h>

namespace {

constexpr unsigned long kUTF8 = 0x08000100;
constexpr unsigned long kText = 0x54455854;  // 'TEXT'

void HostStrings() {
    const CFStringRef word = CFStringCreateWithLPCSTR("caf\xC3\xA9", -1, kUTF8);
    CString text;
    text.SetFromCFStringRef(word, kUTF8);
    char bytes[16];
    CFStringGetLPSTR(word, bytes, sizeof bytes, kUTF8);
    char16_t units[16];
    CFStringGetLPWSTR(word, units, 15, 0);
    std::cout << text << ' ' << std::strlen(bytes) << " bytes, " << CString(units).GetLength() << " units\n";

    // The string that a CString keeps is given back to it.
    const CFStringRef kept = text.GetCFStringRef(kUTF8);
    CFTypeRef mine = CFRetain(kept);
    text.ReleaseCFStringRef(kept);
    CFRelease(mine);
    CFRelease(word);

    // Without a copy: the texts outlive the strings.
    const CFStringRef strings[] = {CFStringCreateWithLPCSTRNoCopy("abc", -1, kUTF8),
                                   CFStringCreateWithLPCWSTR(u"abc", 2, 0),
                                   CFStringCreateWithLPCWSTRNoCopy(u"abc", -1, 0)};
    for (const CFStringRef string : strings) {
        text.SetFromCFStringRef(string, 0);
        std::cout << text << ' ';
        CFRelease(string);
    }
    std::cout << '\n';
}

// File names in the records of other systems.
void Names() {
    HFSUniStr255 record;
    CString(u"R\u00E9sum\u00E9").GetHFSUniStr255(&record);
    CString name;
    name.SetFromHFSUniStr255(&record);
    unsigned char pascal[32];
    name.ToMac(pascal, sizeof pascal);
    CString back;
    back.FromMac(pascal);
    std::cout << record.length << ' ' << record.unicode[0] << ' ' << int{pascal[0]} << ' ' << back << '\n';
}

void Handles() {
    char** handle = NewHandle(4);
    std::memcpy(*handle, "text", 4);
    SetHandleSize(handle, 6);
    CString text(u"?");
    text.LoadString(handle);
    std::cout << text << ' ' << GetHandleSize(handle) << '\n';
    text.UnloadUnicodeString(&handle);
    CString again;
    again.LoadUnicodeString(handle);
    again.UnloadString(&handle);
    std::cout << again << ' ' << GetHandleSize(handle) << '\n';
    DisposeHandle(handle);
}

// Texts in a resource file that the program writes.
void ResourceFile() {
    const auto path = std::filesystem::temp_directory_path() / "lum-reference.rsrc";
    std::filesystem::remove(path);
    const short file = Lum::Platform::OpenResourceFile(path, true);
    const bool wasThere = CString(u"caf\u00E9").UnloadString(kText, u"Drink", false);
    std::cout << wasThere << Lum::Platform::UpdateResourceFile(file) << '\n';
    CString text;
    text.LoadString(kText, u"drink", false);
    for (const Lum::Platform::ResourceEntry& entry : Lum::Platform::ListResources(file)) {
        std::cout << std::hex << entry.type << std::dec << ' ' << entry.name << ' ' << entry.bytes.size() << " bytes, "
                  << (entry.id > 127) << ' ' << text << '\n';
    }
    Lum::Platform::CloseResourceFile(file);
    std::cout << "\"" << Lum::Platform::ExplainResourceFile(path) << "\"\n";
    std::filesystem::remove(path);
}

// The program's texts, by number, in the user's language.
void Numbers() {
    Lum::Platform::SetMainBundle(LUM_EXAMPLES "/bundle");
    CString::AddStringTableForSearch("Errors");
    const short file = Lum::Platform::OpenResourceFile(LUM_EXAMPLES "/strings.rsrc", false);
    gStrResTableInited = false;  // A file was opened: look for the index afresh.
    InitStrResTable();
    const unsigned char entries[] = {0, 5, 0, 0, 0, 9, 0, 0};
    CheckStrResTableForDups(nullptr, 0);
    CString text;
    for (const int number : {1003, 2001, 7777}) {
        std::cout << text.LoadString(number) << ' ' << text << '\n';
    }
    std::cout << NumStrRes() << " in the index " << (gStrResTable != nullptr) << (StrResCmp(entries, entries + 4) != 0)
              << (CString::m_arrayOfStringTables != nullptr) << " \"" << Lum::Platform::ExplainStringTable("")
              << "\"\n";
    Lum::Platform::CloseResourceFile(file);
}

void Script() {
    IntlInfo::Initialize();
    std::cout << IntlInfo::s_systemScript << IntlInfo::s_doubleByte << IntlInfo::IsLeadByte(0x83)
              << int{IntlInfo::s_leadByteTable[0x83]} << '\n';
}

void RuntimeNames() {
    char16_t text[] = u"aBc";
    std::cout << CString(CharUpper(text)) << ' ' << CString(CharLower(text)) << ' '
              << CString(_mbsstr(u"key=value", u"=")) << ' ';
    char16_t wide[3];
    inflateAsciiToLPTSTR("hi", wide, 2);
    char buffer[8], digits[32];
    std::cout << CString(wide, 2) << ' ' << itoa(12345, buffer, sizeof buffer) << ' ' << _ltoa(-7, digits, 10) << ' '
              << sprintf_s(buffer, "%d%%", 50) << ' ' << buffer << '\n';
}

}  // namespace

int main() {
    Lum::Platform::SetLocale("de_DE.UTF-8");
    Lum::Platform::SetApplicationTextEncoding(0x08000100);
    Lum::Platform::SetStartupVolumeName("Disk");
    HostStrings();
    Names();
    Handles();
    ResourceFile();
    Numbers();
    Script();
    RuntimeNames();
}
