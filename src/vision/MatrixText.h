#pragma once

#include <QString>

#include <vector>

namespace corvanta::vision {

/// Numbers in rows of the same length, row by row.
struct Matrix {
    int rows = 0;
    int columns = 0;
    std::vector<double> values;

    bool isEmpty() const { return values.empty(); }
};

/// A matrix of numbers as it is kept in a device's record: "[a, b, c;\n d, e, f]" with 16 significant digits, the
/// form in which OpenCV prints one. Rows top to bottom.
QString matrixText(const Matrix& matrix);

/// What `matrixText` wrote, each number read in single precision. Empty for a text that is no matrix: an element that
/// is no finite number, rows of different lengths.
Matrix matrixFromText(const QString& text);

} // namespace corvanta::vision
