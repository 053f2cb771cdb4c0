#pragma once

#include "base/Clock.h"
#include "base/JsonText.h"
#include "device/ServiceConfig.h"
#include "service/SmsGateway.h"
#include "service/TextMessage.h"

#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>

namespace ipncsdk::service {

/// The way of text messages out of the service: through the gateway when the configuration names one, else into
/// `service/outbox.jsonl` below the data root, from where the client shows them. Thread-safe.
class Outbox final {
public:
    Outbox(const std::filesystem::path& root, const std::optional<device::SmsGatewayConfig>& gateway,
           const Clock& clock);
    Outbox(const Outbox&) = delete;
    Outbox& operator=(const Outbox&) = delete;

    struct Sent {
        bool done = false;
        std::optional<Json> told; ///< for the client, when the message went into the file
    };
    /// Waits until the message was handed over, or was not.
    Sent send(const TextMessage& message);
    /// Breaks off what is under way; nothing leaves any more.
    void cancel();

private:
    const std::filesystem::path file_;
    const Clock& clock_;
    const std::unique_ptr<SmsGateway> gateway_; ///< null without one
    std::mutex fileMutex_;                      ///< one line at a time
};

} // namespace ipncsdk::service
