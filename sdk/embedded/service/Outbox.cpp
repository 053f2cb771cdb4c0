#include "service/Outbox.h"

#include "base/Log.h"
#include "base/PrivateFile.h"

#include <array>
#include <ctime>
#include <string>

namespace ipncsdk::service {

namespace {

/// Local time as people read it.
std::string stamp(const Clock& clock) {
    const std::time_t now = std::chrono::system_clock::to_time_t(clock.now());
    std::tm local{};
#if defined(_WIN32)
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    std::array<char, 32> text{};
    const auto length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &local);
    return {text.data(), length};
}

} // namespace

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
                       {"time", stamp(clock_)}};
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
