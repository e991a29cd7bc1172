// URIs for C: making them, and reading and changing their components. References and relations are in
// Relations.cpp, queries and escapes in Queries.cpp.
#include <array>
#include <compare>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/URI.h>

#include "Source/CInterface/Call.h"
#include "Source/CInterface/URIObject.h"
#include "Source/CInterface/URIStatus.h"

namespace Lum::Internal {

const std::array<ReadableURI::Component, 9>& ReadableURI::Components() noexcept {
    using Text = StringProxy;
    static constexpr std::array<Component, 9> components{{
        {&ReadableURI::m_Scheme, [](const URI& uri) { return uri.GetScheme(); },
         [](URI& uri, Text text) { uri.SetScheme(std::move(text)); }},
        {&ReadableURI::m_Username, [](const URI& uri) { return uri.GetUsername(); },
         [](URI& uri, Text text) { uri.SetUsername(std::move(text)); }},
        {&ReadableURI::m_Password, [](const URI& uri) { return uri.GetPassword(); },
         [](URI& uri, Text text) { uri.SetPassword(std::move(text)); }},
        {&ReadableURI::m_Authority, [](const URI& uri) { return uri.GetAuthority(); },
         [](URI& uri, Text text) { uri.SetAuthority(std::move(text)); }},
        {&ReadableURI::m_ServerPort, [](const URI& uri) { return uri.GetServerPort(); },
         [](URI& uri, Text text) { uri.SetServerPort(std::move(text)); }},
        {&ReadableURI::m_Path, [](const URI& uri) { return uri.GetPath(); },
         [](URI& uri, Text text) { uri.SetPath(std::move(text)); }},
        {&ReadableURI::m_Query, [](const URI& uri) { return uri.GetQuery(true); },
         [](URI& uri, Text text) { uri.SetQuery(std::move(text), true); }},
        {&ReadableURI::m_Fragment, [](const URI& uri) { return uri.GetFragment(); },
         [](URI& uri, Text text) { uri.SetFragment(std::move(text)); }},
        {&ReadableURI::m_NonHierarchical, [](const URI& uri) { return uri.GetNonHierarchical(); },
         [](URI& uri, Text text) { uri.SetNonHierarchical(std::move(text)); }},
    }};
    return components;
}

namespace {

/// The component of a code, or null.
const ReadableURI::Component* ComponentOf(int code) noexcept {
    const auto& components = ReadableURI::Components();
    const bool isKnown = code >= 0 && static_cast<std::size_t>(code) < components.size();
    return isKnown ? &components[static_cast<std::size_t>(code)] : nullptr;
}

/// The operations of a style of local paths.
struct PathStyle {
    URI::StringProxy (URI::*to)() const;
    void (URI::*from)(URI::StringProxy path);
};

/// The style of a code, or null.
const PathStyle* StyleOf(int code) noexcept {
    // In the order of enum lum_path_style.
    static constexpr std::array<PathStyle, 4> styles{{
        {&URI::ToLocalPath, &URI::LocalPathToURI},
        {&URI::ToLocalPathMac, &URI::LocalPathToURIMac},
        {&URI::ToLocalPathUnix, &URI::LocalPathToURIUnix},
        {&URI::ToLocalPathWin, &URI::LocalPathToURIWin},
    }};
    const bool isKnown = code >= 0 && static_cast<std::size_t>(code) < styles.size();
    return isKnown ? &styles[static_cast<std::size_t>(code)] : nullptr;
}

}  // namespace
}  // namespace Lum::Internal

using namespace Lum::Internal;

lum_status lum_uri_create(const char* text, size_t size, lum_uri** uri) {
    return Created(uri, [&](lum_uri& made) { return lum_uri_parse(&made, text, size); });
}

lum_status lum_uri_copy(const lum_uri* uri, lum_uri** copy) {
    return Created(copy, [&](lum_uri& made) {
        if (uri == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        made.uri.CopyURI(uri->uri);
        return LUM_OK;
    });
}

void lum_uri_free(lum_uri* uri) { delete uri; }

lum_status lum_uri_parse(lum_uri* uri, const char* text, size_t size) {
    return Guarded([&] {
        if (uri == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        return uri->uri.ParseURI(std::string(TextOf(text, size))) ? LUM_OK
                                                                  : lum_uri_explain(text, size, nullptr, nullptr);
    });
}

lum_status lum_uri_explain(const char* text, size_t size, size_t* offset, size_t* length) {
    const Lum::URIProblem problem = Lum::ExplainURI(TextOf(text, size));
    Store(offset, problem.offset);
    Store(length, problem.length);
    return StatusOf(problem.code);
}

int lum_uri_flags(const lum_uri* uri) {
    if (uri == nullptr) {
        return 0;
    }
    return (uri->uri.IsValidURI() ? LUM_VALID : 0) | (uri->uri.IsRelative() ? LUM_RELATIVE : 0) |
           (uri->uri.IsHierarchical() ? LUM_HIERARCHICAL : 0) | (uri->uri.IsDirectory() ? LUM_DIRECTORY : 0);
}

lum_status lum_uri_get(const lum_uri* uri, int component, int form, char* buffer, size_t capacity, size_t* size) {
    return Answered(Buffer<char>{buffer, capacity, size}, [&](std::string& text) {
        const auto* const found = ComponentOf(component);
        if (uri == nullptr || found == nullptr || (form != LUM_STORED && form != LUM_UNESCAPED)) {
            return LUM_BAD_ARGUMENT;
        }
        text = form == LUM_STORED ? uri->uri.Stored(*found) : found->get(uri->uri);
        return LUM_OK;
    });
}

lum_status lum_uri_set(lum_uri* uri, int component, int form, const char* text, size_t size) {
    return Guarded([&] {
        const auto* const found = ComponentOf(component);
        const bool isStoredQuery = component == LUM_QUERY && form == LUM_STORED;
        if (uri == nullptr || found == nullptr || !(form == LUM_UNESCAPED || isStoredQuery)) {
            return LUM_BAD_ARGUMENT;
        }
        if (isStoredQuery) {
            uri->uri.SetQuery(TextOf(text, size), false);
        } else {
            found->set(uri->uri, TextOf(text, size));
        }
        return LUM_OK;
    });
}

lum_status lum_uri_text(const lum_uri* uri, int form, char* buffer, size_t capacity, size_t* size) {
    return Answered(Buffer<char>{buffer, capacity, size}, [&](std::string& text) {
        if (uri == nullptr || form < LUM_STORED || form > LUM_UTF8_ESCAPED) {
            return LUM_BAD_ARGUMENT;
        }
        text = form == LUM_UTF8           ? uri->uri.ToStringUTF8()
               : form == LUM_UTF8_ESCAPED ? uri->uri.ToStringUTF8Escaped()
                                          : uri->uri.ToString(form == LUM_UNESCAPED);
        return LUM_OK;
    });
}

lum_status lum_uri_default_port(const lum_uri* uri, char* buffer, size_t capacity, size_t* size) {
    return AnsweredOf(uri, {buffer, capacity, size}, [&] { return uri->uri.GetDefaultPort(); });
}

lum_status lum_uri_compare(const lum_uri* a, const lum_uri* b, int* order) {
    return Guarded([&] {
        if (a == nullptr || b == nullptr || order == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        const auto answer = static_cast<const Lum::URI&>(a->uri) <=> static_cast<const Lum::URI&>(b->uri);
        *order = std::is_lt(answer) ? -1 : std::is_gt(answer) ? 1 : 0;
        return LUM_OK;
    });
}

lum_status lum_uri_file_name(const lum_uri* uri, char* buffer, size_t capacity, size_t* size) {
    return AnsweredOf(uri, {buffer, capacity, size}, [&] { return uri->uri.GetFilename(false); });
}

lum_status lum_uri_extension(const lum_uri* uri, char* buffer, size_t capacity, size_t* size) {
    return AnsweredOf(uri, {buffer, capacity, size}, [&] { return uri->uri.GetExtension(true); });
}

lum_status lum_uri_go_up(lum_uri* uri) {
    return Guarded([&] {
        if (uri == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        uri->uri.RemoveLastPathComponent();
        return LUM_OK;
    });
}

lum_status lum_uri_to_path(const lum_uri* uri, int style, char* buffer, size_t capacity, size_t* size) {
    return Answered(Buffer<char>{buffer, capacity, size}, [&](std::string& text) {
        const PathStyle* const found = StyleOf(style);
        if (uri == nullptr || found == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        text = (uri->uri.*found->to)();
        return LUM_OK;
    });
}

lum_status lum_uri_from_path(const char* path, size_t size, int style, lum_uri** uri) {
    return Created(uri, [&](lum_uri& made) {
        const PathStyle* const found = StyleOf(style);
        if (found == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        (made.uri.*found->from)(TextOf(path, size));
        return LUM_OK;
    });
}
