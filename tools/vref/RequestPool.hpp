#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <functional>
#include <optional>
#include <thread>
#include <vector>

#include "foundation/core/Mutex.hpp"

namespace reference::tools {

// Carries out the requests of a client on a few threads, so that a look-up never waits behind a
// search. Tasks that change what the others work with run alone.
//
//  - Quick tasks have one thread and slow ones two; in its lane, a task begins in its turn.
//  - Once a task that runs alone is added, no other task begins; it begins as soon as those that
//    run have ended. So what was added before it sees either all of its change or nothing, and
//    what is added after it sees all.
//
// Tasks should not throw; what one throws all the same, for example because there is no memory to
// answer, is thrown by the next add() or drain(). Any thread may call every operation; those that
// wait say so, and a task must not call them.
class RequestPool {
  public:
    using Task = std::function<void()>;
    enum class Lane { Quick, Slow, Alone };

    // So many tasks of a lane wait at most.
    static constexpr std::size_t capacity = 64;

    // Throws UnusableError where its threads cannot be started; one of each kind is enough.
    RequestPool();
    // Drops what has not begun, and waits for what has.
    ~RequestPool();
    RequestPool(const RequestPool&) = delete;  // its threads know its place
    RequestPool& operator=(const RequestPool&) = delete;

    // Adds a task; waits while the lane is full. `number` is what remove() knows it by.
    void add(Lane lane, std::uint64_t number, Task task);
    // The same for a task that adds another: the lane may become longer by one for each thread.
    void addFromTask(Lane lane, std::uint64_t number, Task task);

    // Runs the task on this thread, alone, in its turn among such tasks; waits until it has ended.
    // It may throw.
    void runAlone(const Task& task);

    // Takes a task out that has not begun, and returns whether there was one.
    bool remove(std::uint64_t number);

    // Waits until everything has ended that was added.
    void drain();

  private:
    struct Entry {
        std::uint64_t number;
        Task task;                 // empty: that of a caller who runs it itself,
        std::uint64_t ticket = 0;  // and knows it by this
    };
    using Queue = std::deque<Entry>;

    void endThreads();
    void throwFailureLocked() const VELTRA_REQUIRES(m_mutex);
    Queue& queueOf(Lane lane) VELTRA_REQUIRES(m_mutex);
    void addLocked(Lane lane, std::uint64_t number, Task task) VELTRA_REQUIRES(m_mutex);
    [[nodiscard]] bool mayRunAlone() const VELTRA_REQUIRES(m_mutex);
    void beginAlone() VELTRA_REQUIRES(m_mutex);
    void work(Lane lane);
    // The next task for a thread of the lane; waits for one. Nothing at the end.
    [[nodiscard]] std::optional<Task> take(Lane lane);
    void finish();

    foundation::core::Mutex m_mutex;
    std::condition_variable_any m_changed;
    Queue m_quick VELTRA_GUARDED_BY(m_mutex);
    Queue m_slow VELTRA_GUARDED_BY(m_mutex);
    Queue m_alone VELTRA_GUARDED_BY(m_mutex);
    std::size_t m_running VELTRA_GUARDED_BY(m_mutex) = 0;
    bool m_isAlone VELTRA_GUARDED_BY(m_mutex) = false;  // what runs runs alone
    std::uint64_t m_lastTicket VELTRA_GUARDED_BY(m_mutex) = 0;
    bool m_isEnding VELTRA_GUARDED_BY(m_mutex) = false;
    std::exception_ptr m_failure VELTRA_GUARDED_BY(m_mutex);  // what the first task threw that did

    std::vector<std::jthread> m_threads;
};

}  // namespace reference::tools
