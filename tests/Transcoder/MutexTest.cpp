#include <Lum/Mutex.h>

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <type_traits>

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

static_assert(!std::is_copy_constructible_v<Lum::Mutex> && !std::is_copy_assignable_v<Lum::Mutex>);
static_assert(!std::is_copy_constructible_v<Lum::ScopedLock> &&
              std::is_base_of_v<Lum::LumThreadUncopyable, Lum::Mutex>);

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
}

TEST(Mutex, IsFreeAndWithoutOwnerWhenAnExceptionLeavesTheScope) {
    ExposedMutex mutex;
    EXPECT_THROW(
        {
            const Lum::ScopedLock lock(mutex);
            throw std::runtime_error("");
        },
        std::runtime_error);
    EXPECT_EQ(mutex.m_owner, 0U);
    EXPECT_TRUE(mutex.IsFree());
}

TEST(Mutex, KeepsThreadsApart) {
    Lum::Mutex mutex;
    int count = 0;
    const auto work = [&] {
        for (int i = 0; i < 10000; ++i) {
            const std::lock_guard<Lum::Mutex> guard(mutex);
            ++count;
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(count, 20000);
}

}  // namespace
