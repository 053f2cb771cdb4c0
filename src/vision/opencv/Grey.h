#pragma once

#include <QImage>

#include <opencv2/core/mat.hpp>

namespace corvanta::vision::opencv {

/// The grey levels of a picture: 0.299 R + 0.587 G + 0.114 B, 8 bits, rows from the top. Empty for none.
cv::Mat greyOf(const QImage& picture);

} // namespace corvanta::vision::opencv
