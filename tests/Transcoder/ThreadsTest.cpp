#include <Lum/Transcoder.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace {

using Lum::Transcoder;

TEST(TranscoderThreads, AnswersEveryThreadAlike) {
    const std::string encodings[] = {"utf-8", "iso-8859-1", "utf-7", "shift_jis", "iso-2022-jp", "gb18030"};
    const auto checksum = [&] {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < 600; ++i) {
            const std::string& encoding = encodings[i % std::size(encodings)];
            // With every third text the conversion fails on the way.
            const std::u16string text = std::u16string(i % 40, u'a') + u"§" + (i % 3 == 0 ? u"\xDC00" : u"");
            sum += std::hash<std::string>{}(
                Transcoder::EncodingToUTF8(Transcoder::UTF16ToEncoding(text, encoding), encoding));
        }
        return sum;
    };
    const std::size_t expected = checksum();
    std::vector<std::thread> threads;
    std::vector<std::size_t> sums(8);
    for (std::size_t& sum : sums) {
        threads.emplace_back([&] { sum = checksum(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(sums, std::vector<std::size_t>(8, expected));
}

}  // namespace
