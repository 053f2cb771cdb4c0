#include "monitor/ui/PollRunner.h"

#include "base/ScreenPoll.h"
#include "base/ui/TipDialog.h"
#include "monitor/ui/LiveVideo.h"

#include <QDebug>

using Mode = ScreenPoll::Mode;

PollRunner::PollRunner(const AppContext& context, LiveVideo& live, QObject* parent)
    : QObject(parent)
    , context_(context)
    , live_(live) {
    timer_.setObjectName(QStringLiteral("pollTimer"));
    connect(&timer_, &QTimer::timeout, this, &PollRunner::onPollTimeout);
    connect(&context_.poll, &ScreenPoll::modeChanged, this, [this] {
        if (!paused_)
            onPollTimeout();
        emit sigRunningChanged();
    });
}

bool PollRunner::isRunning() const {
    return context_.poll.mode() != Mode::Off;
}

bool PollRunner::makeWay(QWidget* parent) {
    if (!isRunning())
        return true;
    if (!TipDialog::ask(tr("提示"), tr("正在轮屏，是否停止轮屏?"), false, parent))
        return false;
    context_.poll.setPollValue(Mode::Off);
    return true;
}

void PollRunner::toggle(int mode) {
    const auto wanted = static_cast<Mode>(mode);
    if (context_.poll.mode() == wanted) {
        context_.poll.setPollValue(Mode::Off);
    } else if (context_.poll.entries().isEmpty()) {
        emit sigMessage(tr("还没有轮屏列表，请先在设置中添加"));
    } else {
        context_.poll.setPollValue(wanted);
    }
}

void PollRunner::resume() {
    paused_ = false;
    if (isRunning())
        onPollTimeout();
}

void PollRunner::pause() {
    paused_ = true;
    timer_.stop();
}

void PollRunner::onPollTimeout() {
    live_.stopAll();
    const Mode mode = context_.poll.mode();
    if (mode == Mode::Off) {
        timer_.stop();
        return;
    }
    const QStringList devices = context_.poll.getNextPollDevices(context_.devices);
    qDebug() << "getNextPollDevices " << devices;
    for (const QString& ipncId : devices) {
        if (mode == Mode::Videos)
            live_.open(ipncId);
        else
            live_.openPreview(ipncId);
    }
    timer_.start(context_.poll.interval() * 1000);
}
