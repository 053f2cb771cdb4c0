#pragma once

#include <opencv2/core/mat.hpp>

#include <array>
#include <memory>
#include <optional>

namespace corvanta::vision {

/// Finds the one code of a picture. Reusable for any number of pictures; of one thread at a time.
class CodeScanner final {
public:
    using Corners = std::array<cv::Point2f, 4>;

    CodeScanner();
    ~CodeScanner();
    CodeScanner(CodeScanner&&) noexcept;
    CodeScanner& operator=(CodeScanner&&) noexcept;

    /// The corners of the code in a grey picture (8 bits, rows from the top), in the order in which the scanner
    /// tells them. The picture is blurred and then made black and white in several ways, one after the other: by
    /// Otsu's level, by the mean of the surroundings, by fixed levels from half of Otsu's on in steps of 10. The
    /// first in which exactly one symbol with exactly four corners is found counts; none where there is no such.
    std::optional<Corners> find(const cv::Mat& grey);

private:
    class Reader;

    std::optional<Corners> scan();
    std::optional<Corners> scanFixed(double otsu);

    std::unique_ptr<Reader> reader_;
    cv::Mat blurred_; ///< of the picture that is looked at
    cv::Mat binary_;  ///< what is scanned next; kept, so that memory is taken once
};

} // namespace corvanta::vision
