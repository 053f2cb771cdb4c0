#include "api/Runtime.h"

#include "base/Log.h"

#include <sodium.h>

#include <exception>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace ipncsdk::api {

namespace {

std::shared_ptr<Engine> makeEngine(const RuntimeOptions& options, std::atomic<int>& lastRequestId) {
    try {
        if (sodium_init() < 0)
            throw std::runtime_error("libsodium does not start");
        auto root = options.root.empty() ? std::filesystem::current_path() : options.root;
        return std::make_shared<Engine>(options, std::move(root), lastRequestId);
    } catch (const std::exception& error) {
        logLine(std::string("start-up failed: ") + error.what());
        return nullptr;
    }
}

} // namespace

Runtime::Runtime(RuntimeOptions options)
    : options_(std::move(options)) {}

Runtime::~Runtime() {
    cleanup();
}

emReturnValue Runtime::startup() {
    {
        const std::lock_guard lock(mutex_);
        if (state_ != State::Stopped)
            return emAlreadyStarted;
        state_ = State::Starting;
    }
    auto engine = makeEngine(options_, lastRequestId_);
    const std::lock_guard lock(mutex_);
    engine_ = std::move(engine);
    state_ = engine_ ? State::Running : State::Stopped;
    changed_.notify_all();
    return engine_ ? emSuccess : emFailure;
}

emReturnValue Runtime::setClientCallback(ZELIPNCSDK::ClientCallback callback) {
    const auto engine = running();
    if (!engine)
        return emNotStarted;
    engine->setClientCallback(std::move(callback));
    return emSuccess;
}

void Runtime::requestMessage(const std::string& json, int& reqid, ZELIPNCSDK::ResponseCallback callback) {
    reqid = 0;
    if (const auto engine = running())
        engine->request(json, reqid, std::move(callback));
    else
        logLine("RequestMessage: not started");
}

void Runtime::stopRequest(int reqid) {
    std::shared_ptr<Engine> engine;
    {
        const std::lock_guard lock(mutex_);
        engine = engine_;
    }
    // Also while stopping: a callback that still runs may stop its own request.
    if (engine)
        engine->stopRequest(reqid);
}

void Runtime::setConfig(const std::string& json, ZELIPNCSDK::ResponseCallback callback) {
    if (const auto engine = running())
        engine->command(json, std::move(callback));
    else
        logLine("SetConfig: not started");
}

emReturnValue Runtime::getConfig(const std::string& query, std::string& out) {
    out.clear();
    const auto engine = running();
    return engine ? engine->document(query, out) : emNotStarted;
}

emReturnValue Runtime::cleanup() {
    std::shared_ptr<Engine> engine;
    {
        std::unique_lock lock(mutex_);
        if (engine_ && engine_->isInsideCallback())
            return emWrongThread;
        // Whoever comes while another thread cleans up returns when that is done.
        bool waited = false;
        while (state_ == State::Starting || state_ == State::Stopping) {
            waited = waited || state_ == State::Stopping;
            changed_.wait(lock);
        }
        if (state_ == State::Stopped)
            return waited ? emSuccess : emNotStarted;
        state_ = State::Stopping;
        engine = engine_;
    }
    engine->stop();
    const std::lock_guard lock(mutex_);
    engine_.reset();
    state_ = State::Stopped;
    changed_.notify_all();
    return emSuccess;
}

std::shared_ptr<Engine> Runtime::running() {
    const std::lock_guard lock(mutex_);
    return state_ == State::Running ? engine_ : nullptr;
}

} // namespace ipncsdk::api
