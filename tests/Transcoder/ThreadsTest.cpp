// What several threads do: the lock, and conversions by all of them at the same time.
#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include <Lum/Mutex.h>
#include <Lum/Transcoder.h>

namespace {

struct ExposedMutex : Lum::Mutex {
    using Mutex::m_mutex;
    using Mutex::m_owner;
    /// Whether another thread could take it.
    [[nodiscard]] bool IsFree() {
        bool isFree = false;
        std::thread([&] {
            isFree = pthread_mutex_trylock(&m_mutex) == 0;
            if (isFree) {
                pthread_mutex_unlock(&m_mutex);
            }
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

TEST(TranscoderThreads, AnswersEveryThreadAlike) {
    const std::string encodings[] = {"utf-8", "iso-8859-1", "utf-7", "shift_jis", "iso-2022-jp", "gb18030"};
    const auto checksum = [&] {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < 600; ++i) {
            const std::string& encoding = encodings[i % std::size(encodings)];
            // With every third text the conversion fails on the way.
            const std::u16string text = std::u16string(i % 40, u'a') + u"§" + (i % 3 == 0 ? u"\xDC00" : u"");
            sum += std::hash<std::string>{}(
                Lum::Transcoder::EncodingToUTF8(Lum::Transcoder::UTF16ToEncoding(text, encoding), encoding));
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
