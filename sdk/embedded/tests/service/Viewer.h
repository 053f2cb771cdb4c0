#pragma once

#include "TestSdk.h"

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace ipncsdk::test {

/// A client's video request that checks what it is sent: one message at a time, frames only between "avopen" and the
/// next "avstate", pictures of the size that the last "avopen" named, and nothing after the end. Frames are counted,
/// other messages kept. Ends before its SDK does.
class Viewer final {
public:
    explicit Viewer(TestSdk& sdk)
        : sdk_(sdk) {}
    ~Viewer() { stop(); }
    Viewer(const Viewer&) = delete;
    Viewer& operator=(const Viewer&) = delete;

    /// Called inside every callback with its text; to be set before `open`.
    std::function<void(const std::string& text)> onMessage;

    /// Sends `openMessage` with these keys changed.
    void open(const std::string& ipncid, const Json& keys = Json::object());
    void stop();
    /// Sends an exchange of light and main stream; the result is kept under its number, from 0.
    void change(bool hd);

    [[nodiscard]] int id() const { return id_; }
    [[nodiscard]] int frames() const { return frames_; }
    /// Frames since the last "avopen".
    [[nodiscard]] int framesOfThis() const { return framesOfThis_; }
    [[nodiscard]] bool waitForFrames(int more);
    [[nodiscard]] bool waitForFramesOf(bool hd);
    /// The "retcode" of a change's result; -1 when none comes.
    [[nodiscard]] int waitForResult(std::size_t number);
    [[nodiscard]] std::vector<Json> results() const { return outcome_->results.all(); }
    /// The messages but for frames, as "avstate", "avopen light", "avopen main", "avclose N".
    [[nodiscard]] std::vector<std::string> course() const;
    /// What was not as it must be; empty when all was well.
    [[nodiscard]] std::string fault() const;

    Received messages;

private:
    void take(const std::string& text);
    void check(const Json& message);
    void blame(const std::string& fault);

    TestSdk& sdk_;
    std::atomic<int> id_{0};
    std::atomic<int> frames_{0};
    std::atomic<int> framesOfThis_{0};
    std::atomic<bool> hd_{false};
    std::atomic<int> inside_{0};
    std::atomic<bool> ended_{false};
    std::atomic<std::size_t> asked_{0};
    bool open_ = false; ///< belongs to the callbacks, as `width_`, which come one at a time
    int width_ = 0;
    /// Shared with the results' callbacks, which may come when the viewer is gone.
    struct Outcome {
        Received results;
        std::mutex mutex;
        std::map<std::size_t, int> resultOf; ///< guarded by mutex
        std::string fault;                   ///< guarded by mutex
    };
    std::shared_ptr<Outcome> outcome_ = std::make_shared<Outcome>();
};

} // namespace ipncsdk::test
