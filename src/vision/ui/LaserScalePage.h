#pragma once

#include "vision/LaserInfo.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace corvanta::vision {

/// How pixels become millimetres: by a scale, or by four points whose places are known. Points are typed, or chosen
/// in the captured picture one after the other.
class LaserScalePage final : public QWidget {
    Q_OBJECT
public:
    LaserScalePage(const LaserInfo& info, QWidget* parent);

    bool isByPoints() const;
    /// Puts what was entered into `info`: mode, scale and points.
    void enterInto(LaserInfo& info) const;
    /// The points that have a place in the picture, by number from 1; NaN for the others.
    QVector<QPointF> pixels() const;
    /// A place chosen in the picture: that of the current row, which goes on to the next.
    void choose(const QPointF& pixel);
    void setBusy(bool isBusy);

signals:
    void sigEdited();
    void sigCapture();

private:
    enum Column { PixelX, PixelY, PlaceX, PlaceY };

    void makeTable(const QVector<ScalePoint>& points);
    QString cell(int row, Column column) const;
    void showMode();

    QComboBox* mode_;
    QLineEdit* scale_;
    QTableWidget* points_;
    QLabel* hint_;
    QPushButton* capture_;
};

} // namespace corvanta::vision
