#include "vision/MatrixText.h"

#include <QStringList>

#include <cmath>
#include <limits>

namespace corvanta::vision {

namespace {
constexpr int LongestText = 4096; // characters; a 3 x 3 matrix takes some 200
constexpr int Digits = 16;        // significant ones of a number
} // namespace

QString matrixText(const Matrix& matrix) {
    QStringList rows;
    auto value = matrix.values.begin();
    for (int row = 0; row < matrix.rows; ++row) {
        QStringList elements;
        for (int column = 0; column < matrix.columns; ++column)
            elements += QString::number(*value++, 'g', Digits);
        rows += elements.join(QStringLiteral(", "));
    }
    return QLatin1Char('[') + rows.join(QStringLiteral(";\n ")) + QLatin1Char(']');
}

Matrix matrixFromText(const QString& text) {
    if (text.size() > LongestText)
        return {};
    Matrix matrix;
    const QStringList rows = text.split(QLatin1Char(';'));
    for (const QString& row : rows) {
        const QStringList elements = row.split(QLatin1Char(','));
        if (matrix.rows > 0 && elements.size() != matrix.columns)
            return {};
        for (QString element : elements) {
            element.remove(QLatin1Char('[')).remove(QLatin1Char(']')).remove(QLatin1Char('\n'));
            bool isNumber = false;
            // Single precision, as the positions that devices keep were measured with.
            const float number = element.trimmed().toFloat(&isNumber);
            // The largest one is no element either: its text is that of a larger one.
            if (!isNumber || !std::isfinite(number) || std::abs(number) >= std::numeric_limits<float>::max())
                return {};
            matrix.values.push_back(static_cast<double>(number));
        }
        matrix.columns = elements.size();
        ++matrix.rows;
    }
    return matrix;
}

} // namespace corvanta::vision
