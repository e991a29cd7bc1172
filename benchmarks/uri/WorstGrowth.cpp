// Every operation on the texts that a careless version of it makes quadratic: nothing but delimiters, dots,
// escapes, halves of escapes, or bytes that have to be escaped. The figure is for one byte of each text.
#include <Lum/URI.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include <Lum/URIProblem.h>

#include "Case.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

std::vector<std::string> WorstTexts(std::size_t size) {
    std::vector<std::string> texts;
    for (const std::string pattern :
         {"/", ".",  "./", "../", "/..", "a/", "%",   "%4", "%41", "%C3", "%2F", "% ",   ":", "::", "@",
          "[", "]:", "?",  "#",   "&",   "=",  "a=&", "+",  "\\",  "|",   " ",   "\xFF", "a", "A",  "\x01"}) {
        std::string text;
        while (text.size() < size) {
            text += pattern;
        }
        texts.push_back(text);
    }
    return texts;
}

/// `call` works on each of the texts.
void Add(const std::string& operation, void (*call)(const std::string& text)) {
    AddGrowthCases("uri/worst of " + operation, {256, 1'024, 65'536}, [call](std::size_t size) {
        return [texts = WorstTexts(size), call] {
            for (const std::string& text : texts) {
                call(text);
            }
            return texts.size();
        };
    });
}

template <class Value>
void Use(const Value& value) {
    benchmark::DoNotOptimize(value);
}

void AddWholes() {
    Add("parsing", [](const std::string& text) {
        for (const char* const front :
             {"", "http:", "http://", "http://h/", "file:///%4|/", "http://h?", "http://u:"}) {
            Use(Lum::URI(front + text).ToString(true));
            Use(Lum::ExplainURI(front + text));
        }
    });
    Add("encodings", [](const std::string& text) {
        Lum::URI uri;
        uri.FromEncodedString("http://h/" + text, "shift_jis");
        Use(uri.ToEncodedString("shift_jis"));
        uri.ForceEscape();
        Use(uri.ToStringUTF8() + uri.ToStringUTF8Escaped());
        std::string copy = text;
        Use(Lum::URI::NormalizeEncoding(copy, "utf-8"));
    });
    Add("escaping", [](const std::string& text) {
        Use(Lum::URI::Unescape(Lum::URI::Escape(text), true));
        Use(Lum::URI::Unescape(text, false));
        Use(Lum::URI::EscapeChars(text, text));
        Use(Lum::URI::QueryUnescape(Lum::URI::QueryEscape(text)));
        Use(Lum::URI::QueryUnescape(text));
    });
    Add("setting and getting", [](const std::string& text) {
        Lum::URI uri;
        uri.SetParts(text, text, text, text, text, text);
        uri.SetUsername(text);
        uri.SetPassword(text);
        Use(uri.GetScheme() + uri.GetUsername() + uri.GetPassword() + uri.GetAuthority() + uri.GetServerPort());
        Use(uri.GetPath() + uri.GetQuery(true) + uri.GetFragment());
        uri.SetNonHierarchical(text);
        Use(uri.GetNonHierarchical());
    });
}

void AddPaths() {
    Add("resolving", [](const std::string& text) {
        const Lum::URI base("http://h/" + text);
        for (const std::string& reference : {text, "x/" + text, "../" + text, "/" + text}) {
            Lum::URI uri = base;
            Use(uri.ChDir(reference, false));
            Use(uri.ChDir(reference, true));
        }
    });
    Add("relating", [](const std::string& text) {
        const Lum::URI a("http://h/" + text), b("http://h/" + text + "/x/" + text), c("file:///%4|/" + text);
        for (const Lum::URI& other : {a, b, c}) {
            Use(a.GetRelation(other, false));
            Use(other.GetCommonParent(b, true));
            Use(other.IsUnderDirectory(text));
            Lum::URI uri = other;
            uri.MakeRelativeURI(b, true);
            uri.MakeAbsoluteURI(a);
        }
        Use(Lum::URI::CompareAuthority("http://" + text, "http://" + text));
    });
    Add("names and segments", [](const std::string& text) {
        Lum::URI uri("http://h/" + text);
        Use(uri.GetFilename(true));
        Use(uri.GetExtension(true));
        Use(uri.GetLastPathComponent());
        Use(uri.RemoveLastPathComponent());
        Use(uri.IsOfFileType(text));
        std::vector<std::string> segments;
        Lum::URI::SplitPath(text, segments);
        Use(Lum::URI::JoinPath(segments, true, true));
    });
    Add("local paths", [](const std::string& text) {
        for (const char* const front : {"file:///C|/", "file:///%4|/", "file://localhost/", "file://h/", ""}) {
            const Lum::URI uri(front + text);
            Use(uri.ToLocalPathMac());
            Use(uri.ToLocalPathUnix());
            Use(uri.ToLocalPathWin());
        }
        Lum::URI uri;
        uri.LocalPathToURIMac(text);
        uri.LocalPathToURIUnix(text);
        uri.LocalPathToURIWin("C:/" + text);
        uri.LocalPathToURIWin(text);
    });
    Add("queries", [](const std::string& text) {
        Lum::URI uri("http://h/?" + text);
        std::map<std::string, std::string> map;
        uri.GetQueryByMap(map);
        uri.SetQueryByMap(map);
        std::string value;
        Use(uri.GetQueryValue(text, value));
        uri.SetQueryValue(text, text);
    });
}

}  // namespace

void AddWorstGrowth() {
    AddWholes();
    AddPaths();
}

}  // namespace Bench::Uri
