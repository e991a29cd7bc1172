// libcurl: its URL handle and its escaping. Absolute URLs only.
#include <curl/curl.h>

#include <memory>
#include <optional>
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

Handle Resolve(CURLU* base, const std::string& reference) {
    Handle handle(curl_url_dup(base));
    if (curl_url_set(handle.get(), CURLUPART_URL, reference.c_str(), kFlags) != CURLUE_OK) {
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
    AddPreparedCase(kPrint, name, inputs.accepted, Parse, Print);
    for (const TextCase& c : inputs.escapes) {
        AddCase(c.name, name, c.texts, Escape);
    }
    for (const TextCase& c : inputs.unescapes) {
        AddCase(c.name, name, c.texts, Unescape);
    }
    for (const ResolveCase& c : inputs.resolves) {
        for (const std::string& resolve : {c.freshName, c.reusedName}) {
            AddCase(resolve, name, c.references,
                    [base = std::shared_ptr<CURLU>(Parse(c.base))](const std::string& reference) {
                        return Resolve(base.get(), reference);
                    });
        }
    }
}

std::optional<std::string> Resolved(const std::string& base, const std::string& reference) {
    const auto target = Resolve(Parse(base).get(), reference);
    return target ? std::optional<std::string>(Print(target).get()) : std::nullopt;
}

const AddSubject add{{"libcurl", [](const std::string& text) { return Parse(text) != nullptr; }, Resolved, AddCases}};

}  // namespace
}  // namespace Bench::Uri
