// absl: SNPrintF, which writes bytes, and their widening.
#include <absl/strings/str_format.h>

#include <array>
#include <string>

#include "strings/Cases.h"

namespace Bench::Strings {
namespace {

std::u16string Format(const FormatArguments& arguments) {
    std::array<char, 128> buffer;
    const int size = absl::SNPrintF(buffer.data(), buffer.size(), "%d %s %f", arguments.number, arguments.narrow,
                                    arguments.fraction);
    return {buffer.data(), buffer.data() + size};
}

void AddCases(const std::string& name, const Inputs& inputs) {
    AddCase(kFormat + kLocked, name, inputs.formats, Format);
}

const AddSubject add{{"absl", AddCases}};

}  // namespace
}  // namespace Bench::Strings
