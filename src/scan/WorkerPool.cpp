#include "WorkerPool.h"

#include <chrono>
#include <system_error>

namespace zentoria::scan {

WorkerPool::WorkerPool(int threads) {
    m_threads.reserve(std::size_t(std::max(0, threads)));
    for (int i = 0; i < threads; ++i) {
        try {
            m_threads.emplace_back([this] { work(); });
        } catch (const std::system_error&) {
            // The system gives no more threads: the check goes on with those it has.
            break;
        }
    }
}

WorkerPool::~WorkerPool() {
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_all();
    for (std::thread& thread : m_threads) {
        thread.join();
    }
}

void WorkerPool::start(std::function<void()> task) {
    if (m_threads.empty()) {
        task();
        return;
    }
    {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back(std::move(task));
    }
    m_wake.notify_one();
}

bool WorkerPool::waitForDone(int ms) {
    std::unique_lock lock(m_mutex);
    return m_done.wait_for(lock, std::chrono::milliseconds(ms),
                           [this] { return m_tasks.empty() && m_running == 0; });
}

void WorkerPool::work() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_stopping || !m_tasks.empty(); });
        if (m_tasks.empty()) {
            return;
        }
        std::function<void()> task = std::move(m_tasks.front());
        m_tasks.pop_front();
        ++m_running;
        lock.unlock();
        task();
        // What the task held (an open folder, say) goes before it counts as done.
        task = nullptr;
        lock.lock();
        --m_running;
        if (m_tasks.empty() && m_running == 0) {
            m_done.notify_all();
        }
    }
}

} // namespace zentoria::scan
