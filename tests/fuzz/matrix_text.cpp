// Matrices as devices' records keep them.

#include "Fuzz.h"
#include "vision/MatrixText.h"

#include <algorithm>
#include <cmath>

using namespace corvanta;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const vision::Matrix matrix = vision::matrixFromText(QString::fromStdString(fuzz::textOf(data, size)));
    if (matrix.isEmpty())
        return 0;
    fuzz::demand(
        std::all_of(matrix.values.begin(), matrix.values.end(), [](double value) { return std::isfinite(value); }),
        "every element is a finite number");
    fuzz::demand(matrix.values.size() ==
                     static_cast<std::size_t>(matrix.rows) * static_cast<std::size_t>(matrix.columns),
                 "rows are of the same length");
    const vision::Matrix again = vision::matrixFromText(vision::matrixText(matrix));
    fuzz::demand(again.rows == matrix.rows && again.values == matrix.values, "what was written is read as it was");
    return 0;
}
