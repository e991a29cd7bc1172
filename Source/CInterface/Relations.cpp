// Two URIs, for C: resolving, relative references, relations and common parents.
#include <memory>
#include <string>
#include <utility>

#include <Lum/URI.h>

#include "Source/CInterface/Call.h"
#include "Source/CInterface/URIStatus.h"

using namespace Lum::Internal;

lum_status lum_uri_resolve(lum_uri* uri, const char* reference, size_t size) {
    return Guarded([&] {
        if (uri == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        const std::string text(TextOf(reference, size));
        uri->uri.ChDir(text, false);
        if (uri->uri.IsValidURI()) {
            return LUM_OK;
        }
        const lum_status reason = StatusOf(Lum::ExplainURI(text).code);
        return reason == LUM_OK ? LUM_NOT_VALID : reason;
    });
}

lum_status lum_uri_make_relative(lum_uri* uri, const lum_uri* base, int match_case) {
    return Guarded([&] {
        if (uri == nullptr || base == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        return uri->uri.MakeRelativeURI(base->uri, match_case != 0) ? LUM_OK : LUM_UNRELATED;
    });
}

lum_status lum_uri_relation(const lum_uri* a, const lum_uri* b, int match_case, int* relation) {
    static_assert(LUM_RELATION_CHILD == int{Lum::kRelationChild} && LUM_RELATION_SAME == int{Lum::kRelationSame} &&
                  LUM_RELATION_PARENT == int{Lum::kRelationParent});
    return Guarded([&] {
        if (a == nullptr || b == nullptr || relation == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        *relation = a->uri.GetRelation(b->uri, match_case != 0);
        return LUM_OK;
    });
}

lum_status lum_uri_common_parent(const lum_uri* a, const lum_uri* b, int match_case, lum_uri** parent) {
    return Created(parent, [&](lum_uri& made) {
        if (a == nullptr || b == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        made.uri.CopyURI(a->uri.GetCommonParent(b->uri, match_case != 0));
        return made.uri.IsValidURI() ? LUM_OK : LUM_UNRELATED;
    });
}
