#pragma once

#include <opencv2/core.hpp>

#include <string>
#include <vector>

namespace ipncsdk::scene {

/// Something flat that is printed: its grey levels, and how they lie on the target's plane. The target's x runs to
/// the right, y downwards, both in millimetres; z points away from whoever looks at it.
struct Print {
    cv::Mat1b picture;
    double pixelSize = 1; ///< millimetres that a pixel measures
    cv::Point2d origin;   ///< of the target's (0, 0), in pixels from the picture's left top corner

    /// The corners of the whole print in millimetres: left top, left bottom, right bottom, right top.
    [[nodiscard]] std::vector<cv::Point2d> outline() const;
};

/// The QR code of a text, one pixel a module, 0 and 255, with its quiet zone of `quietZone` modules. Empty when the
/// text is too long for a code.
cv::Mat1b printedCode(const std::string& text);
inline constexpr int quietZone = 4;

/// A chessboard with so many inner corners, one pixel a square, 0 and 255, with a white margin one square wide. The
/// square at the left top is black.
cv::Mat1b printedBoard(int columns, int rows);

/// A printed code whose dark part, without the quiet zone, is `side` millimetres wide; the origin is its centre.
Print codePrint(const std::string& text, double side);

/// A chessboard with squares of `square` millimetres; the origin is its first inner corner, at the left top.
Print boardPrint(int columns, int rows, double square);

/// A plate of one grey level with crosses at places in millimetres; the origin is its centre.
Print platePrint(const cv::Size2d& size, const std::vector<cv::Point2d>& crosses);

/// The same in other ink on other paper: 0 becomes `ink`, 255 `paper`, what lies between in proportion.
Print toned(Print print, int ink, int paper);

} // namespace ipncsdk::scene
