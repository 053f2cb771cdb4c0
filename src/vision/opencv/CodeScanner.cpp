#include "vision/opencv/CodeScanner.h"

#include "vision/opencv/Grey.h"

#include <opencv2/imgproc.hpp>
#include <zbar.h>

#include <cmath>

namespace corvanta::vision::opencv {

namespace {
constexpr int BlurSize = 7;       // px
constexpr int White = 255;        // grey level
constexpr double LevelStep = 10;  // grey levels between two fixed thresholds
constexpr int BlocksInHeight = 8; // of the adaptive threshold
constexpr int SmallestBlock = 3;  // px; OpenCV refuses smaller ones
} // namespace

/// zbar's scanner and the picture that it is shown, without a copy of the pixels.
class CodeScanner::Reader final {
public:
    Reader()
        : scanner_(zbar::zbar_image_scanner_create())
        , image_(zbar::zbar_image_create()) {
        zbar::zbar_image_scanner_set_config(scanner_.get(), zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 1);
        zbar::zbar_image_set_format(image_.get(), zbar_fourcc('Y', '8', '0', '0'));
    }

    /// The picture lies in one piece and stays as it is meanwhile.
    std::optional<CodeCorners> scan(const cv::Mat& binary) {
        zbar::zbar_image_set_size(image_.get(), static_cast<unsigned>(binary.cols),
                                  static_cast<unsigned>(binary.rows));
        zbar::zbar_image_set_data(image_.get(), binary.data, binary.total(), nullptr);
        const int found = zbar::zbar_scan_image(scanner_.get(), image_.get());
        std::optional<CodeCorners> corners;
        if (found == 1)
            corners = cornersOf(zbar::zbar_image_first_symbol(image_.get()));
        zbar::zbar_image_set_data(image_.get(), nullptr, 0, nullptr);
        return corners;
    }

private:
    static std::optional<CodeCorners> cornersOf(const zbar::zbar_symbol_t* symbol) {
        CodeCorners corners;
        // Bars may come with four points, too, but those are no corners.
        if (symbol == nullptr || zbar::zbar_symbol_get_type(symbol) != zbar::ZBAR_QRCODE ||
            zbar::zbar_symbol_get_loc_size(symbol) != corners.size())
            return std::nullopt;
        for (unsigned i = 0; i < corners.size(); ++i)
            corners[i] = QPointF(zbar::zbar_symbol_get_loc_x(symbol, i), zbar::zbar_symbol_get_loc_y(symbol, i));
        return corners;
    }

    struct Destroy {
        void operator()(zbar::zbar_image_scanner_t* scanner) const { zbar::zbar_image_scanner_destroy(scanner); }
        void operator()(zbar::zbar_image_t* image) const { zbar::zbar_image_destroy(image); }
    };

    std::unique_ptr<zbar::zbar_image_scanner_t, Destroy> scanner_;
    std::unique_ptr<zbar::zbar_image_t, Destroy> image_;
};

CodeScanner::CodeScanner()
    : reader_(std::make_unique<Reader>()) {}

CodeScanner::~CodeScanner() = default;

std::optional<CodeCorners> CodeScanner::find(const GreyLevels& grey) {
    // OpenCV has no view of constant pixels.
    return find(cv::Mat(grey.height, grey.width, CV_8UC1, const_cast<std::uint8_t*>(grey.bytes)));
}

std::optional<CodeCorners> CodeScanner::find(const QImage& picture) {
    return find(greyOf(picture));
}

std::optional<CodeCorners> CodeScanner::find(const cv::Mat& grey) {
    if (grey.empty() || grey.type() != CV_8UC1)
        return std::nullopt;
    cv::blur(grey, blurred_, cv::Size(BlurSize, BlurSize));
    const double otsu = cv::threshold(blurred_, binary_, 0, White, cv::THRESH_BINARY | cv::THRESH_OTSU);
    if (const auto corners = scan())
        return corners;
    const int block = (blurred_.rows / BlocksInHeight) | 1;
    if (block >= SmallestBlock) {
        cv::adaptiveThreshold(blurred_, binary_, White, cv::ADAPTIVE_THRESH_MEAN_C, cv::THRESH_BINARY, block, 0);
        if (const auto corners = scan())
            return corners;
    }
    return scanFixed(otsu);
}

std::optional<CodeCorners> CodeScanner::scanFixed(double otsu) {
    const int steps = static_cast<int>(std::ceil((White - otsu / 2) / LevelStep)); // while the level is below white
    for (int step = 0; step < steps; ++step) {
        cv::threshold(blurred_, binary_, otsu / 2 + step * LevelStep, White, cv::THRESH_BINARY);
        if (const auto corners = scan())
            return corners;
    }
    return std::nullopt;
}

std::optional<CodeCorners> CodeScanner::scan() {
    return reader_->scan(binary_);
}

} // namespace corvanta::vision::opencv
