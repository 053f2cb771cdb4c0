#include "media/backchannel/BackChannelQuestion.h"

#include "media/ThreadRank.h"
#include "media/backchannel/BackChannelSession.h"

#include <exception>
#include <utility>

namespace ipncsdk::media {

BackChannelQuestion::BackChannelQuestion(About about, std::shared_ptr<BackChannels> known, Log log)
    : about_(std::move(about))
    , known_(std::move(known))
    , log_(std::move(log)) {}

BackChannelQuestion::~BackChannelQuestion() {
    stop_ = true;
    if (thread_.joinable()) {
        thread_.join();
    }
}

void BackChannelQuestion::ask(const RtspAddress& address) {
    if (thread_.joinable() || !known_->begin(about_.camera, about_.source)) {
        return;
    }
    thread_ = std::thread([this, address] {
        setRank(ThreadRank::Background);
        work(address);
    });
}

void BackChannelQuestion::work(const RtspAddress& address) {
    StreamError answer = StreamError::Internal;
    std::string why;
    try {
        TCPSocketDelegate* delegate = about_.socketDelegate ? about_.socketDelegate() : nullptr;
        BackChannelSession session(address, delegate, about_.timeout, Clock::now() + about_.timeout,
                                   [this] { return !stop_; });
        answer = session.describe();
        why = session.why();
    } catch (const std::exception& error) {
        why = error.what();
    }
    known_->note(about_.camera, about_.source, answer);
    if (answer != StreamError::None && answer != StreamError::Stopped) {
        log_("the camera at " + address.host() + " cannot be talked to (" +
             (why.empty() ? std::to_string(static_cast<int>(answer)) : why) + ')');
    }
}

} // namespace ipncsdk::media
