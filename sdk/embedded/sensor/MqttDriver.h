#pragma once

#include "sensor/Driver.h"

#include <condition_variable>
#include <map>
#include <mutex>

struct mosquitto;
struct mosquitto_message;

namespace ipncsdk::sensor {

/// A ZigBee node behind a gateway that speaks MQTT, or a tag of a positioning system that does: it publishes JSON
/// objects to its topic and takes {KEY: VALUE} on TOPIC/set. The library connects again by itself; its thread calls
/// the static members.
class MqttDriver final : public Driver {
public:
    explicit MqttDriver(const Board& board);
    ~MqttDriver() override;

    std::string open() override;
    std::string read(std::vector<RawValue>& raw) override;
    std::string write(const Port& output, double value) override;
    void close() override;

private:
    static void onConnect(mosquitto* client, void* self, int refused);
    static void onDisconnect(mosquitto* client, void* self, int reason);
    static void onMessage(mosquitto* client, void* self, const mosquitto_message* message);
    static void onPublish(mosquitto* client, void* self, int id);

    void take(const std::string& payload);

    const Json params_;
    const std::string topic_;
    std::vector<std::string> keys_; ///< of the inputs, such as "climate.temperature"
    mosquitto* client_ = nullptr;   ///< owned; null while closed

    std::mutex mutex_;
    std::condition_variable changed_;
    bool connected_ = false;           ///< guarded by mutex_, as all below
    bool refused_ = false;             ///< the broker does not let us in
    std::vector<RawValue> values_;     ///< what the node said last
    std::map<int, bool> acknowledged_; ///< published messages by their id
};

/// The number that stands at a path like "a.b" of a JSON object: a number, a truth value, or a text that is a number,
/// "ON" or "OFF".
std::optional<double> numberAtPath(const Json& payload, const std::string& path);

} // namespace ipncsdk::sensor
