#pragma once

#include "api/Engine.h"
#include "ipncsdk/ZELIPNCSDK.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>

namespace ipncsdk::api {

/// The SDK without its singleton: may be started and stopped any number of times, and made several times over on
/// different roots. Members and their results are those of `ZELIPNCSDK`.
class Runtime final {
public:
    explicit Runtime(RuntimeOptions options);
    /// As `cleanup`; never from inside a callback.
    ~Runtime();
    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;

    emReturnValue startup();
    emReturnValue setClientCallback(ZELIPNCSDK::ClientCallback callback);
    void requestMessage(const std::string& json, int& reqid, ZELIPNCSDK::ResponseCallback callback);
    void stopRequest(int reqid);
    void setConfig(const std::string& json, ZELIPNCSDK::ResponseCallback callback);
    emReturnValue getConfig(const std::string& query, std::string& out);
    emReturnValue cleanup();

private:
    enum class State { Stopped, Starting, Running, Stopping };

    /// Null unless running.
    std::shared_ptr<Engine> running();

    const RuntimeOptions options_;
    std::atomic<int> lastRequestId_{0}; ///< outlives the engines: ids are not used again after a restart
    std::mutex mutex_;
    std::condition_variable changed_;
    State state_ = State::Stopped;   ///< guarded by mutex_
    std::shared_ptr<Engine> engine_; ///< guarded by mutex_; null only when stopped or starting
};

} // namespace ipncsdk::api
