#pragma once

#include "vision/VisionBackend.h"

#include <opencv2/core/mat.hpp>

#include <memory>
#include <optional>

namespace corvanta::vision::opencv {

class CodeScanner final : public CodeReader {
public:
    CodeScanner();
    ~CodeScanner() override;

    std::optional<CodeCorners> find(const GreyLevels& grey) override;
    std::optional<CodeCorners> find(const QImage& picture) override;

    /// The corners of the code in a grey picture (8 bits, rows from the top), in the order in which the scanner
    /// tells them. The picture is blurred and then made black and white in several ways, one after the other: by
    /// Otsu's level, by the mean of the surroundings, by fixed levels from half of Otsu's on in steps of 10. The
    /// first in which exactly one symbol with exactly four corners is found counts; none where there is no such.
    std::optional<CodeCorners> find(const cv::Mat& grey);

private:
    class Reader;

    std::optional<CodeCorners> scan();
    std::optional<CodeCorners> scanFixed(double otsu);

    std::unique_ptr<Reader> reader_;
    cv::Mat blurred_; ///< of the picture that is looked at
    cv::Mat binary_;  ///< what is scanned next; kept, so that memory is taken once
};

} // namespace corvanta::vision::opencv
