#pragma once

#include "TestSdk.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace ipncsdk::test {

/// A request that listens or talks: keeps what it hears, and all other messages. Ends before its SDK does.
class Ear final {
public:
    explicit Ear(TestSdk& sdk)
        : sdk_(sdk) {}
    ~Ear() { stop(); }
    Ear(const Ear&) = delete;
    Ear& operator=(const Ear&) = delete;

    void open(const std::string& ipncid, const Json& keys);
    void listen(const std::string& ipncid) { open(ipncid, {{"recvaudiodata", true}}); }
    void talk(const std::string& ipncid, int rate = 16000) {
        open(ipncid, {{"sendaudiodata", true}, {"rate", rate}, {"channels", 1}});
    }
    void stop();
    /// The result of handing samples over; null where the result has no callback.
    Json say(const void* samples, std::size_t bytes);

    [[nodiscard]] int id() const { return id_; }
    /// The samples so far, those of all channels in turn.
    [[nodiscard]] std::vector<std::int16_t> heard() const;
    [[nodiscard]] bool waitForSound(std::size_t samples) const;
    /// The last message with samples, without their address.
    [[nodiscard]] Json form() const;
    [[nodiscard]] bool wasCalledLate() const { return late_; }

    Received messages;

private:
    void take(const std::string& text);

    TestSdk& sdk_;
    std::atomic<int> id_{0};
    std::atomic<bool> stopped_{false};
    std::atomic<bool> late_{false};
    mutable std::mutex mutex_;
    std::vector<std::int16_t> heard_; ///< guarded by mutex_
    Json form_;                       ///< guarded by mutex_
};

} // namespace ipncsdk::test
