// uriparser: a record of ranges in the text, which has to be made the owner of what they show.
#include <uriparser/Uri.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "Case.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

/// Owns a parsed URI, or nothing where the text was refused.
class OwnedUri {
public:
    explicit OwnedUri(const std::string& text) {
        const char* errorAt = nullptr;
        if (uriParseSingleUriExA(&m_Uri, text.data(), text.data() + text.size(), &errorAt) != URI_SUCCESS) {
            return;
        }
        m_HasUri = uriMakeOwnerA(&m_Uri) == URI_SUCCESS;
        if (!m_HasUri) {
            uriFreeUriMembersA(&m_Uri);
        }
    }
    /// The reference resolved against `base`.
    OwnedUri(const OwnedUri& base, const std::string& reference) {
        UriUriA parsed;
        const char* errorAt = nullptr;
        if (uriParseSingleUriExA(&parsed, reference.data(), reference.data() + reference.size(), &errorAt) !=
            URI_SUCCESS) {
            return;
        }
        // Else the result would show bytes of both texts.
        m_HasUri = uriAddBaseUriExA(&m_Uri, &parsed, &base.m_Uri, URI_RESOLVE_STRICTLY) == URI_SUCCESS &&
                   uriMakeOwnerA(&m_Uri) == URI_SUCCESS;
        if (!m_HasUri) {
            uriFreeUriMembersA(&m_Uri);
        }
        uriFreeUriMembersA(&parsed);
    }
    OwnedUri(OwnedUri&& other) noexcept : m_Uri(other.m_Uri), m_HasUri(std::exchange(other.m_HasUri, false)) {}
    OwnedUri& operator=(OwnedUri&&) = delete;
    ~OwnedUri() {
        if (m_HasUri) {
            uriFreeUriMembersA(&m_Uri);
        }
    }

    [[nodiscard]] bool HasUri() const noexcept { return m_HasUri; }
    [[nodiscard]] const UriUriA& Get() const noexcept { return m_Uri; }

private:
    UriUriA m_Uri;
    bool m_HasUri = false;
};

OwnedUri Parse(const std::string& text) { return OwnedUri(text); }

std::string Print(const OwnedUri& uri) {
    int size = 0;
    uriToStringCharsRequiredA(&uri.Get(), &size);
    std::string text(static_cast<std::size_t>(size), '\0');
    // The NUL that is written behind the text meets the string's own.
    uriToStringA(text.data(), &uri.Get(), size + 1, nullptr);
    return text;
}

std::string Escape(const std::string& text) {
    std::string escaped(3 * text.size() + 1, '\0');
    const char* const end = uriEscapeExA(text.data(), text.data() + text.size(), escaped.data(), URI_FALSE, URI_FALSE);
    escaped.resize(static_cast<std::size_t>(end - escaped.data()));
    return escaped;
}

std::string Unescape(const std::string& text) {
    std::string plain(text);
    const char* const end = uriUnescapeInPlaceExA(plain.data(), URI_FALSE, URI_BR_DONT_TOUCH);
    plain.resize(static_cast<std::size_t>(end - plain.data()));
    return plain;
}

struct FreeList {
    void operator()(UriQueryListA* list) const noexcept { uriFreeQueryListA(list); }
};
using QueryList = std::unique_ptr<UriQueryListA, FreeList>;

QueryList ToList(const OwnedUri& uri) {
    UriQueryListA* list = nullptr;
    int size = 0;
    const UriTextRangeA& query = uri.Get().query;
    uriDissectQueryMallocExA(&list, &size, query.first, query.afterLast, URI_TRUE, URI_BR_DONT_TOUCH);
    return QueryList(list);
}

void AddCases(const std::string& name, const Inputs& inputs) {
    for (const std::string& parse : {kParseFresh, kParseOneStep, kParseReused}) {
        AddCase(parse, name, inputs.urls, Parse);
    }
    AddPreparedCase(kPrint, name, inputs.accepted, Parse, Print);
    AddHeldCase(kHold, name, inputs.accepted, Parse);
    AddPreparedCase(
        kEqual, name, inputs.accepted, [](const std::string& text) { return std::pair(Parse(text), Parse(text)); },
        [](const std::pair<OwnedUri, OwnedUri>& uris) {
            return uriEqualsUriA(&uris.first.Get(), &uris.second.Get()) == URI_TRUE;
        });
    AddPreparedCase(
        kMakeRelative, name, inputs.neighbours,
        [](const Neighbours& both) { return std::pair(Parse(both.base), Parse(both.target)); },
        [](const std::pair<OwnedUri, OwnedUri>& uris) {
            UriUriA reference;
            const int made = uriRemoveBaseUriA(&reference, &uris.second.Get(), &uris.first.Get(), URI_FALSE);
            uriFreeUriMembersA(&reference);
            return made;
        });
    for (const TextCase& c : inputs.escapes) {
        AddCase(c.name, name, c.texts, Escape);
    }
    for (const TextCase& c : inputs.unescapes) {
        AddCase(c.name, name, c.texts, Unescape);
    }
    for (const ResolveCase& c : inputs.resolves) {
        for (const std::string& resolve : {c.freshName, c.reusedName, c.absoluteName}) {
            AddCase(resolve, name, c.references,
                    [base = std::make_shared<const OwnedUri>(c.base)](const std::string& reference) {
                        return OwnedUri(*base, reference);
                    });
        }
    }
    AddPreparedCase(
        kQueryToMap, name, inputs.queries, [](const QueryText& query) { return Parse(query.url); }, ToList);
}

std::optional<std::string> Resolved(const std::string& base, const std::string& reference) {
    const OwnedUri target(OwnedUri(base), reference);
    return target.HasUri() ? std::optional(Print(target)) : std::nullopt;
}

const AddSubject add{{"uriparser", [](const std::string& text) { return Parse(text).HasUri(); }, Resolved, AddCases}};

}  // namespace
}  // namespace Bench::Uri
