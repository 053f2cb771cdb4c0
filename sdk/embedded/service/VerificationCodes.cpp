#include "service/VerificationCodes.h"

#include "store/Codes.h"

#include <sodium.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace ipncsdk::service {

namespace {

constexpr std::uint32_t codes = 1'000'000;

template <typename Duration>
constexpr long long milliseconds(Duration duration) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(duration).count();
}

/// How the store names what a code is for.
const char* nameOf(VerificationCodes::Purpose purpose) {
    switch (purpose) {
    case VerificationCodes::Purpose::Register:
        return "register";
    case VerificationCodes::Purpose::Password:
        return "password";
    case VerificationCodes::Purpose::Rebind:
        break;
    }
    return "rebind";
}

std::string newDigits() {
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), "%06u", static_cast<unsigned>(randombytes_uniform(codes)));
    return digits.data();
}

std::string textWith(const std::string& digits) {
    return "【监控平台】验证码：" + digits + "，60秒内有效，请勿告诉他人。";
}

/// Both are hashes of one length.
bool isSame(const std::string& one, const std::string& other) {
    return one.size() == other.size() && sodium_memcmp(one.data(), other.data(), one.size()) == 0;
}

} // namespace

VerificationCodes::VerificationCodes(const Clock& clock, const store::StoreKey& key)
    : clock_(clock)
    , key_(key) {}

long long VerificationCodes::now() const {
    return milliseconds(clock_.now().time_since_epoch());
}

std::optional<std::string> VerificationCodes::hashOf(const std::string& phone, const std::string& purpose,
                                                     const std::string& digits) const {
    return key_.hash(purpose + ' ' + phone + ' ' + digits);
}

ServiceCode VerificationCodes::issue(soci::session& sql, const std::string& phone, Purpose purpose,
                                     const std::string& countryCode, TextMessage& message) const {
    const long long time = now();
    // What lies in the future was sent before the clock was set back. Within a pause it still counts.
    store::forgetSendsOutside(sql, time - milliseconds(day) + 1, time + milliseconds(pause));
    store::forgetCodesBefore(sql, time - milliseconds(day));
    const store::Sends sends = store::sendsTo(sql, phone);
    if (sends.count >= mostADay || (sends.count > 0 && std::llabs(time - sends.last) < milliseconds(pause)))
        return ServiceCode::MessageLimit;
    const std::string digits = newDigits();
    const auto hash = hashOf(phone, nameOf(purpose), digits);
    if (!hash)
        return ServiceCode::StoreError;
    store::setCode(sql, {phone, nameOf(purpose), countryCode, *hash, time, 0});
    store::noteSend(sql, phone, time);
    message = {phone, countryCode, textWith(digits), time};
    return ServiceCode::Done;
}

void VerificationCodes::withdraw(soci::session& sql, const TextMessage& message) {
    store::forgetSend(sql, message.phone, message.madeAt);
    if (const auto code = store::codeOf(sql, message.phone); code && code->sentAt == message.madeAt)
        store::removeCode(sql, message.phone);
}

std::string VerificationCodes::withoutCode(const std::string& text) {
    const std::string before = textWith("");
    const std::size_t end = before.find("，");
    std::string hidden = text;
    for (std::size_t at = end; at < hidden.size() && hidden[at] >= '0' && hidden[at] <= '9'; ++at)
        hidden[at] = '*';
    return hidden;
}

ServiceCode VerificationCodes::check(soci::session& sql, const std::string& phone, const std::string& digits,
                                     const std::string& computer) const {
    const auto code = store::codeOf(sql, phone);
    if (!code || code->tries >= mostWrongTries || std::llabs(now() - code->sentAt) >= milliseconds(validity))
        return ServiceCode::CodeTimeout;
    const auto hash = hashOf(phone, code->purpose, digits);
    if (!hash)
        return ServiceCode::StoreError;
    if (!isSame(*hash, code->hash)) {
        store::countWrongTry(sql, phone);
        return ServiceCode::CodeWrong;
    }
    store::setCheckedCode(sql, phone, code->purpose, computer, {code->countryCode, now()});
    return ServiceCode::Done;
}

bool VerificationCodes::isOpen(soci::session& sql, const std::string& phone, Purpose purpose,
                               const std::string& computer) const {
    const auto checked = store::checkedCode(sql, phone, nameOf(purpose), computer);
    return checked && std::llabs(now() - checked->checkedAt) < milliseconds(openFor);
}

std::optional<std::string> VerificationCodes::redeem(soci::session& sql, const std::string& phone, Purpose purpose,
                                                     const std::string& computer) const {
    const auto checked = store::checkedCode(sql, phone, nameOf(purpose), computer);
    if (!checked || !isOpen(sql, phone, purpose, computer))
        return std::nullopt;
    store::removeCheckedCodes(sql, phone, nameOf(purpose));
    if (const auto code = store::codeOf(sql, phone); code && code->purpose == nameOf(purpose))
        store::removeCode(sql, phone);
    return checked->countryCode;
}

} // namespace ipncsdk::service
