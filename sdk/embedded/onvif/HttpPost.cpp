#include "onvif/HttpPost.h"

#include "ipncsdk/TCPSocketDelegate.h"
#include "media/rtsp/Relay.h"
#include "onvif/Xml.h"

#include <boost/asio/ip/tcp.hpp>
#include <curl/curl.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <memory>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace ipncsdk::onvif {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds lookUpEvery{20};

struct CloseDelegate {
    void operator()(TCPSocketDelegate* delegate) const { delegate->Close(); }
};

struct FreeList {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using List = std::unique_ptr<curl_slist, FreeList>;

bool startsLike(std::string_view text, std::string_view lower) {
    return text.size() >= lower.size() && std::equal(lower.begin(), lower.end(), text.begin(), [](char a, char b) {
               return a == std::tolower(static_cast<unsigned char>(b));
           });
}

/// One request and its answer. Members are destroyed backwards: the connections first, then what carries them.
class Exchange final {
public:
    Exchange(const Transport& transport, Url url)
        : transport_(transport)
        , url_(std::move(url)) {}
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    ~Exchange() {
        if (multi_ && easy_)
            curl_multi_remove_handle(multi_.get(), easy_.get());
    }

    Outcome<HttpAnswer> run(const std::string& contentType, const std::string& body, const Credentials* digest) {
        if (!multi_ || !easy_)
            return Failure{Refusal::Unreachable, "no connection could be prepared"};
        prepare(contentType, body, digest);
        curl_multi_add_handle(multi_.get(), easy_.get());
        for (;;) {
            int running = 0;
            if (curl_multi_perform(multi_.get(), &running) != CURLM_OK)
                return Failure{Refusal::Unreachable, "the connection failed"};
            if (running == 0)
                return outcome();
            if (cancelled())
                return Failure{Refusal::Cancelled, "cancelled"};
            if (steady_clock::now() >= deadline_)
                return Failure{Refusal::TimedOut, "no answer in time"};
            curl_multi_poll(multi_.get(), nullptr, 0, static_cast<int>(lookUpEvery.count()), nullptr);
        }
    }

private:
    template <typename T>
    void set(CURLoption option, T value) {
        curl_easy_setopt(easy_.get(), option, value);
    }

    void prepare(const std::string& contentType, const std::string& body, const Credentials* digest) {
        headers_.reset(curl_slist_append(nullptr, ("Content-Type: " + contentType).c_str()));
        // Cameras' servers know little of waiting for a go-ahead.
        curl_slist_append(headers_.get(), "Expect:");
        set(CURLOPT_URL, url_.text().c_str());
        set(CURLOPT_PROTOCOLS_STR, "http,https");
        set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
        set(CURLOPT_FOLLOWLOCATION, 0L);
        set(CURLOPT_PROXY, "");
        set(CURLOPT_NOSIGNAL, 1L);
        set(CURLOPT_SSL_VERIFYPEER, 0L);
        set(CURLOPT_SSL_VERIFYHOST, 0L);
        set(CURLOPT_TIMEOUT_MS, static_cast<long>(transport_.timeout.count()));
        set(CURLOPT_HTTPHEADER, headers_.get());
        set(CURLOPT_POSTFIELDSIZE, static_cast<long>(body.size()));
        set(CURLOPT_COPYPOSTFIELDS, body.c_str());
        set(CURLOPT_WRITEFUNCTION, &Exchange::takeBody);
        set(CURLOPT_WRITEDATA, this);
        set(CURLOPT_HEADERFUNCTION, &Exchange::takeHeader);
        set(CURLOPT_HEADERDATA, this);
#if LIBCURL_VERSION_NUM >= 0x075700
        // A name that is being looked up must not hold up whoever has cancelled.
        set(CURLOPT_QUICK_EXIT, 1L);
#endif
        if (digest != nullptr) {
            // Asked for as the only one that may be, it lets the first, unauthorised question go out whole: cameras
            // refuse an empty one for other reasons.
            set(CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_DIGEST | CURLAUTH_ONLY));
            set(CURLOPT_USERNAME, digest->user.c_str());
            set(CURLOPT_PASSWORD, digest->password.c_str());
        }
        nextDelegate_ = askForDelegate();
        if (nextDelegate_) {
            // Names are the transport's to look up, so nothing is looked up here.
            detour_.reset(curl_slist_append(nullptr, "::127.0.0.1:9"));
            set(CURLOPT_CONNECT_TO, detour_.get());
            set(CURLOPT_OPENSOCKETFUNCTION, &Exchange::openThroughRelay);
            set(CURLOPT_OPENSOCKETDATA, this);
        }
    }

    using Delegate = std::unique_ptr<TCPSocketDelegate, CloseDelegate>;
    Delegate askForDelegate() const {
        return Delegate(transport_.socketDelegate ? transport_.socketDelegate() : nullptr);
    }

    bool cancelled() const {
        return transport_.cancelled && transport_.cancelled();
    }

    /// Every connection gets a relay of its own, and goes to the relay's port.
    static curl_socket_t openThroughRelay(void* self, curlsocktype /*purpose*/, curl_sockaddr* address) {
        auto& exchange = *static_cast<Exchange*>(self);
        Delegate delegate = exchange.nextDelegate_ ? std::move(exchange.nextDelegate_) : exchange.askForDelegate();
        if (!delegate || address->family != AF_INET)
            return CURL_SOCKET_BAD;
        exchange.relays_.push_back(std::make_unique<media::Relay>(*delegate.release(), exchange.url_.host,
                                                                  exchange.url_.port, exchange.transport_.timeout));
        media::Relay& relay = *exchange.relays_.back();
        while (relay.connected() == media::Relay::Connected::Pending && !exchange.cancelled() &&
               steady_clock::now() < exchange.deadline_)
            std::this_thread::sleep_for(lookUpEvery);
        if (relay.connected() != media::Relay::Connected::Yes)
            return CURL_SOCKET_BAD;
        const boost::asio::ip::tcp::endpoint place(boost::asio::ip::address_v4::loopback(), relay.port());
        std::memcpy(&address->addr, place.data(), place.size());
        return socket(address->family, address->socktype, address->protocol);
    }

    static std::size_t takeBody(char* data, std::size_t one, std::size_t count, void* self) {
        auto& exchange = *static_cast<Exchange*>(self);
        const std::size_t size = one * count;
        exchange.tooLong_ = exchange.tooLong_ || exchange.answer_.body.size() + size > xml::longestText;
        if (exchange.tooLong_)
            return 0;
        exchange.answer_.body.append(data, size);
        return size;
    }

    static std::size_t takeHeader(char* data, std::size_t one, std::size_t count, void* self) {
        auto& exchange = *static_cast<Exchange*>(self);
        const std::string_view line(data, one * count);
        // An answer to a challenge begins anew.
        if (startsLike(line, "http/")) {
            exchange.answer_.body.clear();
            exchange.answer_.digestOffered = false;
        }
        exchange.headEnded_ = line == "\r\n" || line == "\n";
        constexpr std::string_view challenge = "www-authenticate:";
        if (startsLike(line, challenge)) {
            const std::size_t begin = std::min(line.find_first_not_of(" \t", challenge.size()), line.size());
            const bool digest = startsLike(line.substr(begin), "digest");
            exchange.answer_.digestOffered = exchange.answer_.digestOffered || digest;
        }
        return line.size();
    }

    Outcome<HttpAnswer> outcome() {
        int left = 0;
        const CURLMsg* const message = curl_multi_info_read(multi_.get(), &left);
        const CURLcode code = message != nullptr ? message->data.result : CURLE_FAILED_INIT;
        if (cancelled())
            return Failure{Refusal::Cancelled, "cancelled"};
        if (tooLong_)
            return Failure{Refusal::NoOnvif, "the answer is too long"};
        if (code == CURLE_OPERATION_TIMEDOUT)
            return Failure{Refusal::TimedOut, "no answer in time"};
        if (code == CURLE_WEIRD_SERVER_REPLY || code == CURLE_UNSUPPORTED_PROTOCOL || code == CURLE_HTTP2)
            return Failure{Refusal::NoOnvif, "the answer is no HTTP"};
        if (code == CURLE_PARTIAL_FILE || code == CURLE_GOT_NOTHING || (code == CURLE_OK && !headEnded_))
            return Failure{Refusal::Unreachable, "the answer was cut short"};
        if (code != CURLE_OK)
            return Failure{Refusal::Unreachable, curl_easy_strerror(code)};
        curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &answer_.status);
        return std::move(answer_);
    }

    const Transport& transport_;
    const Url url_;
    const steady_clock::time_point deadline_ = steady_clock::now() + transport_.timeout;
    HttpAnswer answer_;
    bool tooLong_ = false;
    bool headEnded_ = false; ///< the answer's header came to its end; the library takes less for an empty answer
    Delegate nextDelegate_;
    std::vector<std::unique_ptr<media::Relay>> relays_;
    List headers_;
    List detour_;
    std::unique_ptr<CURLM, decltype(&curl_multi_cleanup)> multi_{curl_multi_init(), &curl_multi_cleanup};
    std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> easy_{curl_easy_init(), &curl_easy_cleanup};
};

/// The library wants to be told once before threads use it.
bool isReady() {
    static const bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return ready;
}

} // namespace

Outcome<HttpAnswer> post(const Transport& transport, const Url& url, const std::string& contentType,
                         const std::string& body, const Credentials* digest) {
    if (!isReady())
        return Failure{Refusal::Unreachable, "no connection could be prepared"};
    return Exchange(transport, url).run(contentType, body, digest);
}

} // namespace ipncsdk::onvif
