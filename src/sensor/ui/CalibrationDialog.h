#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "sensor/SensorTypes.h"

#include <array>
#include <optional>

class QGridLayout;
class QLabel;
class QLineEdit;

namespace corvanta::sensor {

/// Finds scale and offset of an input from two raw values and what they truly are. Raw values are typed or read.
class CalibrationDialog final : public FramedDialog {
    Q_OBJECT
public:
    /// An input that is not stored yet (0) cannot be read.
    CalibrationDialog(const AppContext& context, const QString& ipncId, int pid, QWidget* parent);

    /// What was found, once the dialog was accepted.
    Calibration result() const { return found_.value_or(Calibration()); }

private:
    struct Point {
        QLineEdit* raw;
        QLineEdit* truth;
    };
    Point addPoint(int number, QGridLayout& grid);
    void compute();

    AppContext context_;
    QString ipncId_;
    int pid_;
    std::array<Point, 2> points_{};
    QLabel* text_;
    QPushButton* ok_;
    std::optional<Calibration> found_;
};

} // namespace corvanta::sensor
