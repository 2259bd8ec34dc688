#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace zentoria::scan {

// A fixed set of plain threads that run the tasks given to them in turn. Not QThreadPool: each of its
// threads opens an event dispatcher as it starts (a GLib wakeup, that is a descriptor) and aborts the
// program when none is left, and it lets idle threads go and starts new ones later, when a walk may
// hold every descriptor there is. These threads take no descriptor and all start at once.
class WorkerPool {
public:
    // Starts up to `threads` threads; as many as the system gives. With none, tasks run where they are
    // started.
    explicit WorkerPool(int threads);
    ~WorkerPool();
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    void start(std::function<void()> task);
    // Whether every task started has ended, waiting at most `ms` milliseconds for it.
    bool waitForDone(int ms);

private:
    void work();

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::condition_variable m_done;
    std::deque<std::function<void()>> m_tasks;
    int m_running = 0;
    bool m_stopping = false;
    std::vector<std::thread> m_threads;
};

} // namespace zentoria::scan
