#include "Ear.h"

namespace ipncsdk::test {

void Ear::open(const std::string& ipncid, const Json& keys) {
    Json avreq = {{"ipncid", ipncid}, {"reqtype", "avreq"}};
    avreq.update(keys);
    int id = 0;
    sdk_.runtime.requestMessage(toText({{"avreq", avreq}}), id, [this](const std::string& text) { take(text); });
    id_ = id;
}

void Ear::stop() {
    sdk_.runtime.stopRequest(id_);
    stopped_ = true;
}

Json Ear::say(const void* samples, std::size_t bytes) {
    return sdk_.command({{"type", "avchange"},
                         {"reqid", id_.load()},
                         {"audiodata", reinterpret_cast<std::uintptr_t>(samples)},
                         {"len", bytes}});
}

std::vector<std::int16_t> Ear::heard() const {
    const std::lock_guard lock(mutex_);
    return heard_;
}

bool Ear::waitForSound(std::size_t samples) const {
    return waitFor([&] {
        const std::lock_guard lock(mutex_);
        return heard_.size() >= samples;
    });
}

Json Ear::form() const {
    const std::lock_guard lock(mutex_);
    return form_;
}

void Ear::take(const std::string& text) {
    late_ = late_ || stopped_;
    const Json message = Json::parse(text);
    if (message.at("type") != "audiodata")
        return messages.add(text);
    const auto* data = reinterpret_cast<const std::int16_t*>(message.at("data").get<std::uintptr_t>());
    const std::lock_guard lock(mutex_);
    heard_.insert(heard_.end(), data, data + message.at("len").get<std::size_t>() / 2);
    form_ = message;
    form_.erase("data");
}

} // namespace ipncsdk::test
