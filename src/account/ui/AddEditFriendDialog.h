#pragma once

#include "account/ShareModel.h"
#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"

#include <optional>

class QLineEdit;

/// Makes a friend by a phone number, or changes the note on one.
class AddEditFriendDialog final : public FramedDialog {
    Q_OBJECT
public:
    /// A new friend, none of `known`.
    AddEditFriendDialog(const AppContext& context, QList<FriendRecord> known, QWidget* parent = nullptr);
    /// The note on a friend.
    AddEditFriendDialog(const AppContext& context, const FriendRecord& edited, QWidget* parent = nullptr);

signals:
    /// The service has taken it.
    void sigSaved();

private:
    void build(const FriendRecord& shown);
    void save();
    std::optional<QString> problem() const;

    AppContext context_;
    QList<FriendRecord> known_;
    bool isNew_;
    QLineEdit* phone_ = nullptr;
    QLineEdit* remark_ = nullptr;
    QPushButton* save_ = nullptr;
};
