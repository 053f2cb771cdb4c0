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

#include <algorithm>
#include <chrono>

using corvanta::video::AspectMode;
using corvanta::video::FrameMailbox;

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

QString tileStyle(bool selected) {
    return selected
               ? QStringLiteral("QWidget {background-color:rgb(0,153,255);border:none;}")
               : QStringLiteral("QWidget {background-color:rgb(174,174,174);border:1px solid rgb(121,121,121);}");
}

} // namespace

ItemVideo::ItemVideo(int tileIndex, QWidget* parent)
    : QWidget(parent)
    , m_tileIndex(tileIndex)
    , m_textLine(new TileTextLine(this)) {
    setObjectName(QStringLiteral("videoTile%1").arg(tileIndex));
    setAccessibleName(tr("视频窗口 %1").arg(tileIndex + 1));
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(1, 1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setStyleSheet(tileStyle(false));
    connect(this, &ItemVideo::sig_updateDisplay, this, &ItemVideo::updateDisplay);
    connect(this, &ItemVideo::sigPictureWaiting, this, &ItemVideo::takeFrame, Qt::QueuedConnection);
    connect(&m_timer, &QTimer::timeout, this, &ItemVideo::OnTimeOut);
    m_timer.setInterval(tick);
}

ItemVideo::~ItemVideo() = default;

void ItemVideo::setText(const QString& text) {
    m_text = text;
    m_secondsSinceText = 0;
    emit sig_updateDisplay();
}

void ItemVideo::setDeviceName(const QString& name) {
    m_deviceName = name;
    setAccessibleDescription(name);
    update();
}

void ItemVideo::setSelected(bool selected) {
    if (m_selected == selected) {
        return;
    }
    m_selected = selected;
    setStyleSheet(tileStyle(selected));
    emit sig_updateDisplay();
}

void ItemVideo::setAspectMode(AspectMode mode) {
    m_aspectMode = mode;
    if (m_menu) {
        m_menu->setAspectMode(mode);
    }
    placeRenderer();
}

void ItemVideo::attachStream(int requestId, const QVariantMap& parameters) {
    m_requestId = requestId;
    m_streamParameters = parameters;
    m_secondsSincePicture = 0;
    m_timer.start();
    emit sig_updateDisplay();
}

void ItemVideo::close() {
    m_timer.stop();
    m_requestId = 0;
    m_streamParameters.clear();
    m_secondsSincePicture = 0;
    m_mailbox.release();
    m_frameSize = {};
    if (m_renderer != nullptr) {
        m_renderer->clearFrame();
    }
    emit sig_updateDisplay();
}

bool ItemVideo::showFrame(const uchar* picture, uint width, uint height) {
    if (!m_shown.load(std::memory_order_acquire)) {
        return false;
    }
    switch (m_mailbox.write(picture, {width, height})) {
    case FrameMailbox::WriteResult::Written:
        wakeGuiThread();
        return true;
    case FrameMailbox::WriteResult::Refused:
    case FrameMailbox::WriteResult::NoMemory:
        qDebug("tile %d: a picture of %u x %u cannot be taken", m_tileIndex, width, height);
        return false;
    case FrameMailbox::WriteResult::Busy:
        break;
    }
    return false;
}

void ItemVideo::wakeGuiThread() {
    if (!m_wakePending.exchange(true, std::memory_order_acq_rel)) {
        emit sigPictureWaiting(QPrivateSignal());
    }
}

void ItemVideo::takeFrame() {
    // First the flag, then the mailbox: a picture written after this look finds the flag down and wakes again.
    m_wakePending.exchange(false, std::memory_order_acq_rel);
    const auto frame = m_mailbox.take();
    if (!frame) {
        return;
    }
    const bool wasStalled = m_secondsSincePicture >= stalledSeconds;
    m_secondsSincePicture = 0;
    const bool sizeChanged = frame->size != m_frameSize;
    m_frameSize = frame->size;
    if (m_renderer == nullptr && GLYuvWidget::isSupported()) {
        createRenderer();
    }
    emit sigYuv(frame->data, frame->size.width, frame->size.height);
    if (sizeChanged) {
        placeRenderer();
    }
    if (sizeChanged || wasStalled) {
        emit sig_updateDisplay();
    }
}

void ItemVideo::createRenderer() {
    m_renderer = new GLYuvWidget(this);
    m_renderer->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_renderer->setFocusPolicy(Qt::NoFocus);
    m_renderer->hide();
    connect(this, &ItemVideo::sigYuv, m_renderer, &GLYuvWidget::slotShowYuv);
}

void ItemVideo::placeRenderer() {
    if (m_renderer == nullptr) {
        return;
    }
    if (const auto place = corvanta::video::placeRenderer(m_aspectMode, size(), m_frameSize)) {
        m_renderer->setGeometry(*place);
    }
    update();
}

QString ItemVideo::shownText() const {
    if (hasPicture() && m_renderer == nullptr) {
        return tr("无法显示画面");
    }
    if (m_text != corvanta::video::openedText()) {
        return m_text;
    }
    if (m_secondsSincePicture >= stalledSeconds) {
        return hasPicture() ? tr("画面停顿") : tr("等待画面");
    }
    return m_secondsSinceText < openedTextSeconds ? m_text : QString();
}

void ItemVideo::updateDisplay() {
    if (m_renderer != nullptr) {
        m_renderer->setVisible(hasPicture());
    }
    m_textLine->showIn(rect().adjusted(border, border, -border, -border), shownText());
    update();
}

void ItemVideo::OnTimeOut() {
    const QString before = shownText();
    ++m_secondsSinceText;
    // Nothing comes while the tile is hidden, and that says nothing about the stream.
    if (isVisible()) {
        ++m_secondsSincePicture;
    }
    if (shownText() != before) {
        emit sig_updateDisplay();
    }
}

TileMenu& ItemVideo::menu() {
    if (!m_menu) {
        m_menu = std::make_unique<TileMenu>();
        m_menu->setAspectMode(m_aspectMode);
        connect(m_menu.get(), &QMenu::triggered, this, &ItemVideo::onPopMenuTriggered);
    }
    return *m_menu;
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
        emit sigMenuAction(m_tileIndex, *chosen);
    }
}

void ItemVideo::showEvent(QShowEvent* event) {
    m_secondsSincePicture = 0;
    m_shown.store(true, std::memory_order_release);
    QWidget::showEvent(event);
}

void ItemVideo::hideEvent(QHideEvent* event) {
    m_shown.store(false, std::memory_order_release);
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

    const int line = m_selected && !hasPicture() ? selectedEmptyBorder : border;
    const QRect inside = rect().adjusted(line, line, -line, -line);
    painter.fillRect(inside, hasPicture() ? besidePictureColor : emptyColor);
    if (!hasPicture()) {
        paintHint(painter, inside);
    }
}

void ItemVideo::paintHint(QPainter& painter, const QRect& area) const {
    if (area.height() < smallestHintHeight && m_textLine->isVisible()) {
        return;
    }
    QFont font = painter.font();
    font.setPointSize(hintPointSize);
    painter.setFont(font);
    painter.setPen(hintColor);
    const QRect room = area.adjusted(hintMargin, hintMargin, -hintMargin, -hintMargin);
    const QString number = QString::number(m_tileIndex + 1);
    const QString hint = m_deviceName.isEmpty() ? number : number + QStringLiteral("  ") + m_deviceName;
    painter.drawText(room, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(hint, Qt::ElideRight, std::max(0, room.width())));
}

void ItemVideo::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    emit sig_setfocus(m_tileIndex);
}

void ItemVideo::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        emit sigDoubleClick();
    }
}

void ItemVideo::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    menu().popup(byKey ? mapToGlobal(rect().center()) : event->globalPos());
}

void ItemVideo::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit sigDoubleClick();
        break;
    case Qt::Key_Space:
        emit sig_setfocus(m_tileIndex);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void ItemVideo::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (!m_selected && (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)) {
        emit sig_setfocus(m_tileIndex);
    }
}
