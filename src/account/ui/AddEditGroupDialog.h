#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"

class QLineEdit;

/// Makes a group, or gives one another name.
class AddEditGroupDialog final : public FramedDialog {
    Q_OBJECT
public:
    /// `groupId` is empty for a new group.
    AddEditGroupDialog(const AppContext& context, const QString& groupId, const QString& name,
                       QWidget* parent = nullptr);

private:
    void save();

    AppContext context_;
    const QString groupId_;
    const QString oldName_;
    QLineEdit* name_;
    QPushButton* save_;
};
