#pragma once

#include <QImage>
#include <QPixmap>
#include <QPointF>
#include <QString>
#include <QVector>
#include <QWidget>

namespace corvanta::vision {

/// A captured picture, fitted into the widget, with marks drawn over it. Points of it can be chosen by the mouse. GUI
/// thread.
class PictureView final : public QWidget {
    Q_OBJECT
public:
    struct Mark {
        QPointF place;     ///< px of the picture, in which its upper-left pixel covers 0 to 1
        QString label;     ///< beside it; may be empty
        double radius = 0; ///< px of the picture, of a circle round it; 0: none
    };

    explicit PictureView(QWidget* parent);

    /// A null one shows the hint instead. Marks go with the picture that they were made for.
    void setPicture(const QImage& picture, const QVector<Mark>& marks = {});
    void setMarks(const QVector<Mark>& marks);
    const QImage& picture() const { return picture_; }
    /// What is to be read without a picture.
    void setHint(const QString& text);
    /// Whether a click chooses a point.
    void setChoosing(bool isChoosing);

    QSize sizeHint() const override;

signals:
    /// In px of the picture, as `Mark::place`.
    void sigPointChosen(QPointF place);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    /// Where the picture is painted; empty without one.
    QRectF place() const;
    double zoom() const;
    void paintMark(QPainter& painter, const Mark& mark) const;

    QImage picture_;
    QPixmap scaled_; ///< the picture in the size in which it was painted last
    QVector<Mark> marks_;
    QString hint_;
    bool isChoosing_ = false;
};

} // namespace corvanta::vision
