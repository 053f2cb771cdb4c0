#include "ipncsdk/ZELIPNCSDK.h"

#include "api/Runtime.h"

#include <utility>

namespace ipncsdk {

namespace {

/// Made at first use and never destroyed: threads of a client that does not clean up may still use it while the
/// process ends.
api::Runtime& runtime() {
    static auto* const instance = [] {
        api::RuntimeOptions options;
        options.makeHub = api::makeStreamHub;
        return new api::Runtime(std::move(options));
    }();
    return *instance;
}

} // namespace

ZELIPNCSDK::ZELIPNCSDK() = default;

ZELIPNCSDK::~ZELIPNCSDK() {}

ZELIPNCSDK* ZELIPNCSDK::GetInstance() {
    static auto* const instance = new ZELIPNCSDK;
    return instance;
}

emReturnValue ZELIPNCSDK::Startup() {
    return runtime().startup();
}

emReturnValue ZELIPNCSDK::SetClientCallback(ClientCallback callback) {
    return runtime().setClientCallback(std::move(callback));
}

void ZELIPNCSDK::RequestMessage(const std::string& json, int& reqid, ResponseCallback callback) {
    runtime().requestMessage(json, reqid, std::move(callback));
}

void ZELIPNCSDK::StopRequest(int reqid) {
    runtime().stopRequest(reqid);
}

void ZELIPNCSDK::SetConfig(const std::string& json, ResponseCallback callback) {
    runtime().setConfig(json, std::move(callback));
}

emReturnValue ZELIPNCSDK::GetConfig(const std::string& query, std::string& out) {
    return runtime().getConfig(query, out);
}

emReturnValue ZELIPNCSDK::Cleanup() {
    return runtime().cleanup();
}

} // namespace ipncsdk
