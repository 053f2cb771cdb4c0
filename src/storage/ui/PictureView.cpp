#include "storage/ui/PictureView.h"

#include "base/ui/Theme.h"
#include "base/ui/Worded.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace theme = corvanta::theme;

namespace {
constexpr double LargestFactor = 16;
constexpr double SmallestFactor = 1.0 / 16;
} // namespace

PictureView::PictureView(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("pictureView"));
    corvanta::wordedName(this, [] { return tr("图片"); });
    setFocusPolicy(Qt::StrongFocus);
}

void PictureView::show(const QImage& image, const QString& text) {
    const bool isOther = image.size() != image_.size();
    image_ = image;
    text_ = text;
    setAccessibleDescription(text);
    if (isOther) // pictures of one camera are compared at the same place
        middle_ = QPointF(image_.width() / 2.0, image_.height() / 2.0);
    keepInside();
    update();
    emit sigZoomed();
}

double PictureView::fittingFactor() const {
    if (image_.isNull())
        return 1;
    return std::min({1.0, double(width()) / image_.width(), double(height()) / image_.height()});
}

double PictureView::factor() const {
    return fits() ? fittingFactor() : factor_;
}

void PictureView::setFactor(double factor) {
    factor_ = factor;
    keepInside();
    update();
    emit sigZoomed();
}

void PictureView::fit() {
    setFactor(0);
}

void PictureView::showOriginal() {
    setFactor(1);
}

void PictureView::zoom(double by) {
    if (!image_.isNull())
        setFactor(std::clamp(factor() * by, SmallestFactor, LargestFactor));
}

void PictureView::keepInside() {
    const double scale = factor();
    const auto inside = [scale](double middle, int picture, int view) {
        const double half = view / scale / 2;
        return picture <= 2 * half ? picture / 2.0 : std::clamp(middle, half, picture - half);
    };
    middle_ = QPointF(inside(middle_.x(), image_.width(), width()), inside(middle_.y(), image_.height(), height()));
}

QSize PictureView::minimumSizeHint() const {
    return {240, 135};
}

void PictureView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), theme::Bar);
    if (image_.isNull()) {
        painter.setPen(theme::FaintOnDark);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, text_);
        return;
    }
    const double scale = factor();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, scale < 2); // larger: pixels are looked at
    painter.translate(QRectF(rect()).center());
    painter.scale(scale, scale);
    painter.drawImage(-middle_, image_);
}

void PictureView::mousePressEvent(QMouseEvent* event) {
    grip_ = event->pos();
}

void PictureView::mouseMoveEvent(QMouseEvent* event) {
    if (!event->buttons().testFlag(Qt::LeftButton))
        return;
    middle_ -= QPointF(event->pos() - grip_) / factor();
    grip_ = event->pos();
    keepInside();
    update();
}

void PictureView::mouseDoubleClickEvent(QMouseEvent*) {
    if (fits())
        showOriginal();
    else
        fit();
}

void PictureView::wheelEvent(QWheelEvent* event) {
    constexpr double Notch = 1.25;
    zoom(event->angleDelta().y() > 0 ? Notch : 1 / Notch);
    event->accept();
}

void PictureView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    keepInside();
    emit sigZoomed();
}
