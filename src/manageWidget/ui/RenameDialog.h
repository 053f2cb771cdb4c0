#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"

class QLineEdit;
class QPushButton;

/// Another name for a device, in this account.
class RenameDialog final : public FramedDialog {
    Q_OBJECT
public:
    RenameDialog(const AppContext& context, QString ipncId, QWidget* parent);

private:
    void save();

    AppContext context_;
    const QString ipncId_;
    QString oldName_;
    QLineEdit* name_;
    QPushButton* save_;
};
