#include "platform/KeepAwake.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <list>

namespace corvanta::platform {

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* applicationName = "corvanta";
constexpr const char* reason = "Live video and recording";

struct BusClose {
    void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
};

struct MessageUnref {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

/// One service that has been asked.
struct Request {
    std::string service;
    bool isAnswered = false;
    bool isGranted = false;
    std::string error;
    /// The login manager's inhibition lasts as long as the descriptor in its reply.
    std::unique_ptr<sd_bus_message, MessageUnref> reply;

    void fail(std::string why) {
        isAnswered = true;
        error = std::move(why);
    }
};

/// A connection to a bus and what was asked over it.
///
/// Only calls that do not wait are used: those that do would stay with a bus that takes the connection and then says
/// nothing for the library's time-out of many seconds.
class Connection final {
public:
    explicit Connection(int (*open)(sd_bus**)) {
        sd_bus* bus = nullptr;
        if (const int result = open(&bus); result < 0) {
            openError_ = std::strerror(-result);
        } else {
            bus_.reset(bus);
        }
    }

    /// Sends "Inhibit" with texts as arguments, as many as `types` has characters.
    template <typename... Arguments>
    void askInhibit(const char* service, const char* path, const char* interface, const char* types,
                    Arguments... arguments) {
        Request& request = requests_.emplace_back();
        request.service = service;
        if (!bus_) {
            request.fail(openError_);
            return;
        }
        const int result = sd_bus_call_method_async(bus_.get(), nullptr, service, path, interface, "Inhibit",
                                                    &onAnswer, &request, types, arguments...);
        if (result < 0) {
            request.fail(std::strerror(-result));
        }
    }

    /// Returns when everything is answered, at the latest at `end`. A late yes counts for the service all the same.
    void waitForAnswers(Clock::time_point end) {
        while (bus_ && std::any_of(requests_.begin(), requests_.end(), [](auto& one) { return !one.isAnswered; })) {
            int result = sd_bus_process(bus_.get(), nullptr);
            if (result == 0) {
                const auto left = std::chrono::duration_cast<std::chrono::microseconds>(end - Clock::now()).count();
                if (left <= 0) {
                    break;
                }
                result = sd_bus_wait(bus_.get(), static_cast<std::uint64_t>(left));
            }
            if (result < 0) {
                giveUp(std::strerror(-result));
            }
        }
        for (Request& request : requests_) {
            if (!request.isAnswered) {
                request.error = "no answer";
            }
        }
    }

    const std::list<Request>& requests() const { return requests_; }

private:
    static int onAnswer(sd_bus_message* message, void* data, sd_bus_error* /*error*/) {
        auto& request = *static_cast<Request*>(data);
        if (const sd_bus_error* error = sd_bus_message_get_error(message)) {
            request.fail(error->message != nullptr ? error->message : error->name);
        } else {
            request.isAnswered = true;
            request.isGranted = true;
            request.reply.reset(sd_bus_message_ref(message));
        }
        return 0;
    }

    void giveUp(const std::string& why) {
        bus_.reset();
        for (Request& request : requests_) {
            if (!request.isAnswered) {
                request.fail(why);
            }
        }
    }

    std::string openError_;
    std::list<Request> requests_; ///< the calls hold pointers to the elements
    std::unique_ptr<sd_bus, BusClose> bus_;
};

} // namespace

class KeepAwake::Impl {
public:
    Impl() {
        session_.askInhibit("org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver",
                            "org.freedesktop.ScreenSaver", "ss", applicationName, reason);
        session_.askInhibit("org.freedesktop.PowerManagement", "/org/freedesktop/PowerManagement/Inhibit",
                            "org.freedesktop.PowerManagement.Inhibit", "ss", applicationName, reason);
        system_.askInhibit("org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                           "ssss", "idle", applicationName, reason, "block");
        const auto start = Clock::now();
        session_.waitForAnswers(start + std::chrono::milliseconds(longestWaitMs * 2 / 3));
        system_.waitForAnswers(start + std::chrono::milliseconds(longestWaitMs));
    }

    template <typename Function>
    void forEachRequest(Function function) const {
        for (const Connection* connection : {&session_, &system_}) {
            for (const Request& request : connection->requests()) {
                function(request);
            }
        }
    }

private:
    Connection session_{sd_bus_open_user};
    Connection system_{sd_bus_open_system};
};

KeepAwake::KeepAwake()
    : impl_(std::make_unique<Impl>()) {}

KeepAwake::~KeepAwake() = default;

bool KeepAwake::active() const {
    bool isAnyGranted = false;
    impl_->forEachRequest([&](const Request& request) { isAnyGranted = isAnyGranted || request.isGranted; });
    return isAnyGranted;
}

std::string KeepAwake::description() const {
    std::string text;
    impl_->forEachRequest([&](const Request& request) {
        text += text.empty() ? "" : "; ";
        text += request.service + ": " + (request.isGranted ? "kept awake" : request.error);
    });
    return text;
}

} // namespace corvanta::platform
