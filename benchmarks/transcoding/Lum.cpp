// Lum: the operations on whole texts, and how they share the machine.
#include <Lum/Transcoder.h>

#include <barrier>
#include <bit>
#include <memory>
#include <span>
#include <stdexcept>
#include <string_view>
#include <thread>

#include "Case.h"
#include "Family.h"
#include "transcoding/TranscodingFamily.h"

namespace Bench::Transcoding {
namespace {

using Lum::Transcoder;

/// Lets `count` threads convert short texts, each of them all, and tells the time of the whole.
void MeasureThreads(benchmark::State& state, const std::vector<std::string>& texts, std::ptrdiff_t count) {
    constexpr int rounds = 100;
    std::barrier together(count + 1);
    bool isOver = false;
    std::vector<std::thread> threads;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        threads.emplace_back([&] {
            for (together.arrive_and_wait(); !isOver; together.arrive_and_wait()) {
                for (int round = 0; round < rounds; ++round) {
                    for (const std::string& text : texts) {
                        benchmark::DoNotOptimize(Transcoder::UTF8ToUTF16(text));
                    }
                }
                together.arrive_and_wait();
            }
        });
    }
    for ([[maybe_unused]] auto iteration : state) {
        together.arrive_and_wait();
        together.arrive_and_wait();
    }
    isOver = true;
    together.arrive_and_wait();
    for (std::thread& thread : threads) {
        thread.join();
    }
    state.counters[kUnitsCounter] = static_cast<double>(texts.size()) * rounds * static_cast<double>(count);
}

void AddThreadCase(const std::string& caseName, const std::string& name, const std::vector<std::string>& texts,
                   std::ptrdiff_t count) {
    Register(caseName, name, [&texts, count](benchmark::State& state) {
        MeasureThreads(state, texts, count);
    })->UseRealTime();
}

/// The stream converter, which is there and writes where it is told to.
template <class Text>
void AddBufferCase(const std::string& caseName, const std::string& name, const std::vector<Text>& texts,
                   const std::string& from, const std::string& to, std::size_t mostBytesPerUnit) {
    const auto converter = std::make_shared<Lum::StreamConverter>(from, to);
    AddCase(caseName + kIntoBuffer, name, texts,
            [converter, buffer = BufferFor<char>(texts, mostBytesPerUnit)](const Text& text) mutable {
                const std::string_view bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof text[0]);
                const Lum::ConversionResult made = converter->Convert(bytes, buffer);
                const Lum::ConversionResult end = converter->Finish(std::span(buffer).subspan(made.written));
                if (made.status != Lum::ConversionStatus::kDone || end.status != Lum::ConversionStatus::kDone) {
                    throw std::runtime_error("Lum: a text cannot be converted");
                }
                return made.written + end.written;
            });
}

void AddCases(const std::string& name, const Inputs& inputs) {
    const std::string wide = std::endian::native == std::endian::little ? "utf-16le" : "utf-16be";
    for (const UnicodeCase& c : inputs.unicode) {
        AddBufferCase(c.toWide, name, c.narrow, "utf-8", wide, 2);
        AddBufferCase(c.fromWide, name, c.wide, wide, "utf-8", 3);
        AddCase(c.toWide, name, c.narrow, Transcoder::UTF8ToUTF16);
        AddCase(c.fromWide, name, c.wide, Transcoder::UTF16ToUTF8);
    }
    for (const EncodingCase& c : inputs.encodings) {
        AddBufferCase(c.toWide, name, c.narrow, c.encoding, wide, 2);
        AddBufferCase(c.fromWide, name, c.wide, wide, c.encoding, 8);
        AddCase(c.toWide, name, c.narrow,
                [&c](const std::string& bytes) { return Transcoder::EncodingToUTF16(bytes, c.encoding); });
        AddCase(c.fromWide, name, c.wide,
                [&c](const std::u16string& text) { return Transcoder::UTF16ToEncoding(text, c.encoding); });
    }
    const std::vector<std::string>& texts = inputs.unicode.front().narrow;
    AddThreadCase(kOneThread, name, texts, 1);
    AddThreadCase(kTwoThreads, name, texts, 2);
    AddThreadCase(kEightThreads, name, texts, 8);
}

const AddSubject add{{kMeasured, AddCases}};

}  // namespace
}  // namespace Bench::Transcoding
