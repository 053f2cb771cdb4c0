#pragma once

#include "device/ServiceConfig.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

struct mosquitto;

namespace ipncsdk::service {

/// Hands notices for the phone app over to an MQTT broker, each to a topic of its phone number, at least once. Keeps
/// them while the broker can't be reached. Thread-safe.
class NoticeBroker final {
public:
    /// How many wait for a broker at most; of more the oldest is dropped.
    static constexpr std::size_t mostWaiting = 10'000;

    /// Begins to connect, on a thread of its own.
    explicit NoticeBroker(device::NoticesConfig config);
    /// What has not left by then is lost.
    ~NoticeBroker();
    NoticeBroker(const NoticeBroker&) = delete;
    NoticeBroker& operator=(const NoticeBroker&) = delete;

    /// Never waits.
    void publish(const std::string& phone, const std::string& text);

private:
    struct Notice {
        std::string topic;
        std::string text;
    };

    void work();
    /// Serves one connection until it breaks or this ends.
    void serve();
    bool isStopping();
    void sendWaiting();

    const device::NoticesConfig config_;
    std::unique_ptr<mosquitto, void (*)(mosquitto*)> client_; ///< belongs to the thread; null when there is none
    bool isConnected_ = false;                                ///< belongs to the thread

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Notice> waiting_; ///< guarded by mutex_
    bool stopping_ = false;      ///< guarded by mutex_
    std::thread thread_;
};

} // namespace ipncsdk::service
