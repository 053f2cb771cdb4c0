// Matrices as devices' records keep them.

#include "Fuzz.h"
#include "vision/MatrixText.h"

#include <opencv2/core.hpp>

using namespace corvanta;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const cv::Mat matrix = vision::matrixFromText(QString::fromStdString(fuzz::textOf(data, size)));
    if (matrix.empty())
        return 0;
    fuzz::demand(matrix.type() == CV_64F && cv::checkRange(matrix), "every element is a finite number");
    const cv::Mat again = vision::matrixFromText(vision::matrixText(matrix));
    fuzz::demand(again.size() == matrix.size() && cv::norm(again, matrix, cv::NORM_INF) == 0,
                 "what was written is read as it was");
    return 0;
}
