#include "playback/ui/PlaybackControls.h"

#include "base/ui/BarButton.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>

#include <algorithm>

namespace corvanta::playback {

namespace {

constexpr int RoomForOneLine = 720; // px

bool isTransport(Action action) {
    return action <= Action::NextRecording;
}

} // namespace

PlaybackControls::PlaybackControls(QWidget* parent)
    : QWidget(parent)
    , lines_(new QBoxLayout(QBoxLayout::LeftToRight, this)) {
    setObjectName(QStringLiteral("playbackBar"));
    corvanta::wordedName(this, [] { return tr("回放控制"); });
    setAttribute(Qt::WA_StyledBackground);
    lines_->setContentsMargins(2 * theme::Step, theme::Step, 2 * theme::Step, theme::Step);
    lines_->setSpacing(theme::Step);
    auto* const transport = new QHBoxLayout;
    auto* const others = new QHBoxLayout;
    for (QHBoxLayout* line : {transport, others})
        line->setSpacing(theme::Step / 2);
    lines_->addLayout(transport, 1);
    lines_->addLayout(others);
    for (const ActionEntry& entry : playbackActions()) {
        if (entry.drawing == nullptr)
            continue;
        addButton(entry, isTransport(entry.action) ? transport : others);
        if (entry.action == Action::Slower) {
            speed_ = new QLabel(this);
            speed_->setObjectName(QStringLiteral("playbackSpeed"));
            speed_->setAlignment(Qt::AlignCenter);
            speed_->setFixedWidth(12 * theme::Step);
            transport->addWidget(speed_);
        }
    }
    time_ = new QLabel(this);
    time_->setObjectName(QStringLiteral("playbackTime"));
    time_->setTextFormat(Qt::PlainText);
    time_->setMinimumWidth(1);
    transport->addSpacing(2 * theme::Step);
    transport->addWidget(time_, 1);
    others->addStretch(1);
    buttons_[static_cast<int>(Action::SkipGaps)]->setCheckable(true);
    setLoaded(false);
    corvanta::worded(this, [this] {
        setSpeed(speedShown_);
        sayPlaying();
    });
}

void PlaybackControls::addButton(const ActionEntry& entry, QBoxLayout* line) {
    QToolButton* const button = corvanta::barButton(
        this, QLatin1String(entry.objectName), [&entry] { return actionText(entry); }, QLatin1String(entry.drawing));
    corvanta::wordedTip(
        button, [&entry] { return withKey(actionText(entry), entry); }); // entries live as long as the program
    button->installEventFilter(this);
    line->addWidget(button);
    buttons_.insert(static_cast<int>(entry.action), button);
    connect(button, &QToolButton::clicked, this, [this, action = entry.action] { emit sigAction(action); });
}

void PlaybackControls::setLoaded(bool loaded) {
    for (const ActionEntry& entry : playbackActions()) {
        if (QToolButton* const button = buttons_.value(static_cast<int>(entry.action)))
            button->setEnabled(loaded || !entry.needsRecordings);
    }
    if (!loaded)
        time_->clear();
}

void PlaybackControls::setPlaying(bool playing) {
    isPlaying_ = playing;
    sayPlaying();
}

void PlaybackControls::sayPlaying() {
    const bool playing = isPlaying_;
    QToolButton* const button = buttons_[static_cast<int>(Action::TogglePlay)];
    const ActionEntry& entry = entryOf(Action::TogglePlay);
    const QString text = playing ? tr("暂停") : actionText(entry);
    button->setIcon(corvanta::svgIcon(playing ? QStringLiteral("pause") : QStringLiteral("play"), theme::TextOnDark));
    button->setAccessibleName(text);
    button->setToolTip(withKey(text, entry));
}

void PlaybackControls::setSpeed(double speed) {
    speedShown_ = speed;
    speed_->setText(QStringLiteral("%1×").arg(speed));
    speed_->setAccessibleName(tr("速度 %1 倍").arg(speed));
}

void PlaybackControls::setMoment(Moment moment) {
    const QString text = toLocalTime(moment).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    if (time_->text() != text)
        time_->setText(text);
}

void PlaybackControls::setSkipsGaps(bool skips) {
    buttons_[static_cast<int>(Action::SkipGaps)]->setChecked(skips);
}

QSize PlaybackControls::minimumSizeHint() const {
    int width = 0;
    for (int line = 0; line < lines_->count(); ++line)
        width = std::max(width, lines_->itemAt(line)->minimumSize().width());
    const QMargins margins = lines_->contentsMargins();
    return {width + margins.left() + margins.right(), lines_->minimumSize().height()};
}

void PlaybackControls::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    lines_->setDirection(width() < RoomForOneLine ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

/// A button that has the focus keeps the blank, which plays and pauses anywhere else.
bool PlaybackControls::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
        event->accept();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace corvanta::playback
