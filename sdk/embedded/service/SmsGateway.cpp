#include "service/SmsGateway.h"

#include "base/JsonText.h"
#include "base/Log.h"

#include <curl/curl.h>

#include <mutex>
#include <set>
#include <stdexcept>
#include <utility>

namespace ipncsdk::service {

namespace {

struct FreeEasy {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct FreeMulti {
    void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
};
struct FreeList {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using Easy = std::unique_ptr<CURL, FreeEasy>;
using Multi = std::unique_ptr<CURLM, FreeMulti>;
using List = std::unique_ptr<curl_slist, FreeList>;

constexpr int longestPoll = 1000; // milliseconds; cancelling ends it at once

/// Once in a process, before the first use.
void startLibrary() {
    static const CURLcode started = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (started != CURLE_OK)
        throw std::runtime_error("libcurl does not start");
}

/// What a gateway answers besides its status means nothing.
std::size_t discard(char* /*data*/, std::size_t size, std::size_t count, void* /*user*/) {
    return size * count;
}

List headersWith(const std::string& token) {
    List headers(curl_slist_append(nullptr, "Content-Type: application/json"));
    const auto add = [&headers](const std::string& line) {
        if (curl_slist* longer = curl_slist_append(headers.get(), line.c_str()); longer != nullptr) {
            static_cast<void>(headers.release()); // it is part of the longer one
            headers.reset(longer);
        }
    };
    // Without this the body waits until the server has asked for it.
    add("Expect:");
    if (!token.empty())
        add("Authorization: Bearer " + token);
    return headers;
}

void prepare(CURL* easy, const device::SmsGatewayConfig& config, const std::string& body, curl_slist* headers) {
    curl_easy_setopt(easy, CURLOPT_URL, config.url.c_str());
#if LIBCURL_VERSION_NUM >= 0x075500
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
#else
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS, static_cast<long>(CURLPROTO_HTTP | CURLPROTO_HTTPS));
#endif
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 0L);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS,
                     static_cast<long>(std::chrono::milliseconds(SmsGateway::timeout).count()));
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE, static_cast<long>(body.size()));
    curl_easy_setopt(easy, CURLOPT_POSTFIELDS, body.c_str());
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &discard);
}

} // namespace

/// The transfers that run, so that they can be woken.
class SmsGateway::Cancelling final {
public:
    /// False when nothing may begin any more.
    bool enter(CURLM* multi) {
        const std::lock_guard lock(mutex_);
        if (cancelled_)
            return false;
        running_.insert(multi);
        return true;
    }
    void leave(CURLM* multi) {
        const std::lock_guard lock(mutex_);
        running_.erase(multi);
    }
    void cancel() {
        const std::lock_guard lock(mutex_);
        cancelled_ = true;
        for (CURLM* multi : running_)
            curl_multi_wakeup(multi);
    }
    [[nodiscard]] bool isCancelled() const {
        const std::lock_guard lock(mutex_);
        return cancelled_;
    }

private:
    mutable std::mutex mutex_;
    bool cancelled_ = false;   ///< guarded by mutex_
    std::set<CURLM*> running_; ///< guarded by mutex_
};

SmsGateway::SmsGateway(device::SmsGatewayConfig config)
    : config_(std::move(config))
    , cancelling_(std::make_unique<Cancelling>()) {
    startLibrary();
}

SmsGateway::~SmsGateway() = default;

bool SmsGateway::send(const TextMessage& message) {
    if (config_.url.empty()) {
        logLine("no text message can be sent: the gateway's entry has a mistake");
        return false;
    }
    const std::string body =
        toText({{"phonenumber", message.phone}, {"countrycode", message.countryCode}, {"text", message.text}});
    const List headers = headersWith(config_.token);
    const Multi multi(curl_multi_init());
    const Easy easy(curl_easy_init());
    if (!headers || !multi || !easy)
        return false;
    prepare(easy.get(), config_, body, headers.get());
    if (!cancelling_->enter(multi.get()))
        return false;
    curl_multi_add_handle(multi.get(), easy.get());
    int running = 1;
    bool broken = false;
    while (running > 0 && !broken && !cancelling_->isCancelled()) {
        broken = curl_multi_perform(multi.get(), &running) != CURLM_OK;
        if (running > 0 && !broken)
            broken = curl_multi_poll(multi.get(), nullptr, 0, longestPoll, nullptr) != CURLM_OK;
    }
    cancelling_->leave(multi.get());
    int left = 0;
    const CURLMsg* const end = running > 0 ? nullptr : curl_multi_info_read(multi.get(), &left);
    const CURLcode result = end == nullptr ? CURLE_ABORTED_BY_CALLBACK : end->data.result;
    long status = 0;
    curl_easy_getinfo(easy.get(), CURLINFO_RESPONSE_CODE, &status);
    curl_multi_remove_handle(multi.get(), easy.get());
    if (result != CURLE_OK)
        logLine(std::string("a text message can't be sent: ") + curl_easy_strerror(result));
    else if (status < 200 || status > 299)
        logLine("a text message can't be sent: the gateway answers " + std::to_string(status));
    return result == CURLE_OK && status >= 200 && status <= 299;
}

void SmsGateway::cancel() {
    cancelling_->cancel();
}

} // namespace ipncsdk::service
