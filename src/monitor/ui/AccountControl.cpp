#include "monitor/ui/AccountControl.h"

#include "account/ui/AccountForm.h"
#include "account/ui/AddEditGroupDialog.h"
#include "account/ui/Manage_Friend_Dialog.h"
#include "account/ui/Manage_Groups_Dialog.h"
#include "account/ui/PersonalInformationDialog.h"
#include "account/ui/Set_Authority_Dialog.h"
#include "base/AppEvents.h"
#include "base/DeviceModel.h"

#include <QDebug>

#include <utility>

AccountControl::AccountControl(const AppContext& context, TopBar& bar, QWidget& window)
    : QObject(&window)
    , context_(context)
    , bar_(bar)
    , window_(window)
    , icons_(context) {
    connect(&bar_, &TopBar::sigAccount, this, &AccountControl::onEntry);
    connect(&icons_, &HeadIcons::sigChanged, this, [this] { bar_.setHead(icons_.own()); });
    connect(&context_.events, &AppEvents::sig_sms, this,
            [this](const QVariantMap& message) { messages_.add(message, window_.isVisible() ? &window_ : nullptr); });
    connect(&context_.events, &AppEvents::sig_logoutReason, this, &AccountControl::onReason);
}

void AccountControl::onAccount(const QString& number) {
    if (std::exchange(account_, number) == number)
        return;
    if (dialog_ != nullptr)
        dialog_->reject(); // it is about an account that is gone
    icons_.restart();
    bar_.setHead(number.isEmpty() ? QIcon() : icons_.own());
}

void AccountControl::onEntry(AccountEntry entry) {
    switch (entry) {
    case AccountEntry::Person:
        openPerson();
        break;
    case AccountEntry::Friends:
        openFriends();
        break;
    case AccountEntry::Groups:
        openGroups();
        break;
    case AccountEntry::Rights:
        openRights();
        break;
    case AccountEntry::Devices:
        emit sigDevices();
        break;
    case AccountEntry::Notices:
    case AccountEntry::TextMessages:
        break; // of linkage and alarms
    case AccountEntry::SignOut:
        emit sigSignOut();
        break;
    }
}

void AccountControl::onReason(const QString& reason) {
    const bool isKnown = std::exchange(unbinding_, false);
    if (reason == QLatin1String("password"))
        corvanta::account::tell(tr("登录密码已被修改，请使用新密码重新登录!"), &window_);
    else if (reason == QLatin1String("unbind") && !isKnown)
        corvanta::account::tell(tr("该账号已与当前电脑解除绑定!"), &window_);
    else
        qDebug() << "signed out:" << reason;
}

void AccountControl::open(QDialog* dialog) {
    if (dialog_ != nullptr)
        dialog_->reject();
    dialog_ = dialog;
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void AccountControl::openPerson() {
    auto* const person = new PersonalInformationDialog(context_, icons_, &window_);
    connect(person, &PersonalInformationDialog::sigUnbound, this, [this] { unbinding_ = true; });
    open(person);
}

void AccountControl::openFriends() {
    open(new Manage_Friend_Dialog(context_, &window_));
}

void AccountControl::openGroups() {
    open(new Manage_Groups_Dialog(context_, &window_));
}

void AccountControl::openRights() {
    open(new Set_Authority_Dialog(context_, &window_));
}

void AccountControl::openGroupEditor(const QString& groupId) {
    const GroupRecord* const group = context_.devices.group(groupId);
    if (groupId.isEmpty() || group != nullptr)
        open(new AddEditGroupDialog(context_, groupId, group == nullptr ? QString() : group->name, &window_));
}
