#include "api/ClientChannel.h"

#include <utility>

namespace ipncsdk::api {

ClientChannel::ClientChannel(CallbackKeeper& keeper)
    : keeper_(keeper) {}

void ClientChannel::install(Callback callback) {
    std::shared_ptr<Installed> next;
    if (callback) {
        next = std::make_shared<Installed>();
        next->callback = std::move(callback);
    }
    std::shared_ptr<Installed> previous;
    {
        const std::lock_guard lock(mutex_);
        previous = std::exchange(installed_, std::move(next));
    }
    if (previous)
        keeper_.close(previous->gate);
}

std::string ClientChannel::deliver(const std::string& message) {
    std::shared_ptr<Installed> installed;
    {
        const std::lock_guard lock(mutex_);
        installed = installed_;
    }
    std::string reply;
    if (installed)
        keeper_.run(installed->gate, [&] { installed->callback(message, reply); });
    return reply;
}

bool ClientChannel::hasCallback() const {
    const std::lock_guard lock(mutex_);
    return installed_ != nullptr;
}

} // namespace ipncsdk::api
