#pragma once

#include "device/ServiceConfig.h"
#include "service/TextMessage.h"

#include <chrono>
#include <memory>
#include <string>

namespace ipncsdk::service {

/// Hands text messages over to a server by HTTP. Thread-safe.
class SmsGateway final {
public:
    /// In all, from the look-up of the name to the answer.
    static constexpr std::chrono::seconds timeout{10};

    explicit SmsGateway(device::SmsGatewayConfig config);
    ~SmsGateway();
    SmsGateway(const SmsGateway&) = delete;
    SmsGateway& operator=(const SmsGateway&) = delete;

    /// POSTs {"phonenumber", "countrycode", "text"} and waits for the answer. True when its status is one of 200 to
    /// 299; what went wrong otherwise is said by one line of the log, without number and text.
    bool send(const TextMessage& message);
    /// Breaks off whatever is under way; nothing is sent any more.
    void cancel();

private:
    class Cancelling;

    const device::SmsGatewayConfig config_;
    const std::unique_ptr<Cancelling> cancelling_;
};

} // namespace ipncsdk::service
