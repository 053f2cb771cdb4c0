#include "video/ui/TileTextLine.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int padding = 4; ///< pixels between plate and letters
constexpr int smallestPointSize = 7;
constexpr int largestShareOfHeight = 3; ///< the letters take at most a third of the tile
constexpr int plateAlpha = 150;
constexpr qreal plateRadius = 4.0;

} // namespace

TileTextLine::TileTextLine(QWidget* parent)
    : QLabel(parent) {
    setObjectName(QStringLiteral("tileText"));
    setTextFormat(Qt::PlainText);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    // The tile's style reaches its children too; only the plate is to be painted.
    setAttribute(Qt::WA_NoSystemBackground);
    setStyleSheet(QStringLiteral("QWidget {color:rgb(230,230,230);border:0px;font: 75 16pt '微软雅黑';}"));
    hide();
}

void TileTextLine::showIn(const QRect& area, const QString& line) {
    setText(line);
    setAccessibleName(line);
    if (line.isEmpty() || area.width() <= 2 * padding || area.height() <= 2 * padding) {
        hide();
        return;
    }
    ensurePolished();
    fittedFont_ = font();
    const auto fits = [&](const QFontMetrics& metrics) {
        return metrics.horizontalAdvance(line) <= area.width() - 2 * padding &&
               metrics.height() <= area.height() / largestShareOfHeight;
    };
    while (fittedFont_.pointSize() > smallestPointSize && !fits(QFontMetrics(fittedFont_))) {
        fittedFont_.setPointSize(fittedFont_.pointSize() - 1);
    }
    const QFontMetrics metrics(fittedFont_);
    fittedText_ = metrics.elidedText(line, Qt::ElideRight, area.width() - 2 * padding);
    const QSize plate(std::min(area.width(), metrics.horizontalAdvance(fittedText_) + 2 * padding),
                      std::min(area.height(), metrics.height() + 2 * padding));
    QRect place(QPoint(0, 0), plate);
    place.moveCenter(area.center());
    setGeometry(place);
    show();
    raise();
    update();
}

void TileTextLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, plateAlpha));
    painter.drawRoundedRect(rect(), plateRadius, plateRadius);
    painter.setPen(palette().color(foregroundRole()));
    painter.setFont(fittedFont_);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, fittedText_);
}
