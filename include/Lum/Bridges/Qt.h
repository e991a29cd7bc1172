// Texts and URIs for Qt 6 and from it: CString and QString, URI and QUrl. Needs Qt's headers; a program that includes
// it links Qt6::Core.
//
// QString and CString both hold UTF-16 units, so that no unit changes, unpaired surrogates and byte order marks
// included. A URI and a QUrl go through their text, and only where both find the same components in it; escapes
// count as what they stand for. Otherwise the result is an invalid QUrl or a URI in the empty state.
//
// Qt has no URL for: ports that are no number up to 65535; characters and escapes that RFC 3986 does not allow where
// they stand, as in "http://h/a b" or "%zz"; a second "#" (Lum's fragment begins at the last one); a relative "//h/a"
// (Lum reads all of it as a path); hosts that are no names of IDNA. Lum has no URI for: schemes of one letter or with
// digits; a relative reference or an opaque text that Lum reads in another way.
//
// What changes on the way: an empty query or fragment, "http://h/?#", is dropped by Lum. Qt decodes escapes of
// characters that need none, such as "%41", writes host names in the form of IDNA, and a port without leading zeros.
// The drive of a "file" URL is "C|" for Lum and "C:" for Qt.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <QUrl>

#include <Lum/CString.h>
#include <Lum/URI.h>

namespace Lum {

/// The text without a copy, until the string changes or ends.
[[nodiscard]] inline QStringView ViewAsQString(const CString& text LUM_LIFETIMEBOUND) noexcept {
    return {AsChar16(text.GetAsUniCharStr()), text.GetLength()};
}
/// A copy of the text.
[[nodiscard]] inline QString ToQString(const CString& text) { return ViewAsQString(text).toString(); }
/// A copy of the text. std::bad_alloc where its length is beyond an int.
[[nodiscard]] inline CString FromQString(QStringView text) {
    return CString(std::u16string_view(text.utf16(), static_cast<std::size_t>(text.size())));
}

namespace Internal {

/// Where the ":" or "|" of a drive is in the text of a path, "/C:/x" from `begin` on; npos if there is none.
inline std::size_t FindDriveMark(std::string_view text, std::size_t begin) noexcept {
    const std::string_view path = text.substr(begin < text.size() ? begin : text.size());
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    const bool isDrive = path.size() >= 3 && path[0] == '/' && isLetter(path[1]) &&
                         (path[2] == ':' || path[2] == '|') && (path.size() == 3 || path[3] == '/');
    return isDrive ? begin + 2 : std::string_view::npos;
}

/// Whether both have the same components.
inline bool AreSameComponents(const URI& uri, const QUrl& url) {
    const auto isSame = [](const std::string& ours, const QString& theirs) {
        return QByteArray::fromPercentEncoding(theirs.toUtf8()) == QByteArray::fromStdString(ours);
    };
    const bool isFile = uri.IsOfType("file");
    const auto pathOf = [isFile](std::string path) {
        if (const std::size_t mark = FindDriveMark(path, 0); isFile && mark != std::string::npos) {
            path[mark] = ':';
        }
        return path;
    };
    const QUrl::ComponentFormattingOptions form = QUrl::FullyEncoded;
    const std::string port = uri.GetServerPort(), query = uri.GetQuery(false);
    const std::string path = uri.IsHierarchical() ? uri.GetPath() : uri.GetNonHierarchical();
    // Empty where the host is no name of IDNA.
    const QByteArray ace = QUrl::toAce(QString::fromStdString(uri.GetAuthority()));
    const QByteArray theirPath = QByteArray::fromPercentEncoding(url.path(form).toUtf8());
    return isSame(uri.GetScheme(), url.scheme()) && isSame(uri.GetUsername(), url.userName(form)) &&
           isSame(uri.GetPassword(), url.password(form)) &&
           (isSame(uri.GetAuthority(), url.host(form)) || (!ace.isEmpty() && ace == url.host(form).toUtf8())) &&
           (port.empty() ? -1 : QByteArray::fromStdString(port).toInt()) == url.port() &&
           pathOf(path) == pathOf(theirPath.toStdString()) &&
           QByteArray::fromPercentEncoding(QByteArray::fromStdString(query)) ==
               QByteArray::fromPercentEncoding(url.query(form).toUtf8()) &&
           isSame(uri.GetFragment(), url.fragment(form));
}

}  // namespace Internal

/// The URL with the same text; an invalid one where Qt has none, and for a URI that is not valid. See above.
[[nodiscard]] inline QUrl ToQUrl(const URI& uri) {
    std::string text = uri.ToStringUTF8Escaped();
    const std::string host = uri.GetAuthority();
    if (std::any_of(host.begin(), host.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; })) {
        // Qt takes no escapes in a host.
        URI ascii(uri);
        ascii.SetAuthority(QUrl::toAce(QString::fromStdString(host)).toStdString());
        text = ascii.ToStringUTF8Escaped();
    }
    constexpr std::string_view kFile = "file://";
    if (text.starts_with(kFile)) {
        const std::size_t mark = Internal::FindDriveMark(text, text.find('/', kFile.size()));
        if (mark != std::string::npos) {
            text[mark] = ':';
        }
    }
    QUrl url = QUrl::fromEncoded(QByteArray::fromStdString(text), QUrl::StrictMode);
    return uri.IsValidURI() && url.isValid() && Internal::AreSameComponents(uri, url) ? url : QUrl();
}

/// The URI with the same text; the empty state where Lum has none, and for a URL that is empty or not valid. See above.
[[nodiscard]] inline URI FromQUrl(const QUrl& url) {
    URI uri(url.toEncoded().toStdString());
    return url.isValid() && uri.IsValidURI() && Internal::AreSameComponents(uri, url) ? uri : URI();
}

}  // namespace Lum
