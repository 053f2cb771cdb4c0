#include "video/ui/ItemVideo.h"

#include "video/AvMessage.h"
#include "video/ui/GLYuvWidget.h"
#include "video/ui/TileMenu.h"
#include "video/ui/TileTextLine.h"

#include <QContextMenuEvent>
#include <QDebug>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QTime>

#include <algorithm>
#include <chrono>

using corvanta::video::AspectMode;
using corvanta::video::FrameBuffer;
using corvanta::video::FrameSize;

namespace {

constexpr std::chrono::seconds tick{1};
constexpr int openedTextSeconds = 3;
constexpr int stalledSeconds = 5;

constexpr int border = 1;              ///< pixels round the picture
constexpr int selectedEmptyBorder = 2; ///< pixels round an empty tile that is selected
constexpr int hintMargin = 4;
constexpr int hintPointSize = 9;
constexpr int smallestHintHeight = 64; ///< in a lower tile the hint gives way to the text line

const QColor emptyColor(174, 174, 174);
const QColor hintColor(80, 80, 80);
const QColor besidePictureColor(40, 40, 40);
const QColor besideHintColor(230, 230, 230);
const QColor stripColor(0, 0, 0, 130); ///< behind the hint over a preview

QString tileStyle(bool selected) {
    return selected
               ? QStringLiteral("QWidget {background-color:rgb(0,153,255);border:none;}")
               : QStringLiteral("QWidget {background-color:rgb(174,174,174);border:1px solid rgb(121,121,121);}");
}

} // namespace

ItemVideo::ItemVideo(int tileIndex, QWidget* parent, PictureBeat* beat)
    : QWidget(parent)
    , tileIndex_(tileIndex)
    , beat_(beat != nullptr ? beat : new PictureBeat(this))
    , textLine_(new TileTextLine(this))
    , recordMark_(new RecordMark(this)) {
    setObjectName(QStringLiteral("videoTile%1").arg(tileIndex));
    sayName();
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(1, 1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setStyleSheet(tileStyle(false));
    connect(this, &ItemVideo::sig_updateDisplay, this, &ItemVideo::updateDisplay);
    beat_->add(*this);
    connect(this, &ItemVideo::sigPictureWaiting, beat_, &PictureBeat::wake, Qt::QueuedConnection);
    connect(&timer_, &QTimer::timeout, this, &ItemVideo::OnTimeOut);
    timer_.setInterval(tick);
}

ItemVideo::~ItemVideo() {
    beat_->remove(*this);
}

void ItemVideo::sayName() {
    setAccessibleName(tr("视频窗口 %1").arg(tileIndex_ + 1));
}

void ItemVideo::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    sayName();
    menu_.reset(); // made again, in the new language, when it is wanted
    emit sig_updateDisplay();
}

void ItemVideo::setText(const QString& text) {
    // A stream that changes its pictures says once more that it is open; that is no news.
    const bool isRepeated = text == text_ && hasPicture();
    text_ = text;
    if (!isRepeated)
        secondsSinceText_ = 0;
    emit sig_updateDisplay();
}

void ItemVideo::setDeviceName(const QString& name) {
    deviceName_ = name;
    setAccessibleDescription(name);
    update();
}

void ItemVideo::setSelected(bool selected) {
    if (selected_ == selected) {
        return;
    }
    selected_ = selected;
    setStyleSheet(tileStyle(selected));
    emit sig_updateDisplay();
}

void ItemVideo::setAspectMode(AspectMode mode) {
    aspectMode_ = mode;
    if (menu_) {
        menu_->setAspectMode(mode);
    }
    placeRenderer();
}

void ItemVideo::attachStream(int requestId, const QVariantMap& parameters) {
    requestId_ = requestId;
    streamParameters_ = parameters;
    secondsSincePicture_ = 0;
    timer_.start();
    emit sig_updateDisplay();
}

void ItemVideo::setRecording(RecordMark::Kind kind, qint64 seconds) {
    if (recordMark_->show(kind, seconds))
        emit sig_updateDisplay();
}

void ItemVideo::setPreview(const QImage& picture) {
    preview_ = picture;
    previewTime_ = picture.isNull() ? QString() : QTime::currentTime().toString(QStringLiteral("hh:mm:ss"));
    emit sig_updateDisplay();
}

void ItemVideo::close() {
    timer_.stop();
    preview_ = {};
    requestId_ = 0;
    streamParameters_.clear();
    secondsSincePicture_ = 0;
    buffer_.release();
    frameSize_ = {};
    if (renderer_ != nullptr) {
        renderer_->clearFrame();
    }
    emit sig_updateDisplay();
}

bool ItemVideo::showFrame(const uchar* picture, uint width, uint height) {
    if (!shown_.load(std::memory_order_acquire)) {
        return false;
    }
    switch (buffer_.write(picture, {width, height})) {
    case FrameBuffer::WriteResult::Overwritten:
        overwritten_.fetch_add(1, std::memory_order_relaxed);
        break;
    case FrameBuffer::WriteResult::Written:
        break;
    case FrameBuffer::WriteResult::Refused:
    case FrameBuffer::WriteResult::NoMemory:
        qDebug("tile %d: a picture of %u x %u cannot be taken", tileIndex_, width, height);
        return false;
    }
    received_.fetch_add(1, std::memory_order_relaxed);
    // Looked at before it is written: while the beat goes on, its line stays in every core's cache.
    if (!awake_.load(std::memory_order_acquire) && !awake_.exchange(true, std::memory_order_acq_rel)) {
        emit sigPictureWaiting(QPrivateSignal());
    }
    return true;
}

bool ItemVideo::rest() {
    // First the flag, then the buffer: a picture that comes after this look finds the flag down and wakes again.
    awake_.exchange(false, std::memory_order_acq_rel);
    if (!takePicture()) {
        return true;
    }
    awake_.store(true, std::memory_order_release);
    return false;
}

bool ItemVideo::takePicture() {
    const auto picture = buffer_.take();
    if (!picture) {
        return false;
    }
    const FrameSize size = picture->size();
    const bool wasStalled = secondsSincePicture_ >= stalledSeconds;
    secondsSincePicture_ = 0;
    const bool sizeChanged = size != frameSize_;
    frameSize_ = size;
    preview_ = {};
    if (renderer_ == nullptr && GLYuvWidget::isSupported()) {
        createRenderer();
    }
    emit sigYuv(picture->data(), size.width, size.height);
    if (sizeChanged) {
        placeRenderer();
    }
    if (sizeChanged || wasStalled) {
        emit sig_updateDisplay();
    }
    return true;
}

ItemVideo::Counters ItemVideo::counters() const {
    const std::uint32_t painted = renderer_ == nullptr ? 0 : renderer_->paintedPictures();
    const std::uint32_t collapsed = renderer_ == nullptr ? 0 : renderer_->collapsedPictures();
    return {received_.load(std::memory_order_relaxed), overwritten_.load(std::memory_order_relaxed) + collapsed,
            painted};
}

void ItemVideo::createRenderer() {
    renderer_ = std::make_unique<GLYuvWidget>(drawnByWall_ ? nullptr : this);
    renderer_->setAttribute(Qt::WA_TransparentForMouseEvents);
    renderer_->setFocusPolicy(Qt::NoFocus);
    renderer_->hide();
    connect(this, &ItemVideo::sigYuv, renderer_.get(), &GLYuvWidget::slotShowYuv);
}

void ItemVideo::setDrawnByWall(bool byWall) {
    drawnByWall_ = byWall;
    updateDisplay();
}

QRect ItemVideo::picturePlace() const {
    return hasPicture() && renderer_ != nullptr ? picturePlace_ : QRect();
}

QRegion ItemVideo::overPicture() const {
    QRegion covered;
    if (textLine_->isVisible())
        covered += textLine_->geometry();
    if (recordMark_->isVisible())
        covered += recordMark_->geometry();
    return covered;
}

void ItemVideo::placeRenderer() {
    if (renderer_ == nullptr) {
        return;
    }
    if (const auto place = corvanta::video::placeRenderer(aspectMode_, size(), frameSize_)) {
        picturePlace_ = *place;
        renderer_->setGeometry(picturePlace_);
    }
    update();
}

QString ItemVideo::shownText() const {
    if (hasPicture() && renderer_ == nullptr) {
        return tr("无法显示画面");
    }
    if (text_ != corvanta::video::openedText()) {
        return corvanta::video::shownText(text_);
    }
    if (secondsSincePicture_ >= stalledSeconds) {
        return hasPicture() ? tr("画面停顿") : tr("等待画面");
    }
    return secondsSinceText_ < openedTextSeconds ? corvanta::video::shownText(text_) : QString();
}

void ItemVideo::updateDisplay() {
    if (renderer_ != nullptr) {
        renderer_->setVisible(hasPicture() && !drawnByWall_);
    }
    const QRect inside = rect().adjusted(border, border, -border, -border);
    textLine_->showIn(inside, shownText());
    recordMark_->placeIn(inside);
    update();
}

void ItemVideo::OnTimeOut() {
    const QString before = shownText();
    ++secondsSinceText_;
    // Nothing comes while the tile is hidden, and that says nothing about the stream.
    if (isVisible()) {
        ++secondsSincePicture_;
    }
    if (shownText() != before) {
        emit sig_updateDisplay();
    }
}

TileMenu& ItemVideo::menu() {
    if (!menu_) {
        menu_ = std::make_unique<TileMenu>();
        menu_->setAspectMode(aspectMode_);
        connect(menu_.get(), &QMenu::triggered, this, &ItemVideo::onPopMenuTriggered);
    }
    return *menu_;
}

void ItemVideo::onPopMenuTriggered(QAction* action) {
    const auto chosen = TileMenu::actionOf(action);
    if (!chosen) {
        return;
    }
    switch (*chosen) {
    case TileAction::Stretch:
        setAspectMode(AspectMode::Stretch);
        break;
    case TileAction::KeepRatio:
        setAspectMode(AspectMode::KeepRatio);
        break;
    default:
        emit sigMenuAction(tileIndex_, *chosen);
    }
}

void ItemVideo::showEvent(QShowEvent* event) {
    secondsSincePicture_ = 0;
    shown_.store(true, std::memory_order_release);
    QWidget::showEvent(event);
}

void ItemVideo::hideEvent(QHideEvent* event) {
    shown_.store(false, std::memory_order_release);
    QWidget::hideEvent(event);
}

void ItemVideo::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    placeRenderer();
    emit sig_updateDisplay();
}

void ItemVideo::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);

    const int line = selected_ && !hasPicture() ? selectedEmptyBorder : border;
    const QRect inside = rect().adjusted(line, line, -line, -line);
    const bool isDark = hasPicture() || hasPreview();
    painter.fillRect(inside, isDark ? besidePictureColor : emptyColor);
    if (hasPicture()) {
        return;
    }
    if (hasPreview()) {
        paintPreview(painter);
    }
    paintHint(painter, inside);
}

void ItemVideo::paintPreview(QPainter& painter) const {
    const FrameSize size{static_cast<unsigned>(preview_.width()), static_cast<unsigned>(preview_.height())};
    const auto place = corvanta::video::placeRenderer(aspectMode_, this->size(), size);
    if (!place) {
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(*place, preview_);
    const QFontMetrics metrics = painter.fontMetrics();
    const int strip = metrics.height() + 2 * hintMargin;
    painter.fillRect(QRect(place->left(), place->top(), place->width(), strip), stripColor);
}

void ItemVideo::paintHint(QPainter& painter, const QRect& area) const {
    if (area.height() < smallestHintHeight && textLine_->isVisible()) {
        return;
    }
    QFont font = painter.font();
    font.setPointSize(hintPointSize);
    painter.setFont(font);
    painter.setPen(hasPreview() ? besideHintColor : hintColor);
    const QRect room = area.adjusted(hintMargin, hintMargin, -hintMargin, -hintMargin);
    const QString number = QString::number(tileIndex_ + 1);
    QString hint = deviceName_.isEmpty() ? number : number + QStringLiteral("  ") + deviceName_;
    if (hasPreview()) {
        hint = previewTime_ + QStringLiteral("  ") + hint;
    }
    painter.drawText(room, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(hint, Qt::ElideRight, std::max(0, room.width())));
}

void ItemVideo::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    emit sig_setfocus(tileIndex_);
}

void ItemVideo::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        emit sigDoubleClick();
    }
}

void ItemVideo::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    emit sigMenuAboutToShow(tileIndex_);
    menu().popup(byKey ? mapToGlobal(rect().center()) : event->globalPos());
}

void ItemVideo::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit sigOpenWanted(tileIndex_);
        break;
    case Qt::Key_Delete:
        emit sigStopWanted(tileIndex_);
        break;
    case Qt::Key_Space:
        emit sigDoubleClick();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void ItemVideo::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (!selected_ && (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)) {
        emit sig_setfocus(tileIndex_);
    }
}
