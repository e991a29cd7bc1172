// Qt: QUrl, which takes and gives UTF-16 text, and QByteArray for escapes.
#include <QByteArray>
#include <QString>
#include <QUrl>
#include <string>

#include "Case.h"
#include "uri/UriFamily.h"

namespace Bench::Uri {
namespace {

QString Text(const std::string& text) { return QString::fromStdString(text); }
QByteArray Bytes(const std::string& text) { return QByteArray::fromStdString(text); }

QUrl Parse(const QString& text) { return QUrl(text); }

bool Reparse(QUrl& url, const QString& text) {
    url.setUrl(text);
    return url.isValid();
}

void AddCases(const std::string& name, const Inputs& inputs) {
    AddPreparedCase(kParseFresh, name, inputs.urls, Text, Parse);
    AddPreparedCase(kParseOneStep, name, inputs.urls, Text, Parse);
    AddPreparedCase(kParseReused, name, inputs.urls, Text,
                    [url = QUrl()](const QString& text) mutable { return Reparse(url, text); });
    AddPreparedCase(
        kPrint, name, inputs.printed, [](const std::string& text) { return Parse(Text(text)); },
        [](const QUrl& url) { return url.toString(QUrl::FullyEncoded); });
    for (const TextCase& c : inputs.escapes) {
        AddPreparedCase(c.name, name, c.texts, Bytes, [](const QByteArray& text) { return text.toPercentEncoding(); });
    }
    for (const TextCase& c : inputs.unescapes) {
        AddPreparedCase(c.name, name, c.texts, Bytes,
                        [](const QByteArray& text) { return QByteArray::fromPercentEncoding(text); });
    }
}

const AddSubject add{{"Qt", [](const std::string& text) { return Parse(Text(text)).isValid(); }, AddCases}};

}  // namespace
}  // namespace Bench::Uri
