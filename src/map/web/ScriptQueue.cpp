#include "map/web/ScriptQueue.h"

#include <QPointer>

namespace corvanta::map {

ScriptQueue::ScriptQueue(Run run, QObject* parent)
    : QObject(parent)
    , run_(std::move(run)) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &ScriptQueue::send);
}

void ScriptQueue::add(const ScriptCall& call) {
    waiting_ += call.script();
    if (!isRunning_ && !timer_.isActive())
        timer_.start(0);
}

void ScriptQueue::addText(int index, const ScriptCall& call) {
    const auto it = waitingTexts_.constFind(index);
    if (it != waitingTexts_.constEnd()) {
        waiting_[*it] = call.script();
        return;
    }
    waitingTexts_.insert(index, waiting_.size());
    add(call);
}

void ScriptQueue::clear() {
    waiting_.clear();
    waitingTexts_.clear();
    timer_.stop();
    isRunning_ = false;
    ++page_;
}

void ScriptQueue::send() {
    if (isRunning_ || waiting_.isEmpty())
        return;
    const QString script = waiting_.join(QLatin1Char('\n'));
    waiting_.clear();
    waitingTexts_.clear();
    isRunning_ = true;
    run_(script, [self = QPointer<ScriptQueue>(this), page = page_] {
        if (self.isNull() || self->page_ != page)
            return;
        self->isRunning_ = false;
        self->send();
    });
}

} // namespace corvanta::map
