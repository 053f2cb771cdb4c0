#pragma once

#include <QString>

#include <opencv2/core/mat.hpp>

namespace corvanta::vision {

/// A matrix of numbers as it is kept in a device's record: "[a, b, c;\n d, e, f]", the form in which OpenCV prints
/// one. Rows top to bottom.
QString matrixText(const cv::Mat& matrix);

/// What `matrixText` wrote, as 64-bit numbers, each read in single precision. Empty for a text that is no matrix: an
/// element that is no finite number, rows of different lengths.
cv::Mat matrixFromText(const QString& text);

} // namespace corvanta::vision
