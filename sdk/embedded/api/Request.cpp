#include "api/Request.h"

#include <utility>

namespace ipncsdk::api {

Request::Request(int id, Callback callback, CallbackKeeper& keeper)
    : id_(id)
    , callback_(std::move(callback))
    , keeper_(keeper) {}

bool Request::respond(const std::string& response) {
    return callback_ && keeper_.run(gate_, [&] { callback_(response); });
}

bool Request::close() {
    return keeper_.close(gate_);
}

bool Request::bind(const std::shared_ptr<LiveStream>& live) {
    const std::lock_guard lock(mutex_);
    if (ended_)
        return false;
    live_ = live;
    return true;
}

std::optional<std::shared_ptr<LiveStream>> Request::end() {
    const std::lock_guard lock(mutex_);
    if (std::exchange(ended_, true))
        return std::nullopt;
    return live_.lock();
}

std::shared_ptr<LiveStream> Request::live() const {
    const std::lock_guard lock(mutex_);
    return ended_ ? nullptr : live_.lock();
}

bool Request::hasEnded() const {
    const std::lock_guard lock(mutex_);
    return ended_;
}

void RequestTable::add(Pointer request) {
    const std::lock_guard lock(mutex_);
    const int id = request->id();
    requests_.emplace(id, std::move(request));
}

RequestTable::Pointer RequestTable::find(int id) const {
    const std::lock_guard lock(mutex_);
    const auto found = requests_.find(id);
    return found == requests_.end() ? nullptr : found->second;
}

RequestTable::Pointer RequestTable::take(int id) {
    const std::lock_guard lock(mutex_);
    const auto found = requests_.find(id);
    if (found == requests_.end())
        return nullptr;
    Pointer request = std::move(found->second);
    requests_.erase(found);
    return request;
}

std::vector<RequestTable::Pointer> RequestTable::all() const {
    const std::lock_guard lock(mutex_);
    std::vector<Pointer> requests;
    requests.reserve(requests_.size());
    for (const auto& [id, request] : requests_)
        requests.push_back(request);
    return requests;
}

} // namespace ipncsdk::api
