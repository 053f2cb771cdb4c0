#include "sensor/MqttDriver.h"

#include "base/Log.h"

#include <mosquitto.h>

#include <chrono>
#include <cmath>
#include <locale>
#include <sstream>
#include <utility>

namespace ipncsdk::sensor {

namespace {

constexpr int usualPort = 1883;
constexpr int keepAlive = 10; ///< seconds; a network that falls silent is noticed after twice as long at most
constexpr auto patience = std::chrono::seconds(3);

/// The library wants to be told once.
void startLibrary() {
    static const int started = mosquitto_lib_init();
    (void)started;
}

std::pair<std::string, int> hostAndPort(const std::string& broker) {
    const std::size_t colon = broker.rfind(':');
    if (colon == std::string::npos || broker.find(':') != colon)
        return {broker, usualPort};
    const std::string port = broker.substr(colon + 1);
    const bool digits =
        !port.empty() && port.size() <= 5 && port.find_first_not_of("0123456789") == std::string::npos;
    return {broker.substr(0, colon), digits ? std::stoi(port) : usualPort};
}

std::optional<double> numberOfText(const std::string& text) {
    if (text == "ON" || text == "on" || text == "true")
        return 1;
    if (text == "OFF" || text == "off" || text == "false")
        return 0;
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    double value = 0;
    return in >> value && in.eof() ? std::make_optional(value) : std::nullopt;
}

/// {"a": {"b": value}} for the path "a.b".
Json nested(const std::string& path, double value) {
    const std::size_t dot = path.find('.');
    if (dot != std::string::npos)
        return {{path.substr(0, dot), nested(path.substr(dot + 1), value)}};
    if (std::floor(value) == value && std::abs(value) < 1e15)
        return {{path, static_cast<std::int64_t>(value)}};
    return {{path, value}};
}

} // namespace

std::optional<double> numberAtPath(const Json& payload, const std::string& path) {
    const std::size_t dot = path.find('.');
    const Json* const member = memberAt(payload, path.substr(0, dot).c_str());
    if (member == nullptr)
        return std::nullopt;
    if (dot != std::string::npos)
        return numberAtPath(*member, path.substr(dot + 1));
    std::optional<double> value;
    if (member->is_number())
        value = member->get<double>();
    else if (member->is_boolean())
        value = member->get<bool>() ? 1 : 0;
    else if (member->is_string())
        value = numberOfText(member->get<std::string>());
    return value && std::isfinite(*value) ? value : std::nullopt;
}

MqttDriver::MqttDriver(const Board& board)
    : params_(board.params)
    , topic_(textOr(board.params, "topic", "")) {
    for (const Port& input : board.inputs)
        keys_.push_back(textOr(input.params, "key", ""));
    values_.resize(keys_.size());
}

MqttDriver::~MqttDriver() {
    close();
}

std::string MqttDriver::open() {
    close();
    startLibrary();
    client_ = mosquitto_new(nullptr, true, this);
    if (client_ == nullptr)
        return "no client can be made";
    mosquitto_connect_callback_set(client_, &MqttDriver::onConnect);
    mosquitto_disconnect_callback_set(client_, &MqttDriver::onDisconnect);
    mosquitto_message_callback_set(client_, &MqttDriver::onMessage);
    mosquitto_publish_callback_set(client_, &MqttDriver::onPublish);
    mosquitto_reconnect_delay_set(client_, 1, 30, true);
    const std::string user = textOr(params_, "user", "");
    const std::string password = textOr(params_, "password", "");
    if (!user.empty())
        mosquitto_username_pw_set(client_, user.c_str(), password.c_str());
    const auto [host, port] = hostAndPort(textOr(params_, "broker", "localhost"));
    const int refused = mosquitto_connect(client_, host.c_str(), port, keepAlive);
    if (refused != MOSQ_ERR_SUCCESS || mosquitto_loop_start(client_) != MOSQ_ERR_SUCCESS) {
        close();
        return mosquitto_strerror(refused);
    }
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, patience, [this] { return connected_ || refused_; });
    const bool connected = connected_;
    lock.unlock();
    if (!connected)
        close();
    return connected ? "" : "the broker does not let us in";
}

void MqttDriver::close() {
    if (client_ == nullptr)
        return;
    mosquitto_disconnect(client_);
    mosquitto_loop_stop(client_, true);
    mosquitto_destroy(std::exchange(client_, nullptr));
    const std::lock_guard lock(mutex_);
    connected_ = false;
    refused_ = false;
    values_.assign(keys_.size(), {});
    acknowledged_.clear();
}

void MqttDriver::onConnect(mosquitto* client, void* self, int refused) {
    auto& driver = *static_cast<MqttDriver*>(self);
    if (refused == 0)
        mosquitto_subscribe(client, nullptr, driver.topic_.c_str(), 1);
    const std::lock_guard lock(driver.mutex_);
    driver.connected_ = refused == 0;
    driver.refused_ = refused != 0;
    driver.changed_.notify_all();
}

void MqttDriver::onDisconnect(mosquitto* /*client*/, void* self, int /*reason*/) {
    auto& driver = *static_cast<MqttDriver*>(self);
    const std::lock_guard lock(driver.mutex_);
    driver.connected_ = false;
    // What the node said before says nothing of now.
    driver.values_.assign(driver.keys_.size(), {});
    driver.changed_.notify_all();
}

void MqttDriver::onMessage(mosquitto* /*client*/, void* self, const mosquitto_message* message) {
    auto& driver = *static_cast<MqttDriver*>(self);
    if (message->payload != nullptr && message->payloadlen > 0)
        driver.take(
            std::string(static_cast<const char*>(message->payload), static_cast<std::size_t>(message->payloadlen)));
}

void MqttDriver::onPublish(mosquitto* /*client*/, void* self, int id) {
    auto& driver = *static_cast<MqttDriver*>(self);
    const std::lock_guard lock(driver.mutex_);
    driver.acknowledged_[id] = true;
    driver.changed_.notify_all();
}

void MqttDriver::take(const std::string& payload) {
    std::string reason;
    const auto message = parseObject(payload, reason);
    if (!message) {
        logLine("a message of a ZigBee node is passed over: " + reason);
        return;
    }
    const std::lock_guard lock(mutex_);
    for (std::size_t i = 0; i < keys_.size(); ++i) {
        // A node may tell a part of its values only.
        if (const auto value = numberAtPath(*message, keys_[i]))
            values_[i] = {value, true};
    }
}

std::string MqttDriver::read(std::vector<RawValue>& raw) {
    const std::lock_guard lock(mutex_);
    if (!connected_)
        return "the broker is gone";
    raw = values_;
    for (RawValue& value : values_)
        value.fresh = false;
    return {};
}

std::string MqttDriver::write(const Port& output, double value) {
    if (client_ == nullptr)
        return "there is no broker";
    const std::string payload = toText(nested(textOr(output.params, "key", ""), value));
    int id = 0;
    const int refused = mosquitto_publish(client_, &id, (topic_ + "/set").c_str(), static_cast<int>(payload.size()),
                                          payload.data(), 1, false);
    if (refused != MOSQ_ERR_SUCCESS)
        return mosquitto_strerror(refused);
    std::unique_lock lock(mutex_);
    const bool done = changed_.wait_for(lock, patience, [&] { return acknowledged_.count(id) > 0; });
    acknowledged_.clear();
    lock.unlock();
    // The library would send the message again over its next connection, long after the writing was said to have
    // failed.
    if (!done)
        close();
    return done ? "" : "the broker does not confirm the message";
}

} // namespace ipncsdk::sensor
