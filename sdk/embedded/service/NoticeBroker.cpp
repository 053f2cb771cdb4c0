#include "service/NoticeBroker.h"

#include "base/Log.h"

#include <mosquitto.h>

namespace ipncsdk::service {

namespace {

constexpr int keepAlive = 30;    ///< seconds
constexpr int longestPause = 30; ///< seconds, between attempts to connect
constexpr int mostWaiting = 10'000;
constexpr int atLeastOnce = 1;

} // namespace

void NoticeBroker::Free::operator()(mosquitto* client) const {
    mosquitto_disconnect(client);
    mosquitto_loop_stop(client, false);
    mosquitto_destroy(client);
    mosquitto_lib_cleanup();
}

NoticeBroker::NoticeBroker(const device::NoticesConfig& config)
    : topic_(config.topic) {
    mosquitto_lib_init();
    client_.reset(mosquitto_new(nullptr, true, this));
    if (!client_) {
        mosquitto_lib_cleanup();
        logLine("app notices can't be sent: no MQTT client");
        return;
    }
    mosquitto* const client = client_.get();
    if (!config.user.empty())
        mosquitto_username_pw_set(client, config.user.c_str(), config.password.c_str());
    mosquitto_reconnect_delay_set(client, 1, longestPause, true);
    mosquitto_publish_callback_set(client,
                                   [](mosquitto*, void* self, int) { --static_cast<NoticeBroker*>(self)->waiting_; });
    mosquitto_connect_callback_set(client, [](mosquitto*, void*, int code) {
        if (code != 0)
            logLine(std::string("the broker of app notices refuses: ") + mosquitto_connack_string(code));
    });
    // One that can't be reached now is tried again by the client's thread.
    const int code = mosquitto_connect_async(client, config.host.c_str(), config.port, keepAlive);
    if (code != MOSQ_ERR_SUCCESS)
        logLine(std::string("the broker of app notices can't be reached: ") + mosquitto_strerror(code));
    mosquitto_loop_start(client);
}

NoticeBroker::~NoticeBroker() = default;

void NoticeBroker::publish(const std::string& phone, const std::string& text) {
    if (!client_)
        return;
    if (waiting_ >= mostWaiting)
        return logLine("an app notice was dropped: too many wait for the broker");
    ++waiting_;
    const std::string topic = topic_ + "/" + phone;
    const int code = mosquitto_publish(client_.get(), nullptr, topic.c_str(), static_cast<int>(text.size()),
                                       text.data(), atLeastOnce, false);
    // Without a connection it waits for one.
    if (code != MOSQ_ERR_SUCCESS && code != MOSQ_ERR_NO_CONN) {
        --waiting_;
        logLine(std::string("an app notice can't be sent: ") + mosquitto_strerror(code));
    }
}

} // namespace ipncsdk::service
