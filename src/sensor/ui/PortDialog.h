#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "sensor/SensorTypes.h"

class QCheckBox;
class QLineEdit;

namespace corvanta::sensor {

class FieldForm;
class ThresholdForm;

/// One input or output of a board. It edits a copy; the board is stored as a whole.
class PortDialog final : public FramedDialog {
    Q_OBJECT
public:
    struct Subject {
        QString ipncId;
        QVariantMap port;
        QVector<Field> fields;
        bool isInput = true;
    };
    PortDialog(const AppContext& context, const Subject& subject, QWidget* parent);

    /// The port as it was entered, with all that the dialog does not show.
    QVariantMap port() const;

private:
    QWidget* makeGeneral();
    QWidget* makeScale();
    void calibrate();
    void check();

    AppContext context_;
    Subject subject_;
    QLineEdit* name_ = nullptr;
    QLineEdit* unit_ = nullptr;
    QLineEdit* extend_ = nullptr;
    QCheckBox* upload_ = nullptr;
    QLineEdit* scale_ = nullptr; ///< inputs alone have these
    QLineEdit* offset_ = nullptr;
    FieldForm* fields_ = nullptr;
    ThresholdForm* thresholds_ = nullptr;
};

} // namespace corvanta::sensor
