#pragma once

#include "api/CallbackKeeper.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>

namespace ipncsdk::api {

/// The one callback for unsolicited messages. Thread-safe.
class ClientChannel final {
public:
    using Callback = std::function<void(const std::string& message, std::string& reply)>;

    explicit ClientChannel(CallbackKeeper& keeper);
    ClientChannel(const ClientChannel&) = delete;
    ClientChannel& operator=(const ClientChannel&) = delete;

    /// Replaces the callback; an empty one removes it. When it returns, the old one no longer runs, unless on the
    /// calling thread.
    void install(Callback callback);

    /// Calls the callback, if there is one, on the calling thread; returns what it replied.
    std::string deliver(const std::string& message);

    [[nodiscard]] bool hasCallback() const;

private:
    struct Installed {
        Callback callback;
        CallbackKeeper::Gate gate;
    };

    CallbackKeeper& keeper_;
    mutable std::mutex mutex_;
    std::shared_ptr<Installed> installed_; ///< guarded by mutex_; null without a callback
};

} // namespace ipncsdk::api
