// libcurl: its URL handle and its escaping. Absolute URLs only.
#include <curl/curl.h>

#include <memory>
#include <string>

#include "Case.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

struct Cleanup {
    void operator()(CURLU* handle) const noexcept { curl_url_cleanup(handle); }
};
struct Free {
    void operator()(char* text) const noexcept { curl_free(text); }
};
using Handle = std::unique_ptr<CURLU, Cleanup>;
using Text = std::unique_ptr<char, Free>;

// Schemes that the library cannot transfer are none of this benchmark's concern.
constexpr unsigned kFlags = CURLU_NON_SUPPORT_SCHEME;

Handle Parse(const std::string& text) {
    Handle handle(curl_url());
    if (curl_url_set(handle.get(), CURLUPART_URL, text.c_str(), kFlags) != CURLUE_OK) {
        handle.reset();
    }
    return handle;
}

Text Print(const Handle& handle) {
    char* text = nullptr;
    curl_url_get(handle.get(), CURLUPART_URL, &text, 0);
    return Text(text);
}

// Neither needs a transfer handle.
Text Escape(const std::string& text) {
    return Text(curl_easy_escape(nullptr, text.data(), static_cast<int>(text.size())));
}

Text Unescape(const std::string& text) {
    int size = 0;
    return Text(curl_easy_unescape(nullptr, text.data(), static_cast<int>(text.size()), &size));
}

void AddCases(const std::string& name, const Inputs& inputs) {
    AddCase(kParseFresh, name, inputs.urls, Parse);
    AddCase(kParseOneStep, name, inputs.urls, Parse);
    AddCase(kParseReused, name, inputs.urls,
            [handle = std::shared_ptr<CURLU>(Handle(curl_url()))](const std::string& text) {
                return curl_url_set(handle.get(), CURLUPART_URL, text.c_str(), kFlags);
            });
    AddPreparedCase(kPrint, name, inputs.printed, Parse, Print);
    for (const TextCase& c : inputs.escapes) {
        AddCase(c.name, name, c.texts, Escape);
    }
    for (const TextCase& c : inputs.unescapes) {
        AddCase(c.name, name, c.texts, Unescape);
    }
}

const AddSubject add{{"libcurl", [](const std::string& text) { return Parse(text) != nullptr; }, AddCases}};

}  // namespace
}  // namespace Bench::Uri
