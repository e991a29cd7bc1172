// Queries and escapes, for C.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include <Lum/URI.h>

#include "Source/CInterface/Call.h"
#include "Source/CInterface/URIStatus.h"

using namespace Lum::Internal;
using Lum::URI;

lum_status lum_uri_query_value(const lum_uri* uri, const char* key, size_t key_size, char* buffer, size_t capacity,
                               size_t* size) {
    return Answered(Buffer<char>{buffer, capacity, size}, [&](std::string& text) {
        if (uri == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        return uri->uri.GetQueryValue(TextOf(key, key_size), text) ? LUM_OK : LUM_NOT_FOUND;
    });
}

lum_status lum_uri_set_query_value(lum_uri* uri, const char* key, size_t key_size, const char* value,
                                   size_t value_size) {
    return Guarded([&] {
        if (uri == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        uri->uri.SetQueryValue(TextOf(key, key_size), TextOf(value, value_size));
        return LUM_OK;
    });
}

lum_status lum_uri_next_pair(const lum_uri* uri, size_t* cursor, char* key, size_t key_capacity, size_t* key_size,
                             char* value, size_t value_capacity, size_t* value_size) {
    std::string keyText;
    std::string valueText;
    std::size_t next = 0;
    const lum_status status = Guarded([&] {
        if (uri == nullptr || cursor == nullptr) {
            return LUM_BAD_ARGUMENT;
        }
        // Pairs as URI::GetQueryByMap reads them: behind a last "&" there is none.
        const std::string_view query = uri->uri.StoredQuery();
        if (*cursor >= query.size()) {
            return LUM_NOT_FOUND;
        }
        const std::size_t end = std::min(query.find('&', *cursor), query.size());
        const std::string_view pair = query.substr(*cursor, end - *cursor);
        const std::size_t divider = std::min(pair.find('='), pair.size());
        keyText = URI::QueryUnescape(pair.substr(0, divider));
        valueText = URI::QueryUnescape(pair.substr(std::min(divider + 1, pair.size())));
        next = end + 1;
        return LUM_OK;
    });
    if (status != LUM_OK) {
        keyText.clear();
        valueText.clear();
    }
    const bool fitsKey = Buffer<char>{key, key_capacity, key_size}.Write(std::string_view(keyText));
    const bool fitsValue = Buffer<char>{value, value_capacity, value_size}.Write(std::string_view(valueText));
    if (status != LUM_OK) {
        return status;
    }
    if (!fitsKey || !fitsValue) {
        return LUM_TRUNCATED;
    }
    *cursor = next;
    return LUM_OK;
}

lum_status lum_escape(const char* text, size_t text_size, int for_query, char* buffer, size_t capacity, size_t* size) {
    return Answered(Buffer<char>{buffer, capacity, size}, [&](std::string& answer) {
        const std::string_view raw = TextOf(text, text_size);
        answer = for_query != 0 ? URI::QueryEscape(raw) : URI::Escape(raw);
        return LUM_OK;
    });
}

lum_status lum_unescape(const char* text, size_t text_size, int for_query, char* buffer, size_t capacity,
                        size_t* size) {
    return Answered(Buffer<char>{buffer, capacity, size}, [&](std::string& answer) {
        const std::string_view escaped = TextOf(text, text_size);
        answer = for_query != 0 ? URI::QueryUnescape(escaped) : URI::Unescape(escaped, false);
        return LUM_OK;
    });
}
