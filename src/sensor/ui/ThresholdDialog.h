#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "sensor/InputRecords.h"

namespace corvanta::sensor {

class ThresholdForm;

/// The thresholds of one input, stored at once.
class ThresholdDialog final : public FramedDialog {
    Q_OBJECT
public:
    ThresholdDialog(const AppContext& context, const InputRecord& input, QWidget* parent);

private:
    void save();

    AppContext context_;
    InputRecord input_;
    ThresholdForm* form_;
    QPushButton* save_;
};

} // namespace corvanta::sensor
