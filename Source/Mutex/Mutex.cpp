// The recursive lock, over the recursive mutex of POSIX threads (IEEE 1003.1).
#include <pthread.h>

#include <Lum/Mutex.h>

namespace Lum {

Mutex::Mutex() noexcept : m_owner(0), m_mutex() {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&m_mutex, &attributes);
}

Mutex::~Mutex() { pthread_mutex_destroy(&m_mutex); }

void Mutex::Lock() noexcept {
    pthread_mutex_lock(&m_mutex);
    m_owner = pthread_self();
}

void Mutex::Unlock() noexcept {
    // First the owner: once the mutex is free, the next thread writes its own.
    m_owner = 0;
    pthread_mutex_unlock(&m_mutex);
}

}  // namespace Lum
