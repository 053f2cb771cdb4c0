#include "media/SharedStream.h"

#include "media/ThreadRank.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace ipncsdk::media {

SharedStream::SharedStream(std::string name, std::unique_ptr<StreamReader> reader, Owner& owner, Log log)
    : name_(std::move(name))
    , reader_(std::move(reader))
    , owner_(owner)
    , log_(std::move(log)) {}

SharedStream::~SharedStream() = default;

void SharedStream::start() {
    thread_ = std::thread(&SharedStream::threadMain, this);
}

void SharedStream::requestStop() {
    const std::lock_guard lock(mutex_);
    stop_ = true;
    wake_.notify_all();
    picture_.notify_all();
}

void SharedStream::join() {
    if (thread_.joinable()) {
        thread_.join();
    }
}

void SharedStream::add(std::shared_ptr<Subscriber> subscriber) {
    const std::lock_guard lock(mutex_);
    subscribers_.push_back(std::move(subscriber));
    changed_ = true;
    wake_.notify_all();
}

std::size_t SharedStream::remove(int subscriberId) {
    const std::lock_guard lock(mutex_);
    std::erase_if(subscribers_, [&](const auto& subscriber) { return subscriber->id == subscriberId; });
    changed_ = true;
    return subscribers_.size();
}

StreamError SharedStream::copyPicture(std::chrono::milliseconds patience, bool always, Picture& picture) {
    const auto giveUp = Clock::now() + patience;
    std::unique_lock lock(mutex_);
    const bool decoding = std::any_of(subscribers_.begin(), subscribers_.end(),
                                      [](const auto& subscriber) { return subscriber->decoded; });
    if (newest_.empty() && (always || !decoding)) {
        ++pictureWaiters_;
        picture_.wait_until(lock, giveUp, [this] { return ended_ || stop_ || !newest_.empty(); });
        --pictureWaiters_;
    }
    if (newest_.empty()) {
        return ended_ && endReason_ != StreamError::None ? endReason_ : StreamError::NoPicture;
    }
    picture = newest_;
    return StreamError::None;
}

bool SharedStream::running() {
    if (stop_) {
        return false;
    }
    takeNewSubscribers();
    closeLate(Clock::now());
    return !stop_;
}

bool SharedStream::waitUntil(Clock::time_point moment) {
    while (running()) {
        if (Clock::now() >= moment) {
            return true;
        }
        // Time limits of subscribers are looked after at least this often.
        const auto next = std::min(moment, Clock::now() + std::chrono::milliseconds(100));
        std::unique_lock lock(mutex_);
        wake_.wait_until(lock, next, [this] { return stop_ || changed_; });
    }
    return false;
}

void SharedStream::stage(OpenStage stage) {
    open_ = false;
    stage_ = stage;
    takeNewSubscribers();
    tellState();
}

void SharedStream::opened(const StreamParameters& parameters) {
    const bool goesOn = std::exchange(open_, true) && parameters.talk != parameters_.talk;
    parameters_ = parameters;
    silent_ = !parameters.sound;
    if (goesOn) {
        for (const auto& member : members_) {
            member->toldOpen = false;
        }
    } else {
        stopDecoding();
    }
    takeNewSubscribers();
    tellState();
}

void SharedStream::frame(const CodedFrame& frame) {
    takeNewSubscribers();
    for (const auto& member : members_) {
        member->codedRuns = member->codedRuns || frame.keyFrame;
        if (member->coded && member->codedRuns) {
            member->call([&](StreamListener& listener) { listener.onCoded(frame); });
        }
    }
    if (!picturesWanted()) {
        stopDecoding();
    } else if (decoder_ != nullptr || frame.keyFrame) {
        decode(frame);
    }
}

bool SharedStream::watched() const {
    return std::any_of(members_.begin(), members_.end(),
                       [](const auto& member) { return member->decoded || member->coded; });
}

bool SharedStream::soundWanted() const {
    return std::any_of(members_.begin(), members_.end(), [](const auto& member) { return member->sound; });
}

void SharedStream::sound(const SoundBlock& sound) {
    takeNewSubscribers();
    for (const auto& member : members_) {
        if (member->sound) {
            member->call([&](StreamListener& listener) { listener.onSound(sound); });
        }
    }
}

void SharedStream::log(const std::string& line) {
    if (log_) {
        log_(name_ + ": " + line);
    }
}

void SharedStream::threadMain() {
    setRank(ThreadRank::Stream);
    const StreamError reason = read();
    if (!stop_ || reason != StreamError::None) {
        owner_.ending(*this);
        closeAll(reason == StreamError::None ? StreamError::Internal : reason);
    }
    decoder_.reset();
    members_.clear();
}

StreamError SharedStream::read() {
    try {
        return reader_->run(*this);
    } catch (const std::exception& error) {
        log(std::string("the reader failed: ") + error.what());
        return StreamError::Internal;
    }
}

/// Greets those who joined since the last time with the state as it is.
void SharedStream::takeNewSubscribers() {
    if (!changed_) {
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        members_ = subscribers_;
        changed_ = false;
    }
    tellState();
}

void SharedStream::tellState() {
    for (const auto& member : members_) {
        tellState(*member);
    }
    closeRefused();
}

void SharedStream::tellState(Subscriber& subscriber) {
    if (open_) {
        if (!subscriber.toldOpen && subscriber.refused == StreamError::None) {
            subscriber.refused = subscriber.refusalOf(parameters_);
            if (subscriber.refused != StreamError::None) {
                return;
            }
            subscriber.toldOpen = true;
            subscriber.toldStage.reset();
            subscriber.codedRuns = false;
            subscriber.openBy.reset();
            subscriber.call([this](StreamListener& listener) { listener.onOpened(parameters_); });
        }
    } else if (subscriber.toldStage != stage_) {
        subscriber.toldOpen = false;
        subscriber.toldStage = stage_;
        subscriber.call([this](StreamListener& listener) { listener.onStage(stage_); });
    }
}

/// Ends the subscriptions that have waited long enough for the stream to open.
void SharedStream::closeLate(Clock::time_point now) {
    for (std::size_t index = 0; index < members_.size();) {
        const auto& openBy = members_[index]->openBy;
        index = openBy && now >= *openBy ? closeMember(index, StreamError::TimedOut) : index + 1;
    }
}

/// Ends the subscriptions to which the stream, as it has opened, is of no use.
void SharedStream::closeRefused() {
    for (std::size_t index = 0; index < members_.size();) {
        const StreamError refused = members_[index]->refused;
        index = refused != StreamError::None ? closeMember(index, refused) : index + 1;
    }
}

/// Ends one subscription; returns the place of the one behind it.
std::size_t SharedStream::closeMember(std::size_t index, StreamError reason) {
    const std::shared_ptr<Subscriber> member = members_[index];
    members_.erase(members_.begin() + static_cast<std::ptrdiff_t>(index));
    member->call([reason](StreamListener& listener) { listener.onClosed(reason); });
    owner_.finished(member->id);
    return index;
}

void SharedStream::closeAll(StreamError reason) {
    takeNewSubscribers();
    {
        const std::lock_guard lock(mutex_);
        ended_ = true;
        endReason_ = reason;
        picture_.notify_all();
    }
    for (const auto& member : std::exchange(members_, {})) {
        member->call([reason](StreamListener& listener) { listener.onClosed(reason); });
        owner_.finished(member->id);
    }
}

bool SharedStream::picturesWanted() const {
    return pictureWaiters_ > 0 ||
           std::any_of(members_.begin(), members_.end(), [](const auto& member) { return member->decoded; });
}

void SharedStream::decode(const CodedFrame& frame) {
    if (decoder_ == nullptr) {
        decoder_ = std::make_unique<H264Decoder>();
        reportedDamage_ = 0;
    }
    decoder_->feed(frame);
    while (decoder_->take(working_)) {
        {
            const std::lock_guard lock(mutex_);
            std::swap(newest_, working_);
            picture_.notify_all();
        }
        const DecodedFrame picture{newest_.samples.data(), newest_.width, newest_.height, newest_.time};
        for (const auto& member : members_) {
            if (member->decoded) {
                member->call([&](StreamListener& listener) { listener.onDecoded(picture); });
            }
        }
    }
    if (decoder_->damaged() > 0 && reportedDamage_ == 0) {
        reportedDamage_ = decoder_->damaged();
        log("damaged data reached the decoder; pictures may be missing");
    }
}

void SharedStream::stopDecoding() {
    if (decoder_ == nullptr) {
        return;
    }
    if (decoder_->damaged() > 1) {
        log(std::to_string(decoder_->damaged()) + " units or pictures were damaged");
    }
    decoder_.reset();
    const std::lock_guard lock(mutex_);
    newest_ = {};
}

} // namespace ipncsdk::media
