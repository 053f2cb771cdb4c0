#pragma once

#include <QImage>
#include <QPointF>
#include <QString>
#include <QVector>

#include <optional>

namespace corvanta::vision {

/// A printed chessboard.
struct BoardShape {
    int rowCorners = 0;      ///< inner corners in a row
    int columnCorners = 0;   ///< inner corners in a column
    double squareWidth = 0;  ///< mm, along a row
    double squareLength = 0; ///< mm, along a column
};

/// The inner corners of a chessboard, row by row, in pixels.
using BoardCorners = QVector<QPointF>;

/// Finds a board in a photo, its corners to a fraction of a pixel. None where the whole board is not seen. Any
/// thread.
std::optional<BoardCorners> findBoard(const QImage& photo, const BoardShape& shape);

/// A photo with the corners drawn into it, each row in its own colour and one joined to the next.
QImage drawBoard(const QImage& photo, const BoardShape& shape, const BoardCorners& corners);

struct Calibration {
    QString cameraMatrix;         ///< 3 x 3, see MatrixText.h
    QString distCoeffs;           ///< 1 x 5, likewise
    double reprojectionError = 0; ///< px, root mean square over all corners
};

/// The camera that has taken the photos in which these corners were found, all of one size in pixels. None where no
/// camera fits: too few photos, or such that do not tell. Takes seconds with many photos. Any thread.
std::optional<Calibration> calibrate(const QVector<BoardCorners>& photos, const BoardShape& shape, QSize size);

} // namespace corvanta::vision
