#pragma once

#include <ipncsdk/ZELIPNCSDK.h>

#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// The script behind `ipncsdk::ZELIPNCSDK` in tests. Answers on a thread of its own, as a real SDK does. Every
/// member may be called from any thread.
class FakeSdk final {
public:
    static FakeSdk& instance();

    struct Request {
        std::string json;
        int id = 0;
        ipncsdk::ZELIPNCSDK::ResponseCallback callback;
    };

    /// Forgets everything and ends the thread; before each test.
    void reset();

    // What the calls return or give.
    ipncsdk::emReturnValue startupResult = ipncsdk::emSuccess;
    ipncsdk::emReturnValue callbackResult = ipncsdk::emSuccess;
    int nextId = 1;
    std::string configResult = R"({"retcode":0})"; ///< of every `SetConfig`; empty: there is none
    void setDocument(const std::string& query, const std::string& text);
    /// Called for each request on the SDK's thread; what it returns is delivered as responses.
    std::function<std::vector<std::string>(const Request&)> onRequest;

    /// Called for each `SetConfig`, while memory that it names is still there; calls nothing of this.
    std::function<void(const std::string&)> onConfig;

    // What was called.
    std::vector<std::string> configs();
    std::vector<Request> requests();
    std::vector<int> stopped();
    bool hasClientCallback();
    int startups();
    int cleanups();

    /// Delivers a message to the client callback on a thread of the SDK and returns the reply.
    std::string sendToClient(const std::string& message, const std::string& replyBefore = {});
    /// Delivers a response of a request on a thread of the SDK; returns when the callback did.
    void respond(int requestId, const std::string& response);

private:
    friend class ipncsdk::ZELIPNCSDK;
    void onOwnThread(const std::function<void()>& task);

    std::mutex mutex_;
    std::map<std::string, std::string> documents_;
    std::vector<std::string> configs_;
    std::vector<Request> requests_;
    std::vector<int> stopped_;
    ipncsdk::ZELIPNCSDK::ClientCallback clientCallback_;
    int startups_ = 0;
    int cleanups_ = 0;
    std::vector<std::thread> threads_;
};
