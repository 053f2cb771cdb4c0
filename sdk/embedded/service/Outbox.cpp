#include "service/Outbox.h"

#include "base/LocalTime.h"
#include "base/Log.h"
#include "base/PrivateFile.h"

#include <string>

namespace ipncsdk::service {

Outbox::Outbox(const std::filesystem::path& root, const std::optional<device::SmsGatewayConfig>& gateway,
               const Clock& clock)
    : file_(root / "service" / "outbox.jsonl")
    , clock_(clock)
    , gateway_(gateway ? std::make_unique<SmsGateway>(*gateway) : nullptr) {}

Outbox::Sent Outbox::send(const TextMessage& message) {
    if (gateway_)
        return {gateway_->send(message), std::nullopt};
    const Json line = {{"phonenumber", message.phone},
                       {"countrycode", message.countryCode},
                       {"text", message.text},
                       {"time", localTime(clock_, "%Y-%m-%d %H:%M:%S")}};
    const std::lock_guard lock(fileMutex_);
    if (!appendPrivately(file_, toText(line) + "\n")) {
        logLine("a text message can't be written to the outbox");
        return {};
    }
    return {
        true,
        Json{{"type", "sms"}, {"phonenumber", line["phonenumber"]}, {"text", line["text"]}, {"time", line["time"]}}};
}

void Outbox::cancel() {
    if (gateway_)
        gateway_->cancel();
}

} // namespace ipncsdk::service
