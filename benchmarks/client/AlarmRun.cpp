#include "client/AlarmRun.h"

#include "base/AppEvents.h"
#include "base/DeviceModel.h"

#include <algorithm>

namespace {
constexpr int Gap = 10; // ms between two alarms that are timed
constexpr const char* Content = "level 3.2 m";
} // namespace

AlarmRun::AlarmRun(const AppContext& context, const RecordingStorage& storage, int count,
                   std::function<void(const QString& answer)> done)
    : context_(context)
    , count_(count)
    , done_(std::move(done))
    , callback_(context.settings, storage, queue_, *this) {
    // The window is connected before: its bar is set when this hears of it.
    connect(&context_.events, &AppEvents::sig_MessageBar, this, &AlarmRun::onBar);
    beat_.setTimerType(Qt::PreciseTimer);
    beat_.setInterval(1);
    connect(&beat_, &QTimer::timeout, this, &AlarmRun::tick);
    sendOne();
}

AlarmRun::~AlarmRun() {
    if (sender_.joinable())
        sender_.join();
}

std::string AlarmRun::message() const {
    const std::string device = context_.devices.ipncIds().value(0).toStdString();
    return R"({"type":"trigger","content":")" + std::string(Content) + R"(","alarm":{"ipncid":")" + device +
           R"(","datetime":"2026-01-02 03:04:05","trigger":{"linkplanid":1,"name":"p","threshold":1}}})";
}

void AlarmRun::sendOne() {
    if (sender_.joinable())
        sender_.join();
    sent_ = std::chrono::steady_clock::now();
    sender_ = std::thread([this, text = message()] {
        std::string reply;
        callback_(text, reply);
    });
}

void AlarmRun::alarm(const QVariantMap& message) {
    emit context_.events.Onsig_TriggerAlarm(message);
}

void AlarmRun::onBar(const QString& text) {
    if (!text.endsWith(QLatin1String(Content))) // others have something to say, too
        return;
    // Behind the end of the transaction, which was asked for before.
    QMetaObject::invokeMethod(this, &AlarmRun::onWritten, Qt::QueuedConnection);
}

void AlarmRun::onWritten() {
    if (isFlood_) {
        if (++written_ == count_) {
            beat_.stop();
            std::sort(times_.begin(), times_.end());
            done_(QStringLiteral("%1 %2 %3 %4")
                      .arg(times_[times_.size() / 2], 0, 'f', 2)
                      .arg(times_.back(), 0, 'f', 2)
                      .arg(stall_, 0, 'f', 2)
                      .arg(sinceFlood_.elapsed()));
        }
        return;
    }
    times_.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - sent_).count());
    if (static_cast<int>(times_.size()) < count_)
        QTimer::singleShot(Gap, this, &AlarmRun::sendOne);
    else
        flood();
}

void AlarmRun::flood() {
    isFlood_ = true;
    sinceFlood_.start();
    sinceBeat_.start();
    beat_.start();
    sender_.join();
    sender_ = std::thread([this, text = message()] {
        const auto begin = std::chrono::steady_clock::now();
        for (int number = 0; number < count_; ++number) {
            std::this_thread::sleep_until(begin + std::chrono::microseconds(1000000LL * number / count_));
            std::string reply;
            callback_(text, reply);
        }
    });
}

void AlarmRun::tick() {
    stall_ = std::max(stall_, static_cast<double>(sinceBeat_.nsecsElapsed()) / 1e6);
    sinceBeat_.start();
}
