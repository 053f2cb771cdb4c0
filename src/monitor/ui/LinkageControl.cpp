#include "monitor/ui/LinkageControl.h"

#include "base/DeviceModel.h"
#include "linkage/ui/NewSet_Linkage_Dialog.h"
#include "linkage/ui/SMSManageDialog.h"
#include "linkage/ui/Set_Notify_Dialog.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/TopBar.h"

#include <utility>

LinkageControl::LinkageControl(const AppContext& context, DeviceTree& tree, TopBar& bar, QWidget& window)
    : QObject(&window)
    , context_(context)
    , window_(window) {
    connect(&tree, &DeviceTree::sigLinkage, this, &LinkageControl::openPlans);
    connect(&bar, &TopBar::sigAccount, this, [this](AccountEntry entry) {
        if (entry == AccountEntry::Notices)
            openRules();
        else if (entry == AccountEntry::TextMessages)
            openTextMessages();
    });
}

void LinkageControl::open(QDialog* dialog, const QString& ipncId) {
    if (dialog_ != nullptr)
        dialog_->reject();
    dialog_ = dialog;
    device_ = ipncId;
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void LinkageControl::openPlans(const QString& ipncId) {
    if (context_.devices.device(ipncId) != nullptr)
        open(new NewSet_Linkage_Dialog(context_, ipncId, &window_), ipncId);
}

void LinkageControl::openRules() {
    open(new Set_Notify_Dialog(context_, &window_), {});
}

void LinkageControl::openTextMessages() {
    open(new SMSManageDialog(context_, &window_), {});
}

void LinkageControl::onAccount(const QString& number) {
    if (std::exchange(account_, number) != number && dialog_ != nullptr)
        dialog_->reject(); // it is about an account that is gone
}

void LinkageControl::onLists() {
    if (dialog_ != nullptr && !device_.isEmpty() && context_.devices.device(device_) == nullptr)
        dialog_->reject();
}
