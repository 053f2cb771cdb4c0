#include "account/ui/Manage_Groups_Dialog.h"

#include "account/AccountLog.h"
#include "account/ui/AccountForm.h"
#include "account/ui/AddEditGroupDialog.h"
#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/SdkGateway.h"
#include "base/ui/TipDialog.h"

#include <QPushButton>
#include <QTreeWidget>

namespace account = corvanta::account;

namespace {
enum Column { IdColumn, NumberColumn, NameColumn };
} // namespace

Manage_Groups_Dialog::Manage_Groups_Dialog(const AppContext& context, QWidget* parent)
    : ListDialog(context, tr("分组管理"), {tr("ID"), tr("编号"), tr("名称")}, tr("还没有分组，点击“新增”新建一个"),
                 parent) {
    setObjectName(QStringLiteral("Manage_Groups_Dialog"));
    list().sortByColumn(NumberColumn, Qt::AscendingOrder);
    const auto openEditor = [this](const QString& id, const QString& name) {
        auto* const editor = new AddEditGroupDialog(this->context(), id, name, this); // deletes itself
        editor->setAttribute(Qt::WA_DeleteOnClose);
        editor->open();
    };
    auto* const add = addButton(tr("新增"), QStringLiteral("groupAdd"), false);
    auto* const edit = addButton(tr("编辑"), QStringLiteral("groupEdit"), false);
    delete_ = addButton(tr("删除"), QStringLiteral("groupDelete"), false);
    connect(add, &QPushButton::clicked, this, [openEditor] { openEditor(QString(), QString()); });
    const auto editOne = [this, openEditor] {
        if (const QTreeWidgetItem* const item = demandOne(tr("请选择要编辑的分组!")))
            openEditor(keyOf(*item), item->text(NameColumn));
    };
    connect(edit, &QPushButton::clicked, this, editOne);
    connect(&list(), &QTreeWidget::itemActivated, this, editOne);
    connect(delete_, &QPushButton::clicked, this, &Manage_Groups_Dialog::askToDelete);
    connect(&context.events, qOverload<QVariantList, QVariantMap>(&AppEvents::sig_updateList), this,
            &Manage_Groups_Dialog::fill);
    fill();
}

void Manage_Groups_Dialog::fill() {
    beginFill();
    int number = 0;
    for (const GroupRecord& group : context().devices.groups())
        addRow(group.id, {group.id, QString::number(++number), group.name});
    endFill();
}

void Manage_Groups_Dialog::askToDelete() {
    const QTreeWidgetItem* const item = demandOne(tr("请选择要删除的分组!"));
    if (item == nullptr)
        return;
    TipDialog::offer(
        {.title = tr("提示"),
         .text = tr("确定要删除选中的分组？确认\n该分组下设备已经删除或移动到\n其它组！否则将无法删除该分组！"),
         .accept = tr("确定"),
         .reject = tr("取消"),
         .destructive = true},
        this, {.accepted = [this, id = keyOf(*item), name = item->text(NameColumn)] {
            deleteGroup(id, name);
        }});
}

void Manage_Groups_Dialog::deleteGroup(const QString& groupId, const QString& name) {
    account::send(context(), this,
                  {.operation = QStringLiteral("删除分组"),
                   .parameters = {{QStringLiteral("groupid"), groupId}},
                   .busy = delete_,
                   .done = [this, name](const QVariantMap&) {
                       account::logChange(context().operationLog, context().gateway.phoneId(),
                                          account::Change::GroupDeleted, name);
                       account::tell(tr("删除分组成功!"), this);
                   }});
}
