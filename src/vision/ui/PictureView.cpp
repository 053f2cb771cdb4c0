#include "vision/ui/PictureView.h"

#include "base/ui/Theme.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace corvanta::vision {
namespace {
const QSize Smallest(224, 126); // px
const QSize Usual(480, 270);    // px
constexpr double Cross = 6;     // px of the screen, half of a mark's cross
} // namespace

PictureView::PictureView(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("capturedPicture"));
    setAccessibleName(tr("照片"));
    setMinimumSize(Smallest);
}

QSize PictureView::sizeHint() const {
    return Usual;
}

void PictureView::setPicture(const QImage& picture, const QVector<Mark>& marks) {
    picture_ = picture;
    scaled_ = QPixmap();
    setMarks(marks);
}

void PictureView::setMarks(const QVector<Mark>& marks) {
    marks_ = marks;
    update();
}

void PictureView::setHint(const QString& text) {
    hint_ = text;
    update();
}

void PictureView::setChoosing(bool isChoosing) {
    isChoosing_ = isChoosing;
    setCursor(isChoosing ? Qt::CrossCursor : Qt::ArrowCursor);
}

double PictureView::zoom() const {
    return std::min(width() / std::max(1.0, static_cast<double>(picture_.width())),
                    height() / std::max(1.0, static_cast<double>(picture_.height())));
}

QRectF PictureView::place() const {
    if (picture_.isNull())
        return {};
    const QSizeF size = QSizeF(picture_.size()) * zoom();
    return {(width() - size.width()) / 2, (height() - size.height()) / 2, size.width(), size.height()};
}

void PictureView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), theme::Tile);
    if (picture_.isNull()) {
        painter.setPen(theme::TextOnLight);
        painter.drawText(rect().adjusted(theme::Step, 0, -theme::Step, 0), Qt::AlignCenter | Qt::TextWordWrap, hint_);
        return;
    }
    const QRectF target = place();
    const QSize pixels = (target.size() * devicePixelRatioF()).toSize();
    if (scaled_.size() != pixels)
        scaled_ = QPixmap::fromImage(picture_.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    painter.drawPixmap(target, scaled_, scaled_.rect());
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Mark& mark : marks_)
        paintMark(painter, mark);
}

void PictureView::paintMark(QPainter& painter, const Mark& mark) const {
    const QPointF at = place().topLeft() + mark.place * zoom();
    const double radius = mark.radius * zoom();
    // Dark below light, so that it is seen on every picture.
    for (const auto& [colour, width] : {std::pair(QColor(0, 0, 0, 160), 4.0), std::pair(theme::Selection, 2.0)}) {
        painter.setPen(QPen(colour, width));
        painter.drawLine(at - QPointF(Cross, 0), at + QPointF(Cross, 0));
        painter.drawLine(at - QPointF(0, Cross), at + QPointF(0, Cross));
        if (radius > 0)
            painter.drawEllipse(at, std::max(radius, Cross), std::max(radius, Cross));
    }
    if (mark.label.isEmpty())
        return;
    QRectF box = painter.boundingRect(QRectF(), Qt::TextSingleLine, mark.label).adjusted(-4, -2, 4, 2);
    box.moveTopLeft(at + QPointF(Cross, Cross));
    box.moveLeft(std::min(box.left(), width() - box.width()));
    box.moveTop(std::min(box.top(), height() - box.height()));
    painter.fillRect(box, QColor(0, 0, 0, 160));
    painter.setPen(Qt::white);
    painter.drawText(box, Qt::AlignCenter | Qt::TextSingleLine, mark.label);
}

void PictureView::mousePressEvent(QMouseEvent* event) {
    if (isChoosing_ && event->button() == Qt::LeftButton && place().contains(event->localPos()))
        emit sigPointChosen((event->localPos() - place().topLeft()) / zoom());
    else
        QWidget::mousePressEvent(event);
}

} // namespace corvanta::vision
