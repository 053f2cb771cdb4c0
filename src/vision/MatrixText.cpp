#include "vision/MatrixText.h"

#include <QStringList>

#include <opencv2/core.hpp>

#include <cmath>
#include <limits>
#include <sstream>

namespace corvanta::vision {

namespace {
constexpr int LongestText = 4096; // characters; a 3 x 3 matrix takes some 200
} // namespace

QString matrixText(const cv::Mat& matrix) {
    std::ostringstream text;
    text << matrix;
    return QString::fromStdString(text.str());
}

cv::Mat matrixFromText(const QString& text) {
    if (text.size() > LongestText)
        return {};
    cv::Mat matrix;
    const QStringList rows = text.split(QLatin1Char(';'));
    for (const QString& row : rows) {
        cv::Mat1d numbers;
        const QStringList elements = row.split(QLatin1Char(','));
        for (QString element : elements) {
            element.remove(QLatin1Char('[')).remove(QLatin1Char(']')).remove(QLatin1Char('\n'));
            bool isNumber = false;
            // Single precision, as the positions that devices keep were measured with.
            const float number = element.trimmed().toFloat(&isNumber);
            // The largest one is no element either: its text is that of a larger one.
            if (!isNumber || !std::isfinite(number) || std::abs(number) >= std::numeric_limits<float>::max())
                return {};
            numbers.push_back(static_cast<double>(number));
        }
        const cv::Mat line = numbers.reshape(1, 1);
        if (!matrix.empty() && matrix.cols != line.cols)
            return {};
        matrix.push_back(line);
    }
    return matrix;
}

} // namespace corvanta::vision
