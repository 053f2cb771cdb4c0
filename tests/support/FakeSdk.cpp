#include "support/FakeSdk.h"

#include <algorithm>

FakeSdk& FakeSdk::instance() {
    static FakeSdk sdk;
    return sdk;
}

void FakeSdk::reset() {
    std::vector<std::thread> threads;
    {
        const std::lock_guard lock(mutex_);
        threads.swap(threads_);
        documents_.clear();
        configs_.clear();
        requests_.clear();
        stopped_.clear();
        clientCallback_ = {};
        onRequest = {};
        onConfig = {};
        startupResult = callbackResult = ipncsdk::emSuccess;
        nextId = 1;
        configResult = R"({"retcode":0})";
        startups_ = cleanups_ = 0;
    }
    for (std::thread& thread : threads)
        thread.join();
}

void FakeSdk::setDocument(const std::string& query, const std::string& text) {
    const std::lock_guard lock(mutex_);
    documents_[query] = text;
}

std::vector<std::string> FakeSdk::configs() {
    const std::lock_guard lock(mutex_);
    return configs_;
}

std::vector<FakeSdk::Request> FakeSdk::requests() {
    const std::lock_guard lock(mutex_);
    return requests_;
}

std::vector<int> FakeSdk::stopped() {
    const std::lock_guard lock(mutex_);
    return stopped_;
}

bool FakeSdk::hasClientCallback() {
    const std::lock_guard lock(mutex_);
    return static_cast<bool>(clientCallback_);
}

int FakeSdk::startups() {
    const std::lock_guard lock(mutex_);
    return startups_;
}

int FakeSdk::cleanups() {
    const std::lock_guard lock(mutex_);
    return cleanups_;
}

void FakeSdk::onOwnThread(const std::function<void()>& task) {
    std::thread(task).join();
}

std::string FakeSdk::sendToClient(const std::string& message, const std::string& replyBefore) {
    ipncsdk::ZELIPNCSDK::ClientCallback callback;
    {
        const std::lock_guard lock(mutex_);
        callback = clientCallback_;
    }
    std::string reply = replyBefore;
    onOwnThread([&] {
        if (callback)
            callback(message, reply);
    });
    return reply;
}

void FakeSdk::respond(int requestId, const std::string& response) {
    ipncsdk::ZELIPNCSDK::ResponseCallback callback;
    {
        const std::lock_guard lock(mutex_);
        const auto it = std::find_if(requests_.begin(), requests_.end(),
                                     [requestId](const Request& request) { return request.id == requestId; });
        if (it != requests_.end())
            callback = it->callback;
    }
    onOwnThread([&] {
        if (callback)
            callback(response);
    });
}

namespace ipncsdk {

ZELIPNCSDK::ZELIPNCSDK() = default;
ZELIPNCSDK::~ZELIPNCSDK() = default;

ZELIPNCSDK* ZELIPNCSDK::GetInstance() {
    static ZELIPNCSDK sdk;
    return &sdk;
}

emReturnValue ZELIPNCSDK::Startup() {
    FakeSdk& fake = FakeSdk::instance();
    const std::lock_guard lock(fake.mutex_);
    ++fake.startups_;
    return fake.startupResult;
}

emReturnValue ZELIPNCSDK::SetClientCallback(ClientCallback callback) {
    FakeSdk& fake = FakeSdk::instance();
    const std::lock_guard lock(fake.mutex_);
    if (fake.callbackResult == emSuccess)
        fake.clientCallback_ = std::move(callback);
    return fake.callbackResult;
}

void ZELIPNCSDK::RequestMessage(const std::string& json, int& reqid, ResponseCallback callback) {
    FakeSdk& fake = FakeSdk::instance();
    const std::lock_guard lock(fake.mutex_);
    reqid = fake.nextId;
    if (reqid <= 0)
        return;
    ++fake.nextId;
    FakeSdk::Request request{json, reqid, std::move(callback)};
    fake.requests_.push_back(request);
    if (fake.onRequest) {
        fake.threads_.emplace_back([script = fake.onRequest, request] {
            for (const std::string& response : script(request))
                request.callback(response);
        });
    }
}

void ZELIPNCSDK::StopRequest(int reqid) {
    FakeSdk& fake = FakeSdk::instance();
    const std::lock_guard lock(fake.mutex_);
    fake.stopped_.push_back(reqid);
}

void ZELIPNCSDK::SetConfig(const std::string& json, ResponseCallback callback) {
    FakeSdk& fake = FakeSdk::instance();
    const std::lock_guard lock(fake.mutex_);
    fake.configs_.push_back(json);
    if (fake.onConfig)
        fake.onConfig(json);
    if (callback && !fake.configResult.empty())
        fake.threads_.emplace_back(
            [callback = std::move(callback), result = fake.configResult] { callback(result); });
}

emReturnValue ZELIPNCSDK::GetConfig(const std::string& query, std::string& out) {
    FakeSdk& fake = FakeSdk::instance();
    const std::lock_guard lock(fake.mutex_);
    const auto it = fake.documents_.find(query);
    out = it == fake.documents_.end() ? std::string() : it->second;
    return out.empty() ? emFailure : emSuccess;
}

emReturnValue ZELIPNCSDK::Cleanup() {
    FakeSdk& fake = FakeSdk::instance();
    std::vector<std::thread> threads;
    {
        const std::lock_guard lock(fake.mutex_);
        ++fake.cleanups_;
        threads.swap(fake.threads_);
    }
    for (std::thread& thread : threads)
        thread.join();
    return emSuccess;
}

} // namespace ipncsdk
