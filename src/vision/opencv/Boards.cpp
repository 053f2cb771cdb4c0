#include "vision/opencv/Boards.h"

#include "vision/MatrixText.h"
#include "vision/opencv/Grey.h"

#include <QDebug>

#include <opencv2/calib3d.hpp>
#include <opencv2/imgproc.hpp>

#include <cfloat>
#include <vector>

namespace corvanta::vision::opencv {

namespace {

const cv::Size Refined(5, 5);   // px, the region in which a corner is refined
constexpr int Iterations = 30;  // of the calibration, at most
constexpr int SmallestSide = 3; // corners, of a board that can be found

/// The corners on the board itself, mm; row by row as they are found.
std::vector<cv::Point3f> boardPoints(const BoardShape& shape) {
    std::vector<cv::Point3f> points;
    for (int row = 0; row < shape.columnCorners; ++row) {
        for (int column = 0; column < shape.rowCorners; ++column)
            points.emplace_back(static_cast<float>(column * shape.squareWidth),
                                static_cast<float>(row * shape.squareLength), 0.0F);
    }
    return points;
}

std::vector<cv::Point2f> toPoints(const BoardCorners& corners) {
    std::vector<cv::Point2f> points;
    points.reserve(static_cast<std::size_t>(corners.size()));
    for (const QPointF& corner : corners)
        points.emplace_back(static_cast<float>(corner.x()), static_cast<float>(corner.y()));
    return points;
}

QString textOf(const cv::Mat& matrix) {
    return matrixText({matrix.rows, matrix.cols, {matrix.begin<double>(), matrix.end<double>()}});
}

} // namespace

std::optional<BoardCorners> findBoard(const QImage& photo, const BoardShape& shape) {
    if (photo.isNull() || shape.rowCorners < SmallestSide || shape.columnCorners < SmallestSide)
        return std::nullopt;
    const cv::Mat grey = greyOf(photo);
    std::vector<cv::Point2f> corners;
    try {
        const int flags = cv::CALIB_CB_ADAPTIVE_THRESH | cv::CALIB_CB_NORMALIZE_IMAGE | cv::CALIB_CB_FILTER_QUADS |
                          cv::CALIB_CB_FAST_CHECK;
        if (!cv::findChessboardCorners(grey, cv::Size(shape.rowCorners, shape.columnCorners), corners, flags))
            return std::nullopt;
        cv::find4QuadCornerSubpix(grey, corners, Refined);
    } catch (const cv::Exception& error) {
        qDebug() << "no chessboard can be found" << error.what();
        return std::nullopt;
    }
    BoardCorners found;
    for (const cv::Point2f& corner : corners)
        found += QPointF(static_cast<double>(corner.x), static_cast<double>(corner.y));
    return found;
}

QImage drawBoard(const QImage& photo, const BoardShape& shape, const BoardCorners& corners) {
    QImage drawn = photo.convertToFormat(QImage::Format_RGB32);
    cv::Mat pixels(drawn.height(), drawn.width(), CV_8UC4, drawn.bits(),
                   static_cast<std::size_t>(drawn.bytesPerLine()));
    cv::drawChessboardCorners(pixels, cv::Size(shape.rowCorners, shape.columnCorners), toPoints(corners), true);
    return drawn;
}

std::optional<Calibration> calibrate(const QVector<BoardCorners>& photos, const BoardShape& shape, QSize size) {
    const std::vector<cv::Point3f> board = boardPoints(shape);
    std::vector<std::vector<cv::Point2f>> seen;
    for (const BoardCorners& corners : photos) {
        if (static_cast<std::size_t>(corners.size()) != board.size())
            return std::nullopt;
        seen.push_back(toPoints(corners));
    }
    if (seen.empty() || size.isEmpty())
        return std::nullopt;
    const std::vector<std::vector<cv::Point3f>> boards(seen.size(), board);
    cv::Mat camera;
    cv::Mat distortion;
    std::vector<cv::Mat> rotations;
    std::vector<cv::Mat> translations;
    Calibration result;
    try {
        result.reprojectionError = cv::calibrateCamera(
            boards, seen, cv::Size(size.width(), size.height()), camera, distortion, rotations, translations, 0,
            cv::TermCriteria(cv::TermCriteria::COUNT + cv::TermCriteria::EPS, Iterations, DBL_EPSILON));
    } catch (const cv::Exception& error) {
        qDebug() << "the camera cannot be calibrated" << error.what();
        return std::nullopt;
    }
    if (!cv::checkRange(camera) || !cv::checkRange(distortion))
        return std::nullopt;
    result.cameraMatrix = textOf(camera);
    result.distCoeffs = textOf(distortion.reshape(1, 1));
    return result;
}

} // namespace corvanta::vision::opencv
