// Qt: QUrl and QUrlQuery, which take and give UTF-16 text, and QByteArray for escapes.
#include <QByteArray>
#include <QString>
#include <QUrl>
#include <QUrlQuery>
#include <optional>
#include <string>
#include <utility>

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

void SetQueryKey(QUrl& url, const std::pair<QString, QString>& change) {
    QUrlQuery query(url);
    query.removeQueryItem(change.first);
    query.addQueryItem(change.first, change.second);
    url.setQuery(query);
}

void AddQueryCases(const std::string& name, const Inputs& inputs) {
    const auto parse = [](const QueryText& query) { return Parse(Text(query.url)); };
    AddPreparedCase(kQueryToMap, name, inputs.queries, parse,
                    [](const QUrl& url) { return QUrlQuery(url).queryItems(QUrl::FullyDecoded); });
    AddPreparedCase(
        kSetQueryKey, name, inputs.changes,
        [](const QueryPair& change) { return std::pair(Text(change.first), Text(change.second)); },
        [url = parse(inputs.queries.front())](const std::pair<QString, QString>& change) mutable -> const QUrl& {
            SetQueryKey(url, change);
            return url;
        });
}

void AddCases(const std::string& name, const Inputs& inputs) {
    AddPreparedCase(kParseFresh, name, inputs.urls, Text, Parse);
    AddPreparedCase(kParseOneStep, name, inputs.urls, Text, Parse);
    AddPreparedCase(kParseReused, name, inputs.urls, Text,
                    [url = QUrl()](const QString& text) mutable { return Reparse(url, text); });
    AddPreparedCase(
        kPrint, name, inputs.accepted, [](const std::string& text) { return Parse(Text(text)); },
        [](const QUrl& url) { return url.toString(QUrl::FullyEncoded); });
    AddHeldCase(kHold, name, inputs.accepted, [](const std::string& text) { return Parse(Text(text)); });
    AddPreparedCase(
        kEqual, name, inputs.accepted,
        [](const std::string& text) { return std::pair(Parse(Text(text)), Parse(Text(text))); },
        [](const std::pair<QUrl, QUrl>& urls) { return urls.first == urls.second; });
    for (const TextCase& c : inputs.setEscapes) {
        AddPreparedCase(c.name, name, c.texts, Bytes, [](const QByteArray& text) { return text.toPercentEncoding(); });
    }
    for (const TextCase& c : inputs.escapes) {
        AddPreparedCase(c.name, name, c.texts, Bytes, [](const QByteArray& text) { return text.toPercentEncoding(); });
    }
    for (const TextCase& c : inputs.unescapes) {
        AddPreparedCase(c.name, name, c.texts, Bytes,
                        [](const QByteArray& text) { return QByteArray::fromPercentEncoding(text); });
    }
    for (const ResolveCase& c : inputs.resolves) {
        const auto resolve = [base = Parse(Text(c.base))](const QString& reference) {
            return base.resolved(QUrl(reference));
        };
        AddPreparedCase(c.freshName, name, c.references, Text, resolve);
        AddPreparedCase(c.reusedName, name, c.references, Text, resolve);
    }
    AddQueryCases(name, inputs);
}

std::optional<std::string> Resolved(const std::string& base, const std::string& reference) {
    const QUrl target = Parse(Text(base)).resolved(QUrl(Text(reference)));
    return target.isValid() ? std::optional(target.toString(QUrl::FullyEncoded).toStdString()) : std::nullopt;
}

const AddSubject add{{"Qt", [](const std::string& text) { return Parse(Text(text)).isValid(); }, Resolved, AddCases}};

}  // namespace
}  // namespace Bench::Uri
