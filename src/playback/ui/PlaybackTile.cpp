#include "playback/ui/PlaybackTile.h"

#include "base/ui/Theme.h"
#include "base/ui/Worded.h"
#include "video/Placement.h"
#include "video/ui/GLYuvWidget.h"

#include <QDateTime>
#include <QMouseEvent>
#include <QPainter>

namespace corvanta::playback {

namespace {

constexpr int StripHeight = 6 * theme::Step;

} // namespace

PlaybackTile::PlaybackTile(int number, const QString& name, QWidget* parent)
    : QWidget(parent)
    , number_(number)
    , name_(name) {
    setObjectName(QStringLiteral("playbackTile%1").arg(number));
    corvanta::worded(this, [this] { describe(); });
}

PlaybackTile::~PlaybackTile() = default;

void PlaybackTile::show(const PlaybackSession::View& view) {
    using State = CameraPlayer::Report::State;
    view_ = view;
    text_ = view.state == State::Gap      ? (reason_.isEmpty() ? QT_TR_NOOP("此时没有录像") : nullptr)
            : view.state == State::Broken ? QT_TR_NOOP("录像文件无法读取")
                                          : "";
    if (view.picture != nullptr && GLYuvWidget::isSupported()) {
        if (renderer_ == nullptr)
            renderer_ = std::make_unique<GLYuvWidget>();
        // The renderer copies what it is handed; its slot's type is that of the live pictures' signal.
        renderer_->slotShowYuv(const_cast<uchar*>(view.picture->bytes.data()), view.picture->size.width,
                               view.picture->size.height);
    } else if (view.picture != nullptr) {
        text_ = QT_TR_NOOP("无法显示画面");
    }
    describe();
    update();
}

void PlaybackTile::setReason(const QString& reason) {
    reason_ = reason;
    if (view_.picture == nullptr)
        text_ = nullptr;
    describe();
    update();
}

QString PlaybackTile::text() const {
    return text_ == nullptr ? reason_ : *text_ == '\0' ? QString() : tr(text_);
}

void PlaybackTile::describe() {
    const QString text = this->text();
    setAccessibleName(text.isEmpty() ? tr("回放：%1").arg(name_) : tr("回放：%1，%2").arg(name_, text));
}

void PlaybackTile::setSelected(bool selected) {
    selected_ = selected;
    update();
}

QRect PlaybackTile::picturePlace() const {
    if (view_.picture == nullptr || renderer_ == nullptr)
        return {};
    const auto place =
        video::placeRenderer(video::AspectMode::KeepRatio, size() - QSize(0, StripHeight), view_.picture->size);
    return place ? place->translated(0, StripHeight) : QRect();
}

void PlaybackTile::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), theme::Tile);
    painter.fillRect(0, 0, width(), StripHeight, theme::Bar);
    painter.setPen(selected_ ? theme::Selection : theme::TileLine);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (selected_)
        painter.fillRect(0, 0, theme::Step, StripHeight, theme::Selection);

    QString time;
    if (view_.picture != nullptr) {
        time = toLocalTime(view_.moment).toString(QStringLiteral("MM-dd hh:mm:ss"));
        if (view_.keyFramesOnly)
            time = tr("仅关键帧") + QStringLiteral("  ") + time;
    }
    const QRect strip = QRect(0, 0, width(), StripHeight).adjusted(3 * theme::Step, 0, -2 * theme::Step, 0);
    painter.setPen(theme::FaintOnDark);
    painter.drawText(strip, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, time);
    painter.setPen(theme::TextOnDark);
    const int room = strip.width() - fontMetrics().horizontalAdvance(time) - 2 * theme::Step;
    painter.drawText(strip, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(name_, Qt::ElideRight, room));
    if (const QString text = this->text(); !text.isEmpty()) {
        painter.setPen(theme::Panel);
        painter.drawText(rect().adjusted(theme::Step, StripHeight, -theme::Step, 0),
                         Qt::AlignCenter | Qt::TextWordWrap, text);
    }
}

void PlaybackTile::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        emit sigPressed(number_);
}

void PlaybackTile::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        emit sigDoubleClicked(number_);
}

} // namespace corvanta::playback
