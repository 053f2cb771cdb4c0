#include "service/NoticeBroker.h"

#include "base/Log.h"

#include <mosquitto.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace ipncsdk::service {

namespace {

constexpr int keepAlive = 30; ///< seconds
constexpr int turn = 200;     ///< milliseconds that the network is waited for before notices are looked for
constexpr int atLeastOnce = 1;
constexpr std::chrono::seconds firstPause{1};
constexpr std::chrono::seconds longestPause{30};

} // namespace

NoticeBroker::NoticeBroker(device::NoticesConfig config)
    : config_(std::move(config))
    , client_(nullptr, mosquitto_destroy) {
    mosquitto_lib_init();
    client_.reset(mosquitto_new(nullptr, true, this));
    if (!client_) {
        logLine("app notices can't be sent: no MQTT client");
        return;
    }
    if (!config_.user.empty())
        mosquitto_username_pw_set(client_.get(), config_.user.c_str(), config_.password.c_str());
    mosquitto_connect_callback_set(client_.get(), [](mosquitto*, void* self, int code) {
        static_cast<NoticeBroker*>(self)->isConnected_ = code == 0;
        if (code != 0)
            logLine(std::string("the broker of app notices refuses: ") + mosquitto_connack_string(code));
    });
    thread_ = std::thread([this] { work(); });
}

NoticeBroker::~NoticeBroker() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable())
        thread_.join();
    client_.reset();
    mosquitto_lib_cleanup();
}

void NoticeBroker::publish(const std::string& phone, const std::string& text) {
    const std::lock_guard lock(mutex_);
    if (waiting_.size() >= mostWaiting) {
        logLine("an app notice was dropped: too many wait for the broker");
        waiting_.pop_front();
    }
    waiting_.push_back({config_.topic + "/" + phone, text});
}

bool NoticeBroker::isStopping() {
    const std::lock_guard lock(mutex_);
    return stopping_;
}

void NoticeBroker::work() {
    std::chrono::seconds pause = firstPause;
    while (!isStopping()) {
        // Without waiting for the network; who has not connected is told by the first turns.
        const int code = mosquitto_connect_async(client_.get(), config_.host.c_str(), config_.port, keepAlive);
        bool wasConnected = false;
        if (code == MOSQ_ERR_SUCCESS) {
            serve();
            wasConnected = std::exchange(isConnected_, false);
        }
        if (wasConnected)
            pause = firstPause;
        else if (pause == firstPause)
            logLine("the broker of app notices can't be reached; it is tried again");
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, pause, [this] { return stopping_; });
        pause = std::min(pause * 2, longestPause);
    }
}

void NoticeBroker::serve() {
    while (mosquitto_loop(client_.get(), turn, 1) == MOSQ_ERR_SUCCESS) {
        if (isConnected_)
            sendWaiting();
        if (isStopping()) {
            mosquitto_disconnect(client_.get());
            return;
        }
    }
}

void NoticeBroker::sendWaiting() {
    std::deque<Notice> notices;
    {
        const std::lock_guard lock(mutex_);
        notices.swap(waiting_);
    }
    for (const Notice& notice : notices) {
        // What is not confirmed the client sends again by itself, also over the next connection.
        const int code =
            mosquitto_publish(client_.get(), nullptr, notice.topic.c_str(), static_cast<int>(notice.text.size()),
                              notice.text.data(), atLeastOnce, false);
        if (code != MOSQ_ERR_SUCCESS && code != MOSQ_ERR_NO_CONN)
            logLine(std::string("an app notice can't be sent: ") + mosquitto_strerror(code));
    }
}

} // namespace ipncsdk::service
