#pragma once

#include "sensor/Driver.h"
#include "sensor/Reading.h"

#include <chrono>

namespace ipncsdk::sensor {

/// A board of a device, as it is to be read.
struct SensorBoard {
    std::string ipncid;
    Board board;
    bool reachable = true; ///< the device is there; of one that is not, every input is abnormal

    friend bool operator==(const SensorBoard&, const SensorBoard&) = default;
};

/// One board from its opening to its end: reads it when its time has come, opens it again after growing pauses, turns
/// raw values into readings. One thread at a time; times are handed in.
class BoardRun final {
public:
    using Steady = std::chrono::steady_clock::time_point;

    static constexpr std::chrono::milliseconds firstPause{1000};
    static constexpr std::chrono::milliseconds longestPause{30000};

    /// `driver` is null for boards whose values are handed in.
    BoardRun(SensorBoard what, std::unique_ptr<Driver> driver, Steady now);
    BoardRun(const BoardRun&) = delete;
    BoardRun& operator=(const BoardRun&) = delete;

    [[nodiscard]] const SensorBoard& what() const { return what_; }
    /// When it wants to be polled; never for one without a driver.
    [[nodiscard]] Steady due() const { return due_; }

    /// Reads all inputs. `wall` is the time of the readings; what has not changed its state and is not fresh is left
    /// out.
    std::vector<Reading> poll(Steady now, std::chrono::system_clock::time_point wall);
    /// Like `poll`, at once, and with every input: for who asks now.
    std::vector<Reading> readAll(Steady now, std::chrono::system_clock::time_point wall);
    /// A value that somebody else measured.
    std::optional<Reading> hand(int pid, double raw, std::chrono::system_clock::time_point wall);
    /// Empty, or why the output was not switched.
    std::string write(const Port& output, double value, Steady now);
    /// Takes over what was known of the inputs of the board that this one replaces. What is told next is told anew.
    void inherit(const BoardRun& before);
    /// Gives the way free for others; the next poll takes it again.
    void release();

private:
    struct State {
        bool known = false; ///< something was told of it
        bool normal = false;
        double value = 0; ///< the last normal one
    };

    bool ensureOpen(Steady now, bool atOnce);
    void lost(Steady now, const std::string& reason);
    std::vector<Reading> take(const std::vector<RawValue>& raw, std::chrono::system_clock::time_point wall, bool all);

    const SensorBoard what_;
    const std::unique_ptr<Driver> driver_;
    const std::chrono::milliseconds period_;
    std::vector<State> states_;
    bool open_ = false;
    bool failing_ = false; ///< the log has been told
    std::chrono::milliseconds pause_ = firstPause;
    Steady retryAt_;
    Steady due_;
};

} // namespace ipncsdk::sensor
