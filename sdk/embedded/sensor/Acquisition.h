#pragma once

#include "base/Clock.h"
#include "sensor/BoardRun.h"
#include "sensor/Driver.h"
#include "sensor/Reading.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace ipncsdk::sensor {

/// Polls boards in their periods.
///
/// Boards of one serial line share it and are read one after the other; every other board is a line of its own. A few
/// threads serve the lines that are due. While all of them wait for devices and a line is late, another thread is
/// begun, so that a board that hangs delays no other line. Thread-safe.
class Acquisition final : public OutputWriter {
public:
    /// The clock tells the times of readings; when to poll follows the machine's own. The sinks outlive this.
    Acquisition(const Clock& clock, DriverTools tools, std::vector<ReadingSink*> sinks);
    /// As `stop`.
    ~Acquisition() override;

    /// Replaces the set of boards. Those that are as they were keep their connections.
    void setBoards(const std::vector<SensorBoard>& boards);
    /// Ends the threads; waits for devices that are being read.
    void stop();

    ServiceCode write(int pid, double value) override;
    /// Reads the input's board now. Nothing when no board has such an input.
    std::optional<Reading> readNow(int pid);
    /// A value of an input that is measured elsewhere; `UnknownInput` when its board is not of that kind.
    ServiceCode hand(int pid, double raw);

private:
    using Steady = std::chrono::steady_clock;

    /// Boards that share one way and are served by one thread at a time.
    struct Line {
        std::mutex device; ///< held while a board is spoken to
        std::vector<std::unique_ptr<BoardRun>> boards;
        bool retired = false; ///< guarded by Acquisition::mutex_
    };
    using LinePointer = std::shared_ptr<Line>;
    struct Place {
        LinePointer line;
        BoardRun* board = nullptr; ///< of `line`
        Port port;
        bool isInput = true;
    };

    static std::string keyOf(const SensorBoard& board);
    static bool holds(const Line& line, const std::vector<const SensorBoard*>& boards);
    LinePointer makeLine(const std::vector<const SensorBoard*>& boards) const;
    void schedule(const LinePointer& line, Steady::time_point due);
    void indexPorts();
    std::optional<Place> placeOf(int pid) const;
    void handOut(const std::vector<Reading>& readings);

    void watchTime();
    void work();
    void serve(Line& line);

    const Clock& clock_;
    const DriverTools tools_;
    const std::vector<ReadingSink*> sinks_;

    mutable std::mutex mutex_;
    std::condition_variable timeChanged_;
    std::condition_variable workCame_;
    // Guarded by mutex_ from here on.
    std::map<std::string, LinePointer> lines_;
    std::multimap<Steady::time_point, LinePointer> waiting_; ///< every line that is not being served or ready
    std::deque<LinePointer> ready_;
    std::map<int, Place> ports_;
    std::size_t resting_ = 0; ///< threads that wait for work
    bool stopping_ = false;
    std::vector<std::thread> workers_;

    std::thread time_;
};

} // namespace ipncsdk::sensor
