#include <Lum/Bridges/Qt.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using Lum::URI;

TEST(QtBridge, StringsKeepTheirUnits) {
    const CString text(u"\uFEFFa\0\xD800", 4);
    EXPECT_EQ(Lum::ToQString(text).size(), 4);
    EXPECT_EQ(Lum::FromQString(Lum::ToQString(text)), text);
    EXPECT_EQ(Lum::ViewAsQString(text).utf16(), Lum::AsChar16(text.GetAsUniCharStr()));
    EXPECT_EQ(Lum::FromQString(QString()), CString());
}

TEST(QtBridge, UrlsThatBothReadAlike) {
    struct Row {
        const char *text, *qt, *back;  // null: none
    };
    for (const auto& [text, qt, back] : {
             Row{"http://u:p%20q@h:80/a%20b?x=1&y=%26+#f", "http://u:p%20q@h:80/a%20b?x=1&y=%26+#f",
                 "http://u:p%20q@h:80/a%20b?x=1&y=%26+#f"},
             Row{"mailto:a@b?subject=x", "mailto:a@b?subject=x", "mailto:a@b?subject=x"},
             Row{"a/b?q", "a/b?q", "a/b?q"},
             Row{"http://[::1]:8080/%FF%2F%41", "http://[::1]:8080/%FF%2FA", "http://[::1]:8080/%FF%2FA"},
             Row{"http://m\xC3\xBCnchen/\xC3\xBC", "http://xn--mnchen-3ya/%C3%BC", "http://xn--mnchen-3ya/%C3%BC"},
             Row{"file:///C:/x", "file:///C:/x", "file:///C|/x"},
             Row{"file:///C|", "file:///C:", "file:///C|"},
             Row{"http://h/%7C", "http://h/%7C", "http://h/%7C"},
             Row{"http://h:080/?#", "http://h:80/", "http://h:80/"},
             Row{"file://\xC3[/x", nullptr, nullptr},
             Row{"http://h:x/", nullptr, nullptr},
             Row{"http://h/a b", nullptr, nullptr},
             Row{"http://h/%zz", nullptr, nullptr},
             Row{"http://h/#a#b", nullptr, nullptr},
             Row{"//h/a", nullptr, nullptr},
             Row{"http://h/a\\b", nullptr, nullptr},
         }) {
        const QUrl url = Lum::ToQUrl(URI(text));
        EXPECT_EQ(url.isValid() ? url.toEncoded().toStdString() : "", qt == nullptr ? "" : qt) << text;
        EXPECT_EQ(Lum::FromQUrl(url), back == nullptr ? URI() : URI(back)) << text;
    }
    for (const char* text : {"//h/a", "h2://h/", "x:/a", "", "http://h/%zz"}) {
        EXPECT_EQ(Lum::FromQUrl(QUrl::fromEncoded(text, QUrl::StrictMode)), URI()) << text;
    }
    EXPECT_TRUE(Lum::FromQUrl(QUrl("http://m\u00FCnchen/")).IsValidURI());
}

}  // namespace
