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

class LiveStream;

/// One request of the client, from its sending to its last response or its stop.
class Request final {
public:
    using Callback = std::function<void(const std::string& response)>;

    Request(int id, Callback callback, CallbackKeeper& keeper);
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;

    [[nodiscard]] int id() const { return id_; }

    /// Hands a response to the client on the calling thread, unless the request has been stopped. Returns whether the
    /// client got it.
    bool respond(const std::string& response);

    /// Lets no response through any more and waits as `CallbackKeeper::close` does.
    bool close();

    /// Ties a video request to its stream, which keeps itself alive as long as it has something to deliver. False
    /// when the request ended meanwhile: the stream must not begin then.
    bool bind(const std::shared_ptr<LiveStream>& live);
    /// Ends the request. Only the first call gets an answer: the stream that is to be ended, null when there is none.
    std::optional<std::shared_ptr<LiveStream>> end();
    /// Null when the request has no stream, or has ended.
    [[nodiscard]] std::shared_ptr<LiveStream> live() const;
    [[nodiscard]] bool hasEnded() const;

private:
    const int id_;
    const Callback callback_;
    CallbackKeeper& keeper_;
    CallbackKeeper::Gate gate_;
    mutable std::mutex mutex_;
    std::weak_ptr<LiveStream> live_; ///< guarded by mutex_
    bool ended_ = false;             ///< guarded by mutex_
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
