// The library's lock: Lum::Mutex, its guard Lum::ScopedLock, and the base that neither copies with.
#pragma once

#include <pthread.h>

#include <Lum/Export.h>

namespace Lum {

/// A base that can be neither copied nor assigned; it does nothing else.
class LUM_API LumThreadUncopyable {
public:
    LumThreadUncopyable(const LumThreadUncopyable&) = delete;
    LumThreadUncopyable& operator=(const LumThreadUncopyable&) = delete;

protected:
    LumThreadUncopyable() noexcept = default;
    ~LumThreadUncopyable() = default;
};

/// A recursive lock: the thread that holds it may lock it again, and must unlock it as often. It is
/// BasicLockable, so that std::lock_guard and std::unique_lock work with it. Must not be destroyed
/// while held.
class LUM_API Mutex : public virtual LumThreadUncopyable {
public:
    Mutex() noexcept;
    ~Mutex();

    /// Waits until no other thread holds the lock, and locks it.
    void Lock() noexcept;
    /// Must be called by the thread that holds the lock.
    void Unlock() noexcept;

    /// Lock and Unlock by the names that the standard library calls.
    void lock() noexcept { Lock(); }  // NOLINT(readability-identifier-naming)
    /// As Unlock.
    void unlock() noexcept { Unlock(); }  // NOLINT(readability-identifier-naming)

protected:
    pthread_t m_owner;  ///< The thread that locked last; 0 after any Unlock, even if the thread still holds the lock.
    pthread_mutex_t m_mutex;
};

/// Holds a Mutex from construction to destruction, on whichever way the scope is left.
class LUM_API ScopedLock : public virtual LumThreadUncopyable {
public:
    /// Locks `mutex`, which must outlive this object.
    explicit ScopedLock(Mutex& mutex) noexcept : m_Mutex(mutex) { m_Mutex.Lock(); }
    ~ScopedLock() { m_Mutex.Unlock(); }

private:
    Mutex& m_Mutex;
};

}  // namespace Lum
