#include "monitor/ui/ManageControl.h"

#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "base/ui/TipDialog.h"
#include "manageWidget/ui/AddDeviceDialog.h"
#include "manageWidget/ui/DeviceConfigDialog.h"
#include "manageWidget/ui/DeviceManageDialog.h"
#include "manageWidget/ui/ManageSend.h"
#include "manageWidget/ui/PtzDialog.h"
#include "manageWidget/ui/RenameDialog.h"
#include "monitor/ui/DeviceTree.h"

#include <QVariant>

#include <utility>

namespace manage = corvanta::manage;

namespace {
constexpr int NamesShown = 5;
constexpr char DeviceProperty[] = "ipncid";
} // namespace

ManageControl::ManageControl(const AppContext& context, DeviceTree& tree, QWidget& window)
    : QObject(&window)
    , context_(context)
    , window_(window) {
    connect(&tree, &DeviceTree::sigAddDevice, this, &ManageControl::openAdd);
    connect(&tree, &DeviceTree::sigConfigureDevice, this, &ManageControl::openConfig);
    connect(&tree, &DeviceTree::sigRenameDevice, this, &ManageControl::openRename);
    connect(&tree, &DeviceTree::sigDeleteDevice, this, [this](const QString& ipncId) { remove({ipncId}); });
    connect(&tree, &DeviceTree::sigManageDevices, this, &ManageControl::openDevices);
}

QWidget* ManageControl::above() const {
    return devices_ != nullptr && devices_->isVisible() ? static_cast<QWidget*>(devices_.data()) : &window_;
}

void ManageControl::show(QDialog* dialog, const QString& ipncId, bool isModal) {
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setProperty(DeviceProperty, ipncId);
    dialogs_.removeAll(nullptr);
    dialogs_ += dialog;
    if (isModal)
        dialog->open();
    else
        dialog->show();
}

void ManageControl::openDevices() {
    if (devices_ != nullptr)
        return;
    devices_ = new DeviceManageDialog(context_, &window_);
    connect(devices_, &DeviceManageDialog::sigAdd, this, &ManageControl::openAdd);
    connect(devices_, &DeviceManageDialog::sigRename, this, &ManageControl::openRename);
    connect(devices_, &DeviceManageDialog::sigConfigure, this, &ManageControl::openConfig);
    connect(devices_, &DeviceManageDialog::sigDelete, this, &ManageControl::remove);
    show(devices_, {});
}

void ManageControl::openAdd(const QString& groupId) {
    show(new AddDeviceDialog(context_, groupId, above()), {});
}

void ManageControl::openConfig(const QString& ipncId) {
    if (context_.devices.device(ipncId) != nullptr)
        show(new DeviceConfigDialog(context_, ipncId, above()), ipncId);
}

void ManageControl::openRename(const QString& ipncId) {
    if (context_.devices.device(ipncId) != nullptr)
        show(new RenameDialog(context_, ipncId, above()), ipncId);
}

void ManageControl::openPtz(const QString& ipncId) {
    for (const QPointer<QDialog>& open : qAsConst(dialogs_)) {
        auto* const ptz = qobject_cast<PtzDialog*>(open.data());
        if (ptz != nullptr && ptz->property(DeviceProperty).toString() == ipncId) {
            ptz->raise();
            ptz->activateWindow();
            return;
        }
    }
    if (context_.devices.device(ipncId) != nullptr)
        show(new PtzDialog(context_, ipncId, &window_), ipncId, false);
}

void ManageControl::remove(const QStringList& ipncIds) {
    QList<std::pair<QString, QString>> devices;
    QStringList names;
    for (const QString& ipncId : ipncIds) {
        const DeviceRecord* const device = context_.devices.device(ipncId);
        if (device == nullptr)
            continue;
        devices += {ipncId, device->displayName()};
        if (names.size() < NamesShown)
            names += device->displayName().left(40);
    }
    if (devices.isEmpty())
        return;
    QString text =
        tr("确定删除以下%1个设备?").arg(devices.size()) + QLatin1Char('\n') + names.join(QLatin1Char('\n'));
    if (devices.size() > names.size())
        text += QStringLiteral("\n…");
    TipDialog::offer({tr("删除设备"), text, tr("删除"), tr("取消"), true}, above(), {[this, devices] {
                         for (const auto& [ipncId, name] : devices)
                             sendRemove(ipncId, name);
                     }});
}

void ManageControl::sendRemove(const QString& ipncId, const QString& name) {
    manage::send(
        context_, above(),
        {.json = corvanta::requests::accountRequest(QStringLiteral("删除设备"), {{QStringLiteral("ipncid"), ipncId}}),
         .done = [context = context_, ipncId, name](const QVariantMap&) {
             manage::log(context, QStringLiteral("删除设备"), ipncId + QLatin1Char(' ') + name);
         }});
}

void ManageControl::onAccount(const QString& number) {
    if (std::exchange(account_, number) == number)
        return;
    const auto open = std::exchange(dialogs_, {});
    for (const QPointer<QDialog>& dialog : open) {
        if (dialog != nullptr)
            dialog->close(); // it is about an account that is gone
    }
}

void ManageControl::onLists() {
    const auto open = dialogs_;
    for (const QPointer<QDialog>& dialog : open) {
        const QString ipncId = dialog == nullptr ? QString() : dialog->property(DeviceProperty).toString();
        if (!ipncId.isEmpty() && context_.devices.device(ipncId) == nullptr)
            dialog->close();
    }
}
