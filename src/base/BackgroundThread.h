#pragma once

#include <QThread>

#include <atomic>

/// Work in a thread of its own that is done once. `finished` tells that it is over.
///
/// Whoever is about to read or destroy what the work has used calls `join` first, also in the destructor of the class
/// that has it: the end is handed over by an atomic of ours, which, unlike Qt's own, tools that look for races see.
class BackgroundThread : public QThread {
public:
    using QThread::QThread;

    /// Waits for the end, if it has been started. Not in the thread itself.
    void join() {
        wait();
        static_cast<void>(ended_.load(std::memory_order_acquire));
    }

protected:
    virtual void work() = 0;

private:
    void run() final {
        work();
        ended_.store(true, std::memory_order_release);
    }

    std::atomic<bool> ended_{false};
};
