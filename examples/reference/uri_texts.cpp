// What is inside the components: escapes, queries as maps, other encodings, and the sets of characters.
#include <iostream>
#include <map>
#include <string>

#include <Lum/URI.h>

namespace {

void Escapes() {
    std::cout << Lum::URI::Escape("50% a?b") << ' ' << Lum::URI::EscapeChars("a;b", ";") << ' '
              << Lum::URI::Unescape("%41%C3%A9", false) << ' ' << Lum::URI::Unescape("%41%C3%A9", true) << '\n';
    char byte = 0;
    const int taken = Lum::URI::ParseHex("%7E", byte);
    std::string host = "Example.ORG";
    Lum::URI::MakeLower(host);
    std::cout << taken << ' ' << byte << ' ' << host << ' ' << Lum::URI::VerifyAlpha("http")
              << Lum::URI::VerifyAlpha("h2") << Lum::URI::IsIPv6("fe80::1") << '\n';
}

// The parameters of a search, read and changed.
void Queries() {
    Lum::URI uri("http://h/search?q=a+b%26c&page=2");
    std::map<std::string, std::string> pairs;
    uri.GetQueryByMap(pairs);
    for (const auto& [key, value] : pairs) {
        std::cout << key << " = " << value << '\n';
    }
    pairs.erase("page");
    pairs["lang"] = "de";
    uri.SetQueryByMap(pairs);
    uri.SetQueryValue("exact", "x+y");
    std::string lang;
    std::cout << uri << ' ' << uri.GetQueryValue("lang", lang) << ' ' << lang << '\n'
              << Lum::URI::QueryEscape("a=b c") << ' ' << Lum::URI::QueryUnescape("a%3Db+c") << '\n';
}

// A link of an old page, whose escapes are bytes of Shift-JIS.
void Encodings() {
    Lum::URI uri;
    uri.FromEncodedString("http://h/%83%5C.html", "shift_jis");
    const std::string back = uri.ToEncodedString("shift_jis");
    std::cout << uri << ' ' << uri.ToStringUTF8Escaped() << ' ' << Lum::URI::Escape(back.substr(0, 9)) << ' '
              << back.size() << " bytes\n";
    std::string name = "%82%A0";
    std::cout << Lum::URI::NormalizeEncoding(name, "shift_jis") << ' ' << name << '\n';
}

// The sets, for code that escapes or checks by itself.
void Sets() {
    const auto show = [](const char* name, const std::string& set) {
        std::cout << name << ' ' << set.size() << ' ' << Lum::URI::EscapeChars(set.substr(0, 24), " %") << '\n';
    };
    show("URIlowalpha", Lum::URI::URIlowalpha);
    show("URIupalpha", Lum::URI::URIupalpha);
    show("URIalpha", Lum::URI::URIalpha);
    show("URIdigit", Lum::URI::URIdigit);
    show("URIalphanum", Lum::URI::URIalphanum);
    show("URIreserved", Lum::URI::URIreserved);
    show("URImark", Lum::URI::URImark);
    show("URIunreserved", Lum::URI::URIunreserved);
    show("URIuric", Lum::URI::URIuric);
    show("URIhex", Lum::URI::URIhex);
    show("URIescaped", Lum::URI::URIescaped);
    show("URIspace", Lum::URI::URIspace);
    show("URIdelims_real", Lum::URI::URIdelims_real);
    show("URIdelims", Lum::URI::URIdelims);
    show("URInonhierdelims", Lum::URI::URInonhierdelims);
    show("URIunwise", Lum::URI::URIunwise);
    show("URIcontrol", Lum::URI::URIcontrol);
    show("URIexcluded", Lum::URI::URIexcluded);
    show("URIqueryreserved", Lum::URI::URIqueryreserved);
    show("URIqueryexcluded", Lum::URI::URIqueryexcluded);
    show("URInonhierexcluded", Lum::URI::URInonhierexcluded);
    show("controlchars", Lum::URI::controlchars);
}

}  // namespace

int main() {
    Escapes();
    Queries();
    Encodings();
    Sets();
}
