// Qt: QString, which knows UTF-8.
#include <QByteArray>
#include <QString>
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
    }
}

const AddSubject add{{"Qt", AddCases}};

}  // namespace
}  // namespace Bench::Transcoding
