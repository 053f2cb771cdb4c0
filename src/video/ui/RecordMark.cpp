#include "video/ui/RecordMark.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int padding = 4;
constexpr int margin = 4; ///< from the corner
constexpr int dot = 8;    ///< diameter
constexpr int plateAlpha = 150;
constexpr qreal plateRadius = 4.0;
const QColor recordingColor(229, 57, 53);
const QColor waitingColor(255, 179, 0);
const QColor textColor(230, 230, 230);

QString clockText(qint64 seconds) {
    constexpr int minute = 60;
    constexpr int hour = 3600;
    const auto twoDigits = [](qint64 number) {
        return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
    };
    return twoDigits(seconds / hour) + QLatin1Char(':') + twoDigits(seconds % hour / minute) + QLatin1Char(':') +
           twoDigits(seconds % minute);
}

} // namespace

RecordMark::RecordMark(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("tileRecordMark"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setStyleSheet(QStringLiteral("QWidget {border:0px;}"));
    QFont small = font();
    constexpr int pointSize = 9;
    small.setPointSize(pointSize);
    setFont(small);
    hide();
}

QSize RecordMark::wanted() const {
    const QFontMetrics metrics(font());
    const int text = time_.isEmpty() ? 0 : metrics.horizontalAdvance(time_) + padding;
    return {dot + text + 2 * padding, std::max(dot, metrics.height()) + padding};
}

bool RecordMark::show(Kind kind, qint64 seconds) {
    const QRect before = isVisible() ? geometry() : QRect();
    kind_ = kind;
    time_ = seconds < 0 ? QString() : clockText(seconds);
    sayName();
    placeIn(area_);
    update();
    return before != (isVisible() ? geometry() : QRect());
}

void RecordMark::sayName() {
    setAccessibleName(kind_ == Kind::None        ? QString()
                      : kind_ == Kind::Recording ? tr("正在录像 %1").arg(time_)
                                                 : tr("等待录像"));
}

void RecordMark::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        sayName();
}

void RecordMark::placeIn(const QRect& area) {
    area_ = area;
    QSize size = wanted();
    if (size.width() > area.width() - 2 * margin)
        size.setWidth(dot + 2 * padding); // the dot alone
    if (kind_ == Kind::None || size.width() > area.width() || size.height() > area.height()) {
        hide();
        return;
    }
    setGeometry(area.right() - margin - size.width() + 1, area.bottom() - margin - size.height() + 1, size.width(),
                size.height());
    QWidget::show();
    raise();
}

void RecordMark::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, plateAlpha));
    painter.drawRoundedRect(rect(), plateRadius, plateRadius);
    const QRectF circle(padding, (height() - dot) / 2.0, dot, dot);
    if (kind_ == Kind::Recording) {
        painter.setBrush(recordingColor);
        painter.drawEllipse(circle);
    } else {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(waitingColor, 2));
        painter.drawEllipse(circle.adjusted(1, 1, -1, -1));
    }
    if (width() > dot + 2 * padding) {
        painter.setPen(textColor);
        painter.drawText(rect().adjusted(2 * padding + dot, 0, -padding, 0), Qt::AlignVCenter | Qt::AlignLeft, time_);
    }
}
