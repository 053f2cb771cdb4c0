#pragma once

#include "sensor/Reading.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace ipncsdk::api {

/// Switches outputs on threads of its own, since a device may take its time. Of an output that is switched again
/// while it waits for its turn only the last state is written. Thread-safe.
class OutputDesk final {
public:
    OutputDesk();
    /// As `stop`.
    ~OutputDesk();
    OutputDesk(const OutputDesk&) = delete;
    OutputDesk& operator=(const OutputDesk&) = delete;

    /// Who writes; outlives `stop`. Until then what is to be switched is dropped.
    void use(sensor::OutputWriter& writer);
    void write(int pid, bool on);
    /// Writes what waits and ends the threads.
    void stop();

private:
    void work();

    std::mutex mutex_;
    std::condition_variable changed_;
    // Guarded by mutex_ from here on.
    sensor::OutputWriter* writer_ = nullptr; ///< null: nobody writes yet
    std::map<int, bool> waiting_;            ///< by pid
    std::set<int> busy_;                     ///< pids that a thread writes now
    bool stopping_ = false;

    std::vector<std::thread> threads_;
};

} // namespace ipncsdk::api
