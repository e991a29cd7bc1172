// URIs as text of an encoding other than UTF-8, whose escapes stand for bytes of that encoding. Also gives every
// component the escapes that its setter would write.
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include <Lum/Transcoder.h>
#include <Lum/URI.h>

#include "Source/Base/ByteSearch.h"
#include "Source/URI/Escaping.h"

namespace Lum {

using namespace Internal;

namespace {

constexpr std::size_t kEscapeSize = 3;

/// Appends `text`, UTF-8, in the encoding. False where nothing of it can be converted.
bool AppendEncoded(std::string& out, std::string_view text, const std::string& encoding) {
    const std::string converted = Transcoder::UTF8ToEncoding(std::string(text), encoding);
    out += converted;
    return !converted.empty();
}

}  // namespace

bool URI::NormalizeEncoding(std::string& text, const std::string& encoding) {
    std::string bytes;
    std::string_view rest = text;
    // A "%" among the last two bytes begins no escape. A text of two bytes or less has none.
    while (rest.size() >= kEscapeSize) {
        const std::size_t literal = FindFirst(rest, '%');
        if (literal == std::string_view::npos) {
            break;
        }
        if (literal == 0) {
            bytes += UnescapeText(rest.substr(0, kEscapeSize));
            rest.remove_prefix(kEscapeSize);
            continue;
        }
        if (!AppendEncoded(bytes, rest.substr(0, literal), encoding)) {
            return false;
        }
        rest.remove_prefix(literal);
    }
    if (!rest.empty() && !AppendEncoded(bytes, rest, encoding)) {
        return false;
    }
    if (!text.empty()) {
        // Not checked: bytes that are no text of the encoding give an empty string, which counts as success.
        text = Transcoder::EncodingToUTF8(bytes, encoding);
    }
    return true;
}

void URI::ForceEscape() {
    SetScheme(GetScheme());
    if (!IsHierarchical()) {
        m_NonHierarchical = FastEscapeChars(UnescapeText(m_NonHierarchical), URInonhierexcludedBitMap);
        SetHierState(false);
    } else {
        SetAuthority(GetAuthority());
        SetPath(GetPath());
        SetServerPort(UnescapeText(m_ServerPort));
    }
    SetQuery(GetQuery(true), true);
    SetFragment(GetFragment());
}

bool URI::FromEncodedString(StringProxy text, StringProxy encoding) {
    const std::string& name = encoding;
    // A text that is no URI leaves the empty state. It is then treated like any other.
    if (!ParseURI(Transcoder::EncodingToUTF8(text, name))) {
        m_IsValid = false;
    }

    const auto normalize = [&](const std::string& component, auto store) {
        std::string copy = component;
        if (!NormalizeEncoding(copy, name)) {
            return false;
        }
        store(std::move(copy));
        return true;
    };
    const auto storeUser = [](std::string& target) {
        return [&target](std::string copy) { target = FastEscapeChars(std::move(copy), ModifiedURIEXcludedBitMap); };
    };
    bool isNormalized = true;
    try {
        if (IsHierarchical()) {
            isNormalized = normalize(m_Scheme, [&](std::string copy) { SetScheme(std::move(copy)); }) &&
                           normalize(m_Authority, [&](std::string copy) { SetAuthority(std::move(copy)); }) &&
                           normalize(m_ServerPort, [&](std::string copy) { SetServerPort(std::move(copy)); }) &&
                           normalize(m_Path, [&](std::string copy) { SetPath(std::move(copy)); }) &&
                           normalize(m_Username, storeUser(m_Username)) && normalize(m_Password, storeUser(m_Password));
        } else {
            isNormalized = normalize(m_NonHierarchical, [&](std::string copy) {
                m_NonHierarchical = FastEscapeChars(std::move(copy), URInonhierexcludedBitMap);
                SetHierState(false);
            });
        }
        isNormalized = isNormalized && normalize(m_Query, [&](std::string copy) { SetQuery(std::move(copy), true); }) &&
                       normalize(m_Fragment, [&](std::string copy) { SetFragment(std::move(copy)); });
    } catch (...) {
        Initialize();
        throw;
    }
    if (!isNormalized) {
        Initialize();
    }
    return isNormalized;
}

URI::StringProxy URI::ToEncodedString(StringProxy encoding) {
    return Transcoder::UTF8ToEncoding(ToStringUTF8(), encoding);
}

}  // namespace Lum
