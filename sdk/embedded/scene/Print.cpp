#include "scene/Print.h"

#include <qrencode.h>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <memory>

namespace ipncsdk::scene {

namespace {

constexpr double platePixel = 0.25; ///< millimetres
constexpr double crossLength = 16;  ///< millimetres
constexpr double crossStrength = 1; ///< millimetres
constexpr int plateGrey = 190;
constexpr int crossGrey = 20;

} // namespace

std::vector<cv::Point2d> Print::outline() const {
    const double left = -origin.x * pixelSize;
    const double top = -origin.y * pixelSize;
    const double right = (picture.cols - origin.x) * pixelSize;
    const double bottom = (picture.rows - origin.y) * pixelSize;
    return {{left, top}, {left, bottom}, {right, bottom}, {right, top}};
}

cv::Mat1b printedCode(const std::string& text) {
    struct Free {
        void operator()(QRcode* code) const { QRcode_free(code); }
    };
    const std::unique_ptr<QRcode, Free> code(QRcode_encodeString8bit(text.c_str(), 0, QR_ECLEVEL_M));
    if (code == nullptr)
        return {};
    const int side = code->width + 2 * quietZone;
    cv::Mat1b picture(side, side, static_cast<uchar>(255));
    for (int row = 0; row < code->width; ++row) {
        for (int column = 0; column < code->width; ++column) {
            // The lowest bit of a module says that it is dark.
            if ((code->data[row * code->width + column] & 1) != 0)
                picture(row + quietZone, column + quietZone) = 0;
        }
    }
    return picture;
}

cv::Mat1b printedBoard(int columns, int rows) {
    cv::Mat1b picture(rows + 3, columns + 3, static_cast<uchar>(255));
    for (int row = 0; row <= rows; ++row) {
        for (int column = row % 2; column <= columns; column += 2)
            picture(row + 1, column + 1) = 0;
    }
    return picture;
}

Print codePrint(const std::string& text, double side) {
    Print print;
    print.picture = printedCode(text);
    print.pixelSize = side / std::max(1, print.picture.cols - 2 * quietZone);
    print.origin = {print.picture.cols / 2.0, print.picture.rows / 2.0};
    return print;
}

Print boardPrint(int columns, int rows, double square) {
    return {printedBoard(columns, rows), square, {2, 2}};
}

Print platePrint(const cv::Size2d& size, const std::vector<cv::Point2d>& crosses) {
    const int width = cvRound(size.width / platePixel);
    const int height = cvRound(size.height / platePixel);
    Print print{cv::Mat1b(height, width, static_cast<uchar>(plateGrey)), platePixel, {width / 2.0, height / 2.0}};
    const auto bar = [&print](const cv::Point2d& centre, double barWidth, double barHeight) {
        const cv::Point2d middle = centre / platePixel + print.origin;
        const cv::Size2d half(barWidth / platePixel / 2, barHeight / platePixel / 2);
        const cv::Rect place(cv::Point(cvRound(middle.x - half.width), cvRound(middle.y - half.height)),
                             cv::Point(cvRound(middle.x + half.width), cvRound(middle.y + half.height)));
        print.picture(place & cv::Rect({}, print.picture.size())) = static_cast<uchar>(crossGrey);
    };
    for (const cv::Point2d& cross : crosses) {
        bar(cross, crossLength, crossStrength);
        bar(cross, crossStrength, crossLength);
    }
    return print;
}

Print toned(Print print, int ink, int paper) {
    print.picture.convertTo(print.picture, CV_8U, (paper - ink) / 255.0, ink);
    return print;
}

} // namespace ipncsdk::scene
