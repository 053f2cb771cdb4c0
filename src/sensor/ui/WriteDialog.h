#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"

class QLineEdit;

namespace corvanta::sensor {

/// Writes a value to an output at once.
class WriteDialog final : public FramedDialog {
    Q_OBJECT
public:
    struct Output {
        QString ipncId;
        int pid = 0;
        QString name;
        QString unit;
    };
    WriteDialog(const AppContext& context, const Output& output, QWidget* parent);

private:
    void write();

    AppContext context_;
    Output output_;
    QLineEdit* value_;
    QPushButton* write_;
};

} // namespace corvanta::sensor
