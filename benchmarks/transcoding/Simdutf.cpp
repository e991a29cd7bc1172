// simdutf: the fastest kernels known for UTF-8 and UTF-16. Two subjects: its best kernel for this processor,
// and the one for AVX2, which is what most processors have.
#include <simdutf.h>

#include <string>

#include "Case.h"
#include "transcoding/TranscodingFamily.h"

namespace Bench::Transcoding {
namespace {

using Kernel = const simdutf::implementation*;

std::u16string ToWide(Kernel kernel, const std::string& text) {
    std::u16string wide(kernel->utf16_length_from_utf8(text.data(), text.size()), u'\0');
    wide.resize(kernel->convert_utf8_to_utf16le(text.data(), text.size(), wide.data()));
    return wide;
}

std::string FromWide(Kernel kernel, const std::u16string& wide) {
    std::string text(kernel->utf8_length_from_utf16le(wide.data(), wide.size()), '\0');
    text.resize(kernel->convert_utf16le_to_utf8(wide.data(), wide.size(), text.data()));
    return text;
}

void AddKernelCases(Kernel kernel, const std::string& name, const Inputs& inputs) {
    for (const UnicodeCase& c : inputs.unicode) {
        AddCase(c.toWide, name, c.narrow, [kernel](const std::string& text) { return ToWide(kernel, text); });
        AddCase(c.fromWide, name, c.wide, [kernel](const std::u16string& wide) { return FromWide(kernel, wide); });
        AddCase(c.toWide + kIntoBuffer, name, c.narrow,
                [kernel, buffer = BufferFor<char16_t>(c.narrow, 1)](const std::string& text) mutable {
                    return kernel->convert_utf8_to_utf16le(text.data(), text.size(), buffer.data());
                });
        AddCase(c.fromWide + kIntoBuffer, name, c.wide,
                [kernel, buffer = BufferFor<char>(c.wide, 3)](const std::u16string& wide) mutable {
                    return kernel->convert_utf16le_to_utf8(wide.data(), wide.size(), buffer.data());
                });
    }
}

void AddBestCases(const std::string& name, const Inputs& inputs) {
    AddKernelCases(simdutf::get_available_implementations().detect_best_supported(), name, inputs);
}

void AddAvx2Cases(const std::string& name, const Inputs& inputs) {
    const Kernel kernel = simdutf::get_available_implementations()["haswell"];
    if (kernel != nullptr && kernel->supported_by_runtime_system()) {
        AddKernelCases(kernel, name, inputs);
    }
}

const AddSubject addBest{{"simdutf", AddBestCases}};
const AddSubject addAvx2{{"simdutf AVX2", AddAvx2Cases}};

}  // namespace
}  // namespace Bench::Transcoding
