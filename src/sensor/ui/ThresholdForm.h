#pragma once

#include "sensor/InputRecords.h"

#include <QWidget>

#include <array>

class QLineEdit;

namespace corvanta::sensor {

/// Three levels of thresholds, each with an upper and a lower bound that may be empty, and their hysteresis.
class ThresholdForm final : public QWidget {
    Q_OBJECT
public:
    /// `port`: an input's record.
    ThresholdForm(const QVariantMap& port, QWidget* parent);

    /// "thresholds" and "hysteresis" as the service takes them.
    QVariantMap values() const;
    std::optional<QString> problem() const;

private:
    static constexpr int Levels = 3;
    std::array<QLineEdit*, Levels> highs_{};
    std::array<QLineEdit*, Levels> lows_{};
    QLineEdit* hysteresis_;
};

} // namespace corvanta::sensor
