// Qt: QString, which knows UTF-8.
#include <QByteArray>
#include <QString>
#include <QStringConverter>
#include <string>

#include "Case.h"
#include "transcoding/TranscodingFamily.h"

namespace Bench::Transcoding {
namespace {

void AddCases(const std::string& name, const Inputs& inputs) {
    for (const UnicodeCase& c : inputs.unicode) {
        AddPreparedCase(
            c.toWide, name, c.narrow, [](const std::string& text) { return QByteArray::fromStdString(text); },
            [](const QByteArray& text) { return QString::fromUtf8(text); });
        AddPreparedCase(
            c.fromWide, name, c.wide, [](const std::u16string& text) { return QString::fromStdU16String(text); },
            [](const QString& text) { return text.toUtf8(); });
        AddCase(c.toWide + kIntoBuffer, name, c.narrow,
                [buffer = BufferFor<QChar>(c.narrow, 1)](const std::string& text) mutable {
                    QStringDecoder decoder(QStringDecoder::Utf8);
                    const QByteArrayView bytes(text.data(), static_cast<qsizetype>(text.size()));
                    return decoder.appendToBuffer(buffer.data(), bytes) - buffer.data();
                });
        AddCase(c.fromWide + kIntoBuffer, name, c.wide,
                [buffer = BufferFor<char>(c.wide, 3)](const std::u16string& text) mutable {
                    QStringEncoder encoder(QStringEncoder::Utf8);
                    return encoder.appendToBuffer(buffer.data(), QStringView(text)) - buffer.data();
                });
    }
}

const AddSubject add{{"Qt", AddCases}};

}  // namespace
}  // namespace Bench::Transcoding
