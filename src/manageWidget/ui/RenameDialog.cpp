#include "manageWidget/ui/RenameDialog.h"

#include "account/EntryChecks.h"
#include "account/ui/AccountForm.h"
#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "manageWidget/ui/ManageSend.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace account = corvanta::account;
namespace manage = corvanta::manage;

RenameDialog::RenameDialog(const AppContext& context, QString ipncId, QWidget* parent)
    : FramedDialog(tr("重命名"), parent)
    , context_(context)
    , ipncId_(std::move(ipncId)) {
    setObjectName(QStringLiteral("RenameDialog"));
    setAccessibleName(windowTitle());
    const DeviceRecord* const device = context_.devices.device(ipncId_);
    oldName_ = device == nullptr ? QString() : device->displayName();
    QFormLayout* const form = account::makeForm();
    name_ = account::addField(*form, tr("设备名称"), tr("设备名称"), QStringLiteral("deviceName"));
    name_->setText(oldName_);
    name_->selectAll();
    body()->addLayout(form);
    save_ = addButton(tr("保存"), QStringLiteral("renameSave"), true);
    connect(save_, &QPushButton::clicked, this, &RenameDialog::save);
    connect(addButton(tr("取消"), QStringLiteral("renameCancel"), false), &QPushButton::clicked, this,
            &QDialog::reject);
    name_->setFocus();
}

void RenameDialog::save() {
    const QString name = name_->text().trimmed();
    if (const auto problem = account::checkName(name, tr("请输入名称!"))) {
        account::tell(*problem, this);
        return;
    }
    manage::send(context_, this,
                 {.json = corvanta::requests::accountRequest(
                      QStringLiteral("设置手机账号下设备相关参数"),
                      {{QStringLiteral("ipncid"), ipncId_}, {QStringLiteral("nickname"), name}}),
                  .busy = save_,
                  .done = [this, name](const QVariantMap&) {
                      manage::log(context_, QStringLiteral("重命名设备"),
                                  ipncId_ + QLatin1Char(' ') + oldName_ + QStringLiteral(" → ") + name);
                      accept();
                  }});
}
