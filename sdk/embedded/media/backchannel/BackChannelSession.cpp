#include "media/backchannel/BackChannelSession.h"

#include "media/backchannel/RtspText.h"
#include "media/rtsp/Resolver.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace ipncsdk::media {

namespace {

/// How long saying good-bye to the camera may take.
constexpr std::chrono::milliseconds farewell{150};
constexpr std::chrono::milliseconds lookUpEvery{20};
/// More than a second of sound, in the highest rate.
constexpr std::size_t mostUnsent = 65536;

const std::pair<std::string, std::string> wantsBackChannel{"Require", "www.onvif.org/ver20/backchannel"};

/// What stands behind `name` in a list of parameters; empty when it is not there.
std::string_view parameterOf(std::string_view list, std::string_view name) {
    while (!list.empty()) {
        std::string_view value = cutField(list, ';');
        if (isSameWord(cutField(value, '='), name)) {
            return trimmed(value);
        }
    }
    return {};
}

} // namespace

BackChannelSession::BackChannelSession(const RtspAddress& address, TCPSocketDelegate* delegate,
                                       std::chrono::milliseconds silence, std::optional<Clock::time_point> giveUp,
                                       GoesOn goesOn)
    : address_(address)
    , silence_(silence)
    , giveUp_(giveUp)
    , goesOn_(std::move(goesOn))
    , relay_(delegate == nullptr ? nullptr
                                 : std::make_unique<Relay>(*delegate, address.host(), address.port(), silence))
    , link_(goesOn_)
    , authorization_(address.user(), address.password()) {}

BackChannelSession::~BackChannelSession() {
    if (session_.empty() || link_.isBroken()) {
        return;
    }
    link_.insist();
    const int sequence = post({"TEARDOWN", media_.aggregate, {}});
    const auto giveUp = Clock::now() + farewell;
    while (!link_.isBroken() && Clock::now() < giveUp) {
        link_.workUntil(giveUp);
        if (const auto answer = link_.takeAnswer(); answer && answer->sequence == sequence) {
            break;
        }
    }
}

StreamError BackChannelSession::describe() {
    if (address_.secure()) {
        why_ = "only connections in the clear can be talked through";
        return StreamError::NoTalk;
    }
    if (const StreamError error = reach(); error != StreamError::None) {
        return error;
    }
    const RtspRequest request{"DESCRIBE", address_.plainUrl(), {{"Accept", "application/sdp"}, wantsBackChannel}};
    RtspResponse response;
    if (const StreamError error = exchange(request, response); error != StreamError::None) {
        return error;
    }
    const std::string_view base = response.header("content-base");
    const bool usable = isAddressText(base) && isSameWord(base.substr(0, 7), "rtsp://");
    const auto media = BackChannelMedia::choose(response.body, usable ? base : std::string_view(request.url));
    if (!media) {
        why_ = "it describes no way for G.711 to it";
        return StreamError::NoTalk;
    }
    media_ = *media;
    return StreamError::None;
}

/// Lets some time pass for what another thread does; false when that is not to be waited for any longer.
bool BackChannelSession::waits() const {
    const bool may = goesOn_() && !isPast(giveUp_);
    if (may) {
        std::this_thread::sleep_for(lookUpEvery);
    }
    return may;
}

/// Makes the connection, directly or through the client's transport.
StreamError BackChannelSession::reach() {
    std::vector<std::string> addresses{"127.0.0.1"};
    if (relay_ != nullptr) {
        while (relay_->connected() == Relay::Connected::Pending && waits()) {
        }
        if (relay_->connected() == Relay::Connected::No) {
            return StreamError::ProxyFailed;
        }
    } else {
        const Resolver resolver(address_.host());
        while (resolver.state() == Resolver::State::Pending && waits()) {
        }
        if (resolver.state() == Resolver::State::Unknown) {
            return StreamError::AddressUnreachable;
        }
        const bool found = resolver.state() == Resolver::State::Found;
        addresses = found ? resolver.addresses() : std::vector<std::string>();
    }
    if (link_.connect(addresses, relay_ != nullptr ? relay_->port() : address_.port(), giveUp_)) {
        return StreamError::None;
    }
    if (!goesOn_()) {
        return StreamError::Stopped;
    }
    return isPast(giveUp_) ? StreamError::TimedOut : StreamError::AddressUnreachable;
}

int BackChannelSession::post(RtspRequest request) {
    if (std::string who = authorization_.header(request.method, request.url); !who.empty()) {
        request.headers.emplace_back("Authorization", std::move(who));
    }
    if (!session_.empty()) {
        request.headers.emplace_back("Session", session_);
    }
    link_.send(request.text(++sequence_));
    return sequence_;
}

/// Asks, and asks again with name and password where they are wanted. `None` when the camera agrees.
StreamError BackChannelSession::exchange(const RtspRequest& request, RtspResponse& response) {
    constexpr int unauthorized = 401;
    constexpr int mostAttempts = 4;
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const int sequence = post(request);
        if (const StreamError error = await(sequence, response); error != StreamError::None) {
            return error;
        }
        if (response.status != unauthorized || !authorization_.accept(response)) {
            break;
        }
    }
    if (response.status != unauthorized) {
        authorization_.pass();
    }
    return response.isGood() ? StreamError::None : refusal(request, response.status);
}

StreamError BackChannelSession::await(int sequence, RtspResponse& response) {
    constexpr int firstFinal = 200;
    while (true) {
        link_.workUntil(std::min(giveUp_.value_or(Clock::time_point::max()), Clock::now() + silence_));
        while (auto answer = link_.takeAnswer()) {
            if (answer->sequence == sequence && answer->status >= firstFinal) {
                response = std::move(*answer);
                return StreamError::None;
            }
        }
        if (!goesOn_()) {
            return StreamError::Stopped;
        }
        if (link_.isBroken()) {
            why_ = link_.complaint();
            return why_.empty() ? StreamError::ConnectionLost : StreamError::NoTalk;
        }
        if (isPast(giveUp_)) {
            return StreamError::TimedOut;
        }
    }
}

StreamError BackChannelSession::refusal(const RtspRequest& request, int status) {
    why_ = "it answers " + std::to_string(status) + " to " + request.method;
    const bool describes = request.method == "DESCRIBE";
    switch (status) {
    case 401:
    case 403:
        return StreamError::PasswordRefused;
    case 404:
        return describes ? StreamError::StreamNotFound : StreamError::NoTalk;
    case 453: // the bandwidth is used up
    case 503: // not now
        return describes ? StreamError::NoTalk : StreamError::TalkBusy;
    default:
        return StreamError::NoTalk;
    }
}

StreamError BackChannelSession::open() {
    StreamError error = describe();
    if (error == StreamError::None) {
        error = setUp();
    }
    if (error == StreamError::None) {
        RtspResponse response;
        error = exchange({"PLAY", media_.aggregate, {{"Range", "npt=0.000-"}, wantsBackChannel}}, response);
    }
    nextKeepAlive_ = Clock::now() + life_ / 2;
    return error;
}

StreamError BackChannelSession::setUp() {
    const RtspRequest request{
        "SETUP", media_.control, {{"Transport", "RTP/AVP/TCP;unicast;interleaved=0-1"}, wantsBackChannel}};
    RtspResponse response;
    if (const StreamError error = exchange(request, response); error != StreamError::None) {
        return error;
    }
    if (!takeSession(response.header("session"))) {
        why_ = "it opens a session without a name";
        return StreamError::NoTalk;
    }
    // Two channels stand there: the first one for sound, the other for reports about it.
    std::string_view channels = parameterOf(response.header("transport"), "interleaved");
    int channel = 0;
    readNumber(cutField(channels, '-'), 0, 255, channel);
    channel_ = static_cast<std::uint8_t>(channel);
    return StreamError::None;
}

bool BackChannelSession::takeSession(std::string_view header) {
    constexpr int shortest = 2;
    constexpr int longest = 3600;
    std::string_view rest = header;
    session_ = cutField(rest, ';');
    int life = static_cast<int>(life_.count());
    readNumber(parameterOf(rest, "timeout"), shortest, longest, life);
    life_ = std::chrono::seconds(life);
    const bool usable = isAddressText(session_);
    session_ = usable ? session_ : std::string();
    return usable;
}

bool BackChannelSession::send(std::string packet) {
    const bool takes = link_.unsent() + packet.size() <= mostUnsent;
    if (takes) {
        link_.send(std::move(packet));
    }
    return takes;
}

StreamError BackChannelSession::workUntil(Clock::time_point moment) {
    do {
        link_.workUntil(moment);
        if (const StreamError error = takeAnswers(); error != StreamError::None) {
            return error;
        }
        if (!goesOn_()) {
            return StreamError::Stopped;
        }
        if (link_.isBroken()) {
            why_ = link_.complaint();
            return StreamError::ConnectionLost;
        }
        keepAlive();
        // Asked some time ago, and not answered since.
        if (awaited_ != 0 && Clock::now() - (nextKeepAlive_ - life_ / 2) > silence_) {
            why_ = "it does not answer any more";
            return StreamError::ConnectionLost;
        }
    } while (Clock::now() < moment);
    return StreamError::None;
}

void BackChannelSession::keepAlive() {
    if (awaited_ == 0 && Clock::now() >= nextKeepAlive_) {
        nextKeepAlive_ = Clock::now() + life_ / 2;
        awaited_ = post({asksOptions_ ? "OPTIONS" : "GET_PARAMETER", media_.aggregate, {}});
    }
}

/// Takes the answers to what keeps the way open.
StreamError BackChannelSession::takeAnswers() {
    while (const auto answer = link_.takeAnswer()) {
        if (answer->sequence != awaited_) {
            continue;
        }
        awaited_ = 0;
        constexpr int unauthorized = 401;
        constexpr int noSession = 454;
        const bool asksAgain = answer->status == unauthorized && authorization_.accept(*answer);
        if (asksAgain || (!answer->isGood() && !asksOptions_ && answer->status != noSession)) {
            asksOptions_ = !asksAgain;
            nextKeepAlive_ = Clock::now() + lookUpEvery;
        } else if (!answer->isGood()) {
            why_ = "it answers " + std::to_string(answer->status) + " to what keeps the session open";
            return StreamError::ConnectionLost;
        } else {
            authorization_.pass();
        }
    }
    return StreamError::None;
}

} // namespace ipncsdk::media
