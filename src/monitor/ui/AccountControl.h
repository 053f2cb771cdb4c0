#pragma once

#include "account/ui/HeadIcons.h"
#include "account/ui/SmsWindow.h"
#include "base/AppContext.h"
#include "monitor/ui/TopBar.h"

#include <QObject>
#include <QPointer>

#include <functional>

/// The dialogs of the account over the main window, its picture in the bar, text messages, and why a sign-in ended.
/// GUI thread.
class AccountControl final : public QObject {
    Q_OBJECT
public:
    /// `bar` and `window` outlive it.
    AccountControl(const AppContext& context, TopBar& bar, QWidget& window);

    /// Somebody signed in or out; an empty number is nobody.
    void onAccount(const QString& number);

    void openPerson();
    void openFriends();
    void openGroups();
    void openRights();
    /// A new group, or with an id another name for one.
    void openGroupEditor(const QString& groupId);

signals:
    /// The table of devices is wanted.
    void sigDevices();
    /// The user wants to sign out.
    void sigSignOut();

private:
    void onEntry(AccountEntry entry);
    void onReason(const QString& reason);
    void open(QDialog* dialog);

    AppContext context_;
    TopBar& bar_;
    QWidget& window_;
    HeadIcons icons_;
    SmsWindow messages_;
    QString account_;
    bool unbinding_ = false;   ///< the user has unbound this computer here, and knows it
    QPointer<QDialog> dialog_; ///< the one that is open; it closes with the sign-in
};
