// The operations that walk a text of any length, at 1 KB, 32 KB and 1 MB; the figure is for one byte.
#include <Lum/URI.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <Lum/URIProblem.h>

#include "Case.h"
#include "Inputs.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

const std::vector<std::size_t> kBytes{1'024, 32'768, 1'048'576};

std::string Mixed(std::size_t size) { return MixedTexts(1, size).front(); }
std::string Path(std::size_t size) { return std::string(1, '/').append(Mixed(size)); }
/// Clean text as the path, query or fragment of a URL.
std::string Url(std::string_view front, std::size_t size) {
    return std::string(front) + CleanTexts(1, size - front.size()).front();
}

/// `make` turns a size into what the operation works on, once; `call` works on it.
template <class Make, class Call>
void Add(const std::string& operation, Make make, Call call) {
    AddGrowthCases("uri/bytes of " + operation, kBytes, [make, call](std::size_t size) {
        return [input = make(size), call]() mutable { return call(input); };
    });
}

void AddWholes() {
    for (const char* const front : {"http://example.org/", "http://example.org/?", "http://example.org/#"}) {
        const auto make = [front](std::size_t size) { return Url(front, size); };
        const std::string what(std::string_view(front).substr(18));
        Add("parsing " + what, make,
            [uri = Lum::URI()](const std::string& text) mutable { return uri.ParseURI(text); });
        Add("explaining " + what, make, [](const std::string& text) { return Lum::ExplainURI(text); });
    }
    const auto make = [](std::size_t size) { return Lum::URI(Url("http://example.org/a/", size)); };
    Add("copying", make, [](const Lum::URI& uri) { return Lum::URI(uri); });
    Add("printing", make, [](const Lum::URI& uri) { return uri.ToString(false); });
    Add("printing as UTF-8", make, [](const Lum::URI& uri) { return uri.ToStringUTF8(); });
    Add("comparing", make, [](const Lum::URI& uri) { return uri == Lum::URI(uri); });
    Add("hashing", make, [](const Lum::URI& uri) { return std::hash<Lum::URI>()(uri); });
    Add("making absolute", make, [base = Lum::URI("http://example.org/b/c")](const Lum::URI& uri) {
        Lum::URI target = uri;
        target.MakeRelativeURI(base, true);
        target.MakeAbsoluteURI(base);
        return target;
    });
}

void AddParts() {
    Add("setting a path", Mixed, [uri = Lum::URI("http://example.org/")](const std::string& text) mutable {
        uri.SetPath(text);
        return uri.IsValidURI();
    });
    Add("setting a query", Mixed, [uri = Lum::URI("http://example.org/")](const std::string& text) mutable {
        uri.SetQuery(text, true);
        return uri.IsValidURI();
    });
    const auto make = [](std::size_t size) {
        Lum::URI uri("http://example.org/");
        uri.SetPath(Path(size));
        return uri;
    };
    Add("getting a path", make, [](const Lum::URI& uri) { return uri.GetPath(); });
    Add("getting a local path", make, [](const Lum::URI& uri) { return uri.ToLocalPathUnix(); });
    Add("getting a file name", make, [](const Lum::URI& uri) { return uri.GetFilename(true); });
    Add("setting a local path", Path, [uri = Lum::URI()](const std::string& path) mutable {
        uri.LocalPathToURIUnix(path);
        return uri.IsValidURI();
    });
}

void AddEscapes() {
    const auto escaped = [](std::size_t size) { return Escaped(Mixed(size), size); };
    Add("escaping", Mixed, [](const std::string& text) { return Lum::URI::Escape(text); });
    Add("escaping a set", Mixed, [](const std::string& text) { return Lum::URI::EscapeChars(text, kEscapedSet); });
    Add("escaping a query", Mixed, [](const std::string& text) { return Lum::URI::QueryEscape(text); });
    Add("unescaping", escaped, [](const std::string& text) { return Lum::URI::Unescape(text, false); });
    Add("unescaping a query", escaped, [](const std::string& text) { return Lum::URI::QueryUnescape(text); });
}

}  // namespace

void AddTextGrowth() {
    AddWholes();
    AddParts();
    AddEscapes();
}

}  // namespace Bench::Uri
