#include "playback/PlaybackClock.h"

#include <algorithm>
#include <cmath>

namespace corvanta::playback {

namespace {

/// Nearer to a begin than this, "back" means the one before.
constexpr std::chrono::seconds nearBegin{2};

std::chrono::microseconds steadyTime() {
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

std::size_t placeOf(double speed) {
    const auto nearer = [speed](double a, double b) {
        return std::abs(a - speed) < std::abs(b - speed);
    };
    const auto& speeds = PlaybackClock::Speeds;
    return static_cast<std::size_t>(std::min_element(speeds.begin(), speeds.end(), nearer) - speeds.begin());
}

} // namespace

PlaybackClock::PlaybackClock(TimeSource source)
    : source_(source ? std::move(source) : TimeSource(steadyTime)) {}

Span PlaybackClock::whole() const {
    return covered_.empty() ? Span{} : Span{covered_.front().begin, covered_.back().end};
}

/// The last moment at which there is something to be seen.
Moment PlaybackClock::last() const {
    return std::max(whole().begin, whole().end - microseconds(1));
}

void PlaybackClock::setCovered(std::vector<Span> covered) {
    goOn();
    covered_ = std::move(covered);
    if (moment_ < whole().begin || moment_ > last())
        moment_ = whole().begin;
}

void PlaybackClock::setSkipGaps(bool skip) {
    goOn();
    skipGaps_ = skip;
}

/// Brings `moment_` up to the source's time.
void PlaybackClock::goOn() {
    const microseconds time = source_();
    const microseconds passed = time - since_;
    since_ = time;
    if (!playing_ || held_)
        return;
    microseconds left(std::llround(static_cast<double>(passed.count()) * speed_));
    if (skipGaps_) {
        moment_ = skipped(moment_);
        for (const Span& span : covered_) {
            if (span.end <= moment_ || left.count() <= 0)
                continue;
            moment_ = std::max(moment_, span.begin);
            const microseconds step = std::min<microseconds>(left, span.end - moment_);
            moment_ += step;
            left -= step;
        }
        moment_ = skipped(moment_);
    } else {
        moment_ += left;
    }
    if (moment_ >= last()) {
        moment_ = last();
        playing_ = false;
    }
}

/// The moment itself, or where the gap ends that it lies in.
Moment PlaybackClock::skipped(Moment moment) const {
    const auto span =
        std::find_if(covered_.begin(), covered_.end(), [moment](const Span& s) { return moment < s.end; });
    return span == covered_.end() ? moment : std::max(moment, span->begin);
}

void PlaybackClock::play() {
    goOn();
    if (moment_ >= last())
        moment_ = whole().begin;
    playing_ = !covered_.empty();
}

void PlaybackClock::pause() {
    goOn();
    playing_ = false;
}

void PlaybackClock::hold(bool on) {
    goOn();
    held_ = on;
}

void PlaybackClock::setSpeed(double speed) {
    goOn();
    speed_ = Speeds[placeOf(speed)];
}

double PlaybackClock::fasterSpeed() const {
    return Speeds[std::min(placeOf(speed_) + 1, Speeds.size() - 1)];
}

double PlaybackClock::slowerSpeed() const {
    return Speeds[std::max<std::size_t>(placeOf(speed_), 1) - 1];
}

void PlaybackClock::seek(Moment moment) {
    goOn();
    moment_ = std::clamp(moment, whole().begin, last());
}

Moment PlaybackClock::now() {
    goOn();
    return moment_;
}

std::optional<Moment> PlaybackClock::nextBegin() {
    const Moment moment = now();
    for (const Span& span : covered_) {
        if (span.begin > moment)
            return span.begin;
    }
    return std::nullopt;
}

std::optional<Moment> PlaybackClock::previousBegin() {
    const Moment moment = now() - (playing_ ? nearBegin : std::chrono::seconds(0));
    std::optional<Moment> begin;
    for (const Span& span : covered_) {
        if (span.begin < moment)
            begin = span.begin;
    }
    return begin;
}

} // namespace corvanta::playback
