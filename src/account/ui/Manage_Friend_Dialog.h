#pragma once

#include "account/ShareModel.h"
#include "account/ui/HeadIcons.h"
#include "account/ui/ListDialog.h"

class AddEditFriendDialog;

/// The account's friends: added by number, given notes, deleted.
class Manage_Friend_Dialog final : public ListDialog {
    Q_OBJECT
public:
    explicit Manage_Friend_Dialog(const AppContext& context, QWidget* parent = nullptr);

    /// Asks the service for the list.
    void reload();

private:
    void addButtons();
    void fill();
    void showIcon(const QString& friendPhone);
    void edit();
    void askToDelete();
    void deleteFriend(const QString& phone);
    void openEditor(AddEditFriendDialog* editor);

    QList<FriendRecord> friends_;
    HeadIcons icons_;
    QPushButton* delete_ = nullptr;
};
