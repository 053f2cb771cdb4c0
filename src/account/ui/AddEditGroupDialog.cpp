#include "account/ui/AddEditGroupDialog.h"

#include "account/AccountLog.h"
#include "account/EntryChecks.h"
#include "account/ui/AccountForm.h"
#include "base/SdkGateway.h"
#include "base/ui/TipDialog.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace account = corvanta::account;

AddEditGroupDialog::AddEditGroupDialog(const AppContext& context, const QString& groupId, const QString& name,
                                       QWidget* parent)
    : FramedDialog(groupId.isEmpty() ? tr("新增分组") : tr("编辑分组"), parent)
    , context_(context)
    , groupId_(groupId)
    , oldName_(name) {
    setObjectName(QStringLiteral("AddEditGroupDialog"));
    setAccessibleName(windowTitle());
    QFormLayout* const form = account::makeForm();
    name_ = account::addField(*form, tr("分组名称"), tr("分组名称"), QStringLiteral("groupName"));
    name_->setPlaceholderText(tr("输入新建分组名称"));
    name_->setText(name);
    body()->addLayout(form);
    save_ = addButton(tr("保存"), QStringLiteral("groupSave"), true);
    auto* const cancel = addButton(tr("取消"), QStringLiteral("groupCancel"), false);
    connect(save_, &QPushButton::clicked, this, &AddEditGroupDialog::save);
    connect(cancel, &QPushButton::clicked, this, &AddEditGroupDialog::reject);
    name_->setFocus();
}

void AddEditGroupDialog::save() {
    const QString name = name_->text().trimmed();
    if (const auto problem = account::checkName(name, tr("请输入名称!"))) {
        account::tell(*problem, this);
        return;
    }
    const bool isNew = groupId_.isEmpty();
    QVariantMap parameters{{QStringLiteral("name"), name}};
    if (!isNew)
        parameters.insert(QStringLiteral("groupid"), groupId_);
    account::send(context_, this,
                  {.operation = isNew ? QStringLiteral("新建分组") : QStringLiteral("编辑分组"),
                   .parameters = parameters,
                   .busy = save_,
                   .done = [this, name, isNew](const QVariantMap&) {
                       account::logChange(context_.operationLog, context_.gateway.phoneId(),
                                          isNew ? account::Change::GroupAdded : account::Change::GroupEdited,
                                          isNew ? name : oldName_ + QStringLiteral(" → ") + name);
                       account::tell(tr("保存成功!"), parentWidget());
                       accept();
                   }});
}
