#pragma once

#include <mutex>

// Attributes with which Clang checks at compile time that what a mutex guards is touched only with
// that mutex held. Other compilers ignore them.
#if defined(__clang__)
#define VELTRA_THREAD_MARK(mark) __attribute__((mark))
#else
#define VELTRA_THREAD_MARK(mark)
#endif

#define VELTRA_GUARDED_BY(mutex) VELTRA_THREAD_MARK(guarded_by(mutex))
#define VELTRA_REQUIRES(mutex) VELTRA_THREAD_MARK(requires_capability(mutex))

namespace foundation::core {

// std::mutex, known to Clang's thread-safety analysis.
class VELTRA_THREAD_MARK(capability("mutex")) Mutex {
  public:
    void lock() VELTRA_THREAD_MARK(acquire_capability()) { m_mutex.lock(); }
    [[nodiscard]] bool try_lock() VELTRA_THREAD_MARK(try_acquire_capability(true)) {
        return m_mutex.try_lock();
    }
    void unlock() VELTRA_THREAD_MARK(release_capability()) { m_mutex.unlock(); }

  private:
    std::mutex m_mutex;
};

// Holds a mutex for the length of a scope.
class VELTRA_THREAD_MARK(scoped_lockable) MutexLock {
  public:
    explicit MutexLock(Mutex& mutex) VELTRA_THREAD_MARK(acquire_capability(mutex))
        : m_mutex(mutex) {
        m_mutex.lock();
    }
    MutexLock(const MutexLock&) = delete;  // bound to its scope
    MutexLock& operator=(const MutexLock&) = delete;
    ~MutexLock() VELTRA_THREAD_MARK(release_capability()) { m_mutex.unlock(); }

  private:
    Mutex& m_mutex;
};

}  // namespace foundation::core
