#pragma once

#include "api/CallbackKeeper.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::api {

/// One request of the client, from its sending to its last response or its stop.
class Request final {
public:
    using Callback = std::function<void(const std::string& response)>;

    Request(int id, Callback callback, CallbackKeeper& keeper);
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;

    [[nodiscard]] int id() const { return id_; }

    /// Hands a response to the client on the calling thread, unless the request has been stopped.
    void respond(const std::string& response);

    /// Lets no response through any more and waits as `CallbackKeeper::close` does.
    bool close();

    /// Ties the request to its stream in the hub. False when the request ended meanwhile: the caller then ends the
    /// stream itself.
    bool bind(int hubId);
    /// Ends the request. Only the first call gets an answer: the stream that is to be ended, 0 when there is none.
    std::optional<int> end();
    /// 0 when the request has no running stream.
    [[nodiscard]] int hubId() const;
    [[nodiscard]] bool hasEnded() const;

private:
    const int id_;
    const Callback callback_;
    CallbackKeeper& keeper_;
    CallbackKeeper::Gate gate_;
    mutable std::mutex mutex_;
    int hubId_ = 0;      ///< guarded by mutex_
    bool ended_ = false; ///< guarded by mutex_
};

/// The requests that have not ended. Thread-safe.
class RequestTable final {
public:
    using Pointer = std::shared_ptr<Request>;

    void add(Pointer request);
    /// Null when there is no such request.
    [[nodiscard]] Pointer find(int id) const;
    /// Removes and returns it; null when there is no such request.
    Pointer take(int id);
    [[nodiscard]] std::vector<Pointer> all() const;

private:
    mutable std::mutex mutex_;
    std::map<int, Pointer> requests_; ///< guarded by mutex_
};

} // namespace ipncsdk::api
