#pragma once

#include <QImage>
#include <QWidget>

/// Shows one picture: as large as the view, or by a factor, then moved by mouse and scrolled by keys.
class PictureView final : public QWidget {
    Q_OBJECT
public:
    explicit PictureView(QWidget* parent = nullptr);

    /// A null image shows `text` instead.
    void show(const QImage& image, const QString& text);
    using QWidget::show;
    bool fits() const { return factor_ == 0; }
    /// Whole in the view, never larger than it is.
    void fit();
    /// Pixel for pixel.
    void showOriginal();
    void zoom(double by);
    /// Pixels on the screen for one of the picture.
    double factor() const;
    const QImage& image() const { return image_; }

    QSize minimumSizeHint() const override;

signals:
    void sigZoomed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    double fittingFactor() const;
    void setFactor(double factor);
    void keepInside();

    QImage image_;
    QString text_;
    double factor_ = 0; ///< 0: it fits
    QPointF middle_;    ///< the point of the picture in the view's middle, px of the picture
    QPoint grip_;
};
