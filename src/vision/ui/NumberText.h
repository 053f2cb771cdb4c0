#pragma once

#include <QString>

#include <cmath>
#include <limits>

/// Numbers in the fields of dialogs.
namespace corvanta::vision {

/// NaN for a text that is no finite number.
inline double numberFrom(const QString& text) {
    bool isNumber = false;
    const double number = text.trimmed().toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? number : std::numeric_limits<double>::quiet_NaN();
}

/// Empty for NaN.
inline QString numberText(double number) {
    return std::isfinite(number) ? QString::number(number, 'g', 10) : QString();
}

} // namespace corvanta::vision
