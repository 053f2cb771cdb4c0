#include "Sight.h"

#include <opencv2/calib3d.hpp>
#include <opencv2/imgproc.hpp>
#include <zbar.h>

namespace ipncsdk::sight {

std::optional<Code> readCode(const cv::Mat1b& picture) {
    const cv::Mat1b whole = picture.clone(); // without gaps between its rows
    zbar::ImageScanner scanner;
    scanner.set_config(zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 1);
    zbar::Image image(static_cast<unsigned>(whole.cols), static_cast<unsigned>(whole.rows), "Y800", whole.data,
                      whole.total());
    if (scanner.scan(image) != 1)
        return std::nullopt;
    const auto symbol = image.symbol_begin();
    Code code{symbol->get_data(), {}};
    for (unsigned index = 0; index < static_cast<unsigned>(symbol->get_location_size()); ++index)
        code.corners.emplace_back(static_cast<float>(symbol->get_location_x(index)),
                                  static_cast<float>(symbol->get_location_y(index)));
    return code.corners.size() == 4 ? std::make_optional(code) : std::nullopt;
}

cv::Vec3d positionOf(const Code& code, double side, const scene::Lens& lens) {
    const auto h = static_cast<float>(side / 2);
    const std::vector<cv::Point3f> model = {{-h, -h, 0}, {-h, h, 0}, {h, h, 0}, {h, -h, 0}};
    cv::Vec3d rotation;
    cv::Vec3d translation;
    cv::solvePnP(model, code.corners, lens.matrix(),
                 cv::Mat(5, 1, CV_64F, const_cast<double*>(lens.distortion.data())), rotation, translation);
    return translation;
}

std::vector<cv::Point2f> findBoard(const cv::Mat1b& picture, int columns, int rows) {
    std::vector<cv::Point2f> corners;
    const int flags = cv::CALIB_CB_ADAPTIVE_THRESH | cv::CALIB_CB_NORMALIZE_IMAGE | cv::CALIB_CB_FILTER_QUADS |
                      cv::CALIB_CB_FAST_CHECK;
    if (!cv::findChessboardCorners(picture, {columns, rows}, corners, flags))
        return {};
    cv::cornerSubPix(picture, corners, {4, 4}, {-1, -1},
                     cv::TermCriteria(cv::TermCriteria::COUNT | cv::TermCriteria::EPS, 60, 1e-4));
    return corners;
}

std::vector<cv::Point2d> projected(const scene::Lens& lens, const scene::Pose& pose,
                                   const std::vector<cv::Point3d>& points) {
    cv::Vec3d turn;
    cv::Rodrigues(pose.rotation, turn);
    std::vector<cv::Point2d> seen;
    cv::projectPoints(points, turn, pose.translation, lens.matrix(),
                      std::vector<double>(lens.distortion.begin(), lens.distortion.end()), seen);
    return seen;
}

std::vector<cv::Point3d> boardPoints(int columns, int rows, double square) {
    std::vector<cv::Point3d> points;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            points.emplace_back(column * square, row * square, 0);
    }
    return points;
}

} // namespace ipncsdk::sight
