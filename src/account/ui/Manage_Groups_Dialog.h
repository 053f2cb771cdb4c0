#pragma once

#include "account/ui/ListDialog.h"

/// The account's groups: made, renamed, deleted. The list follows what the service sends.
class Manage_Groups_Dialog final : public ListDialog {
    Q_OBJECT
public:
    explicit Manage_Groups_Dialog(const AppContext& context, QWidget* parent = nullptr);

private:
    void fill();
    void askToDelete();
    void deleteGroup(const QString& groupId, const QString& name);

    QPushButton* delete_;
};
