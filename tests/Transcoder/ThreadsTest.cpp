// What several threads do: the lock, conversions by all of them, strings handed over, the end of the process.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include <Lum/Lum.h>
#include <Lum/Mutex.h>
#include <Lum/Platform.h>

namespace {

struct ExposedMutex : Lum::Mutex {
    using Mutex::m_mutex;
    using Mutex::m_owner;
    /// Whether another thread could take it.
    [[nodiscard]] bool IsFree() {
        bool isFree = false;
        std::thread([&] {
            isFree = pthread_mutex_trylock(&m_mutex) == 0 && pthread_mutex_unlock(&m_mutex) == 0;
        }).join();
        return isFree;
    }
};

TEST(Mutex, MayBeTakenAgainByTheThreadThatHoldsIt) {
    ExposedMutex mutex;
    EXPECT_EQ(mutex.m_owner, 0U);
    mutex.Lock();
    mutex.Lock();
    EXPECT_EQ(mutex.m_owner, pthread_self());
    mutex.Unlock();
    EXPECT_EQ(mutex.m_owner, 0U);  // though it is held once more
    EXPECT_FALSE(mutex.IsFree());
    mutex.Unlock();
    EXPECT_TRUE(mutex.IsFree());
    {
        const Lum::ScopedLock lock(mutex);
        EXPECT_FALSE(mutex.IsFree());
    }
    EXPECT_TRUE(mutex.IsFree());
}

/// What one thread does with conversions of every kind, URIs and times: a sum of all that it sees.
std::size_t Checksum(const std::string& encoding, std::size_t round) {
    // With every third text the conversion fails on the way.
    const std::u16string text = std::u16string(round % 40, u'a') + u"§" + (round % 3 == 0 ? u"\xDC00" : u"");
    const std::string bytes = Lum::Transcoder::UTF16ToEncoding(text, encoding);
    std::string all = Lum::Transcoder::EncodingToUTF8(bytes, encoding) + Lum::Transcoder::PlatformEncoding();
    const auto whole = Lum::ConvertText(bytes, encoding, "koi8-r");
    all += whole.text + std::to_string(whole.offset) + Lum::ConvertTextFromUTF16(text, encoding).text;
    char block[64];
    Lum::StreamConverter stream(encoding, "utf-8");
    const std::size_t written = stream.Convert(bytes, block).written;
    Lum::URI uri("ftp://h/" + std::to_string(round));
    uri.FromEncodedString("ftp://h/a%E4" + std::string(block, written), encoding);
    all += uri.ToLocalPathMac();
    all += uri.ToString(true) + Lum::TimeStamp(2000, 1, 1, 0, 0, int(round), 0).ToW3DTF();
    if (const CFStringRef string = CFStringCreateWithLPCSTR(all.c_str(), 0, 0x08000100)) {
        CFStringGetLPSTR(string, block, sizeof block, 0x0201);
        CFRelease(string);
        all += block;
    }
    return std::hash<std::string>()(all) + (round % 50 == 0 ? Lum::KnownEncodings().size() : 0);
}

// In this order: what the first use of an encoding makes is made while all threads ask for it.
TEST(TranscoderThreads, AnswersEveryThreadAlike) {
    const std::string encodings[] = {"utf-8", "iso-8859-1", "utf-7", "shift_jis", "iso-2022-jp", "gb18030", "none"};
    const auto checksum = [&] {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < 350; ++i) {
            sum += Checksum(encodings[i % std::size(encodings)], i);
        }
        return sum;
    };
    std::vector<std::thread> threads;
    // More of them than the cache has slots.
    std::vector<std::size_t> sums(20);
    for (std::size_t& sum : sums) {
        threads.emplace_back([&] { sum = checksum(); });
    }
    std::for_each(threads.begin(), threads.end(), std::mem_fn(&std::thread::join));
    EXPECT_EQ(sums, std::vector<std::size_t>(20, checksum()));
}

// A CString belongs to one thread at a time: each thread hands the strings to the next one.
TEST(StringThreads, HandStringsOver) {
    CString text(u"x");
    for (int i = 0; i < 20; ++i) {
        std::thread([&] {
            const CString copy = text;
            text += copy.Left(1);
            text.ReleaseCFStringRef(text.GetCFStringRef(0));
        }).join();
    }
    EXPECT_EQ(text, CString(u'x', 21));
}

// Threads that no one waits for convert while the process ends.
TEST(ExitDeathTest, MayComeWhileThreadsConvert) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto end = [](int delay) {
        for (std::size_t i = 0; i < 4; ++i) {
            std::thread([i] {
                for (std::size_t round = 0;; ++round) {
                    Checksum(i % 2 == 0 ? "shift_jis" : "iso-2022-jp", round);
                }
            }).detach();
        }
        std::this_thread::sleep_for(std::chrono::microseconds(delay % 20 * 500));
        std::exit(0);
    };
    const char* const rounds = std::getenv("LUM_EXITS");
    for (int i = 0; i < (rounds == nullptr ? 2 : std::atoi(rounds)); ++i) {
        EXPECT_EXIT(end(i), testing::ExitedWithCode(0), "");
    }
}

}  // namespace
