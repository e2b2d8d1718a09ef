#include "vref/RequestPool.hpp"

#include <algorithm>
#include <exception>
#include <system_error>
#include <utility>

#include "vref/ExitStatus.hpp"

namespace reference::tools {

using foundation::core::MutexLock;

namespace {

constexpr std::size_t slowThreads = 2;

}  // namespace

RequestPool::RequestPool() {
    try {
        m_threads.emplace_back([this] { work(Lane::Quick); });
        m_threads.emplace_back([this] { work(Lane::Slow); });
    } catch (const std::system_error& error) {
        endThreads();
        throw UnusableError("A thread could not be started: " + error.code().message() + ".");
    } catch (...) {
        endThreads();
        throw;
    }
    try {
        while (m_threads.size() <= slowThreads)
            m_threads.emplace_back([this] { work(Lane::Slow); });
    } catch (const std::exception&) {
        // One of each is enough.
    }
}

RequestPool::~RequestPool() {
    endThreads();
}

void RequestPool::endThreads() {
    {
        const MutexLock lock(m_mutex);
        m_isEnding = true;
    }
    m_changed.notify_all();
    m_threads.clear();
}

void RequestPool::add(Lane lane, std::uint64_t number, Task task) {
    const MutexLock lock(m_mutex);
    while (queueOf(lane).size() >= capacity)
        m_changed.wait(m_mutex);
    throwFailureLocked();
    addLocked(lane, number, std::move(task));
}

void RequestPool::addFromTask(Lane lane, std::uint64_t number, Task task) {
    const MutexLock lock(m_mutex);
    addLocked(lane, number, std::move(task));
}

void RequestPool::runAlone(const Task& task) {
    {
        const MutexLock lock(m_mutex);
        const std::uint64_t ticket = ++m_lastTicket;
        m_alone.push_back({.number = 0, .task = {}, .ticket = ticket});
        while (m_alone.front().ticket != ticket || !mayRunAlone())
            m_changed.wait(m_mutex);
        beginAlone();
    }
    try {
        task();
    } catch (...) {
        finish();
        throw;
    }
    finish();
}

bool RequestPool::remove(std::uint64_t number) {
    const MutexLock lock(m_mutex);
    bool isRemoved = false;
    for (Queue* queue : {&m_quick, &m_slow, &m_alone})
        isRemoved = std::erase_if(*queue,
                                  [&](const Entry& entry) {
                                      return entry.task && entry.number == number;
                                  }) > 0 ||
                    isRemoved;
    if (isRemoved)
        m_changed.notify_all();
    return isRemoved;
}

void RequestPool::drain() {
    const MutexLock lock(m_mutex);
    while (m_running > 0 || !m_quick.empty() || !m_slow.empty() || !m_alone.empty())
        m_changed.wait(m_mutex);
    throwFailureLocked();
}

void RequestPool::throwFailureLocked() const {
    if (m_failure)
        std::rethrow_exception(m_failure);
}

RequestPool::Queue& RequestPool::queueOf(Lane lane) {
    switch (lane) {
        case Lane::Quick:
            return m_quick;
        case Lane::Slow:
            return m_slow;
        case Lane::Alone:
            break;
    }
    return m_alone;
}

void RequestPool::addLocked(Lane lane, std::uint64_t number, Task task) {
    queueOf(lane).push_back({.number = number, .task = std::move(task)});
    m_changed.notify_all();
}

bool RequestPool::mayRunAlone() const {
    return m_running == 0;
}

void RequestPool::beginAlone() {
    m_alone.pop_front();
    m_running = 1;
    m_isAlone = true;
}

void RequestPool::work(Lane lane) {
    while (const auto task = take(lane)) {
        try {
            (*task)();
        } catch (...) {
            const MutexLock lock(m_mutex);
            if (!m_failure)
                m_failure = std::current_exception();
        }
        finish();
    }
}

std::optional<RequestPool::Task> RequestPool::take(Lane lane) {
    const MutexLock lock(m_mutex);
    while (!m_isEnding) {
        if (!m_alone.empty()) {
            if (m_alone.front().task && mayRunAlone()) {
                Task task = std::move(m_alone.front().task);
                beginAlone();
                m_changed.notify_all();
                return task;
            }
        } else if (Queue& queue = queueOf(lane); !m_isAlone && !queue.empty()) {
            Task task = std::move(queue.front().task);
            queue.pop_front();
            ++m_running;
            m_changed.notify_all();
            return task;
        }
        m_changed.wait(m_mutex);
    }
    return std::nullopt;
}

void RequestPool::finish() {
    {
        const MutexLock lock(m_mutex);
        --m_running;
        m_isAlone = false;
    }
    m_changed.notify_all();
}

}  // namespace reference::tools
