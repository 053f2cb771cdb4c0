#include "base/ui/WaitOverlay.h"

#include "base/ui/Theme.h"
#include "base/ui/Worded.h"

#include <QPainter>

namespace theme = corvanta::theme;

WaitOverlay::WaitOverlay(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("waitOverlay"));
    corvanta::wordedName(this, [] { return tr("请稍候"); });
    hide();
    constexpr int TurnInterval = 40; // ms
    turn_.setInterval(TurnInterval);
    connect(&turn_, &QTimer::timeout, this, [this] {
        angle_ = (angle_ + 12) % 360;
        update();
    });
    limit_.setSingleShot(true);
    connect(&limit_, &QTimer::timeout, this, &QWidget::hide);
}

void WaitOverlay::start(const QRect& area, int milliseconds) {
    setGeometry(area.isEmpty() ? parentWidget()->rect() : area.intersected(parentWidget()->rect()));
    raise();
    show();
    turn_.start();
    if (milliseconds > 0)
        limit_.start(milliseconds);
    else
        limit_.stop();
}

void WaitOverlay::hideEvent(QHideEvent*) {
    turn_.stop();
    limit_.stop();
}

void WaitOverlay::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(0, 0, 0, 96));
    painter.setRenderHint(QPainter::Antialiasing);
    constexpr int Radius = 20;
    const QRect ring(rect().center() - QPoint(Radius, Radius), QSize(2 * Radius, 2 * Radius));
    painter.setPen(QPen(theme::Selection, 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(ring, -angle_ * 16, 100 * 16);
}
