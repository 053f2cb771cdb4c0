#include "vision/opencv/Grey.h"

#include <opencv2/imgproc.hpp>

namespace corvanta::vision::opencv {

cv::Mat greyOf(const QImage& picture) {
    if (picture.isNull())
        return {};
    const QImage rgb = picture.convertToFormat(QImage::Format_RGB32); // the same picture where it is one already
    // The scan lines are only read; OpenCV has no view of constant pixels.
    const cv::Mat pixels(rgb.height(), rgb.width(), CV_8UC4, const_cast<uchar*>(rgb.constBits()),
                         static_cast<std::size_t>(rgb.bytesPerLine()));
    cv::Mat grey;
    cv::cvtColor(pixels, grey, cv::COLOR_BGRA2GRAY);
    return grey;
}

} // namespace corvanta::vision::opencv
