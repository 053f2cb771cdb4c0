#include "account/ui/Manage_Friend_Dialog.h"

#include "account/AccountLog.h"
#include "account/ui/AccountForm.h"
#include "account/ui/AddEditFriendDialog.h"
#include "base/AppEvents.h"
#include "base/SdkGateway.h"
#include "base/ui/TipDialog.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>

#include <algorithm>

namespace account = corvanta::account;

namespace {
enum Column { NumberColumn, HeadColumn, NameColumn, RemarkColumn, PhoneColumn };
} // namespace

Manage_Friend_Dialog::Manage_Friend_Dialog(const AppContext& context, QWidget* parent)
    : ListDialog(context, tr("好友管理"), {tr("编号"), tr("头像"), tr("名称"), tr("备注"), tr("手机号")},
                 tr("还没有好友，点击“添加”按手机号添加"), parent)
    , icons_(context) {
    setObjectName(QStringLiteral("Manage_Friend_Dialog"));
    list().setColumnWidth(NumberColumn, 64); // px
    list().setColumnWidth(HeadColumn, 64);
    list().setColumnWidth(NameColumn, 150);
    list().setColumnWidth(RemarkColumn, 150);
    addButtons();
    connect(&icons_, &HeadIcons::sigChanged, this, &Manage_Friend_Dialog::showIcon);
    // Who made or ended a friendship elsewhere is seen here, too.
    connect(&context.events, qOverload<QVariantList, QVariantMap>(&AppEvents::sig_updateList), this,
            &Manage_Friend_Dialog::reload);
    fill();
    reload();
}

void Manage_Friend_Dialog::addButtons() {
    auto* const add = addButton(tr("添加"), QStringLiteral("friendAdd"), false);
    auto* const change = addButton(tr("编辑"), QStringLiteral("friendEdit"), false);
    delete_ = addButton(tr("删除"), QStringLiteral("friendDelete"), false);
    connect(add, &QPushButton::clicked, this,
            [this] { openEditor(new AddEditFriendDialog(context(), friends_, this)); });
    connect(change, &QPushButton::clicked, this, &Manage_Friend_Dialog::edit);
    connect(&list(), &QTreeWidget::itemActivated, this, &Manage_Friend_Dialog::edit);
    connect(delete_, &QPushButton::clicked, this, &Manage_Friend_Dialog::askToDelete);
}

void Manage_Friend_Dialog::reload() {
    account::send(context(), this,
                  {.operation = QStringLiteral("获取好友列表"), .done = [this](const QVariantMap& resp) {
                       friends_ = FriendRecord::listOf(resp.value(QStringLiteral("friendlist")).toList());
                       fill();
                   }});
}

void Manage_Friend_Dialog::fill() {
    beginFill();
    int number = 0;
    for (const FriendRecord& one : friends_) {
        QTreeWidgetItem* const row =
            addRow(one.phone, {QString::number(++number), QString(), one.nickname, one.remark, one.phone});
        row->setIcon(HeadColumn, icons_.icon(one.phone));
    }
    endFill();
}

void Manage_Friend_Dialog::showIcon(const QString& friendPhone) {
    for (int row = 0; row < list().topLevelItemCount(); ++row) {
        if (keyOf(*list().topLevelItem(row)) == friendPhone)
            list().topLevelItem(row)->setIcon(HeadColumn, icons_.icon(friendPhone));
    }
}

void Manage_Friend_Dialog::edit() {
    const QTreeWidgetItem* const item = demandOne(tr("请选择要编辑的好友!"));
    if (item == nullptr)
        return;
    const auto known = std::find_if(friends_.begin(), friends_.end(),
                                    [item](const FriendRecord& one) { return one.phone == keyOf(*item); });
    if (known != friends_.end())
        openEditor(new AddEditFriendDialog(context(), *known, this));
}

void Manage_Friend_Dialog::openEditor(AddEditFriendDialog* editor) {
    editor->setAttribute(Qt::WA_DeleteOnClose);
    connect(editor, &AddEditFriendDialog::sigSaved, this, &Manage_Friend_Dialog::reload);
    editor->open();
}

void Manage_Friend_Dialog::askToDelete() {
    const QTreeWidgetItem* const item = demandOne(tr("请选择要删除的好友!"));
    if (item == nullptr)
        return;
    TipDialog::offer(
        {.title = tr("提示"),
         .text = tr("删除该好友后，所有分享给\n该好友的设备从好友账户中解除，\n好友分享给自己的设备也被解除!"),
         .accept = tr("确定"),
         .reject = tr("取消"),
         .destructive = true},
        this, {.accepted = [this, phone = keyOf(*item)] {
            deleteFriend(phone);
        }});
}

void Manage_Friend_Dialog::deleteFriend(const QString& phone) {
    account::send(context(), this,
                  {.operation = QStringLiteral("删除好友"),
                   .parameters = {{QStringLiteral("friendphone"), phone}},
                   .busy = delete_,
                   .done = [this, phone](const QVariantMap&) {
                       account::logChange(context().operationLog, context().gateway.phoneId(),
                                          account::Change::FriendDeleted, phone);
                       account::tell(tr("删除好友成功!"), this);
                       reload();
                   }});
}
