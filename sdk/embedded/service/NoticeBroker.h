#pragma once

#include "device/ServiceConfig.h"

#include <atomic>
#include <memory>
#include <string>

struct mosquitto;

namespace ipncsdk::service {

/// Hands notices for the phone app over to an MQTT broker, each to a topic of its phone number. Keeps them while the
/// broker can't be reached. Thread-safe.
class NoticeBroker final {
public:
    /// Begins to connect, on a thread of its own.
    explicit NoticeBroker(const device::NoticesConfig& config);
    /// What has not left by then is lost.
    ~NoticeBroker();
    NoticeBroker(const NoticeBroker&) = delete;
    NoticeBroker& operator=(const NoticeBroker&) = delete;

    /// Never waits.
    void publish(const std::string& phone, const std::string& text);

private:
    struct Free {
        void operator()(mosquitto* client) const;
    };

    const std::string topic_;
    std::atomic<int> waiting_{0};             ///< handed over here and not yet confirmed by the broker
    std::unique_ptr<mosquitto, Free> client_; ///< null when there is none
};

} // namespace ipncsdk::service
