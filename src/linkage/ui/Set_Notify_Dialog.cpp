#include "linkage/ui/Set_Notify_Dialog.h"

#include "account/ui/AccountForm.h"
#include "base/AppEvents.h"
#include "base/SdkGateway.h"
#include "base/ui/PlainToolTip.h"
#include "base/ui/TipDialog.h"
#include "linkage/LinkageLog.h"
#include "linkage/ui/NewSet_Notify_Dialog.h"

#include <QPushButton>
#include <QTreeWidget>

namespace account = corvanta::account;
namespace linkage = corvanta::linkage;

namespace {
const QSize Usual(760, 400); // px
enum Column { IdColumn, NumberColumn, NameColumn };
} // namespace

Set_Notify_Dialog::Set_Notify_Dialog(const AppContext& context, QWidget* parent)
    : ListDialog(context, tr("通知规则"),
                 {tr("ID"), tr("编号"), tr("通知策略名称"), tr("接收人"), tr("关注分组"), tr("关注设备"),
                  tr("接收通知类型"), tr("接收方式"), tr("短信接收等级"), tr("APP接收等级"), tr("状态")},
                 tr("还没有通知规则，点击“新增”新建一个"), parent) {
    setObjectName(QStringLiteral("Set_Notify_Dialog"));
    list().setSelectionMode(QAbstractItemView::SingleSelection);
    list().setColumnWidth(IdColumn, 56); // px
    list().setColumnWidth(NumberColumn, 56);
    list().sortByColumn(NumberColumn, Qt::AscendingOrder);
    add_ = addButton(tr("新增"), QStringLiteral("ruleAdd"), false);
    edit_ = addButton(tr("编辑"), QStringLiteral("ruleEdit"), false);
    delete_ = addButton(tr("删除"), QStringLiteral("ruleDelete"), false);
    connect(add_, &QPushButton::clicked, this, [this] { openEditor({}); });
    connect(edit_, &QPushButton::clicked, this, &Set_Notify_Dialog::edit);
    connect(&list(), &QTreeWidget::itemActivated, this, &Set_Notify_Dialog::edit);
    connect(delete_, &QPushButton::clicked, this, &Set_Notify_Dialog::askToDelete);
    connect(&context.events, qOverload<QVariantList, QVariantMap>(&AppEvents::sig_updateList), this,
            &Set_Notify_Dialog::fill); // names of devices and groups
    resize(Usual);
    allowEditing();
    account::send(context, this,
                  {.operation = QStringLiteral("获取下拉名称列表"), .done = [this](const QVariantMap& resp) {
                       names_ = linkage::SystemNames::fromReply(resp);
                       hasNames_ = true;
                       fill();
                   }});
    onUpTableData();
}

void Set_Notify_Dialog::onUpTableData() {
    account::send(context(), this,
                  {.operation = QStringLiteral("获取通知规则"), .done = [this](const QVariantMap& resp) {
                       rules_.clear();
                       const QVariantList rules = resp.value(QStringLiteral("reportrules")).toList();
                       for (const QVariant& rule : rules)
                           rules_ += linkage::NotifyRule::fromMap(rule.toMap());
                       friends_ = resp.value(QStringLiteral("friendlist")).toList();
                       hasRules_ = true;
                       fill();
                   }});
}

void Set_Notify_Dialog::allowEditing() {
    for (QPushButton* const button : {add_, edit_})
        button->setEnabled(hasNames_ && hasRules_);
}

void Set_Notify_Dialog::fill() {
    allowEditing();
    const QList<linkage::Receiver> receivers = linkage::receiversOf(friends_);
    beginFill();
    for (int index = 0; index < rules_.size(); ++index) {
        const linkage::NotifyRule& rule = rules_[index];
        QTreeWidgetItem* const row = addRow(
            QString::number(index),
            {rule.id ? QString::number(*rule.id) : QString(), QString::number(index + 1), rule.name,
             linkage::receiverTexts(rule, receivers), linkage::groupTexts(rule, context().devices),
             linkage::deviceTexts(rule, context().devices), linkage::textsOf(names_.reportTypes, rule.types),
             linkage::textsOf(names_.reportModes, rule.modes), linkage::textsOf(linkage::levels(), rule.smsLevels),
             linkage::textsOf(linkage::levels(), rule.appLevels), rule.enable ? tr("启用") : tr("禁用")});
        for (int column = NameColumn; column < row->columnCount(); ++column)
            row->setToolTip(column, corvanta::plainToolTip(row->text(column)));
    }
    endFill();
}

void Set_Notify_Dialog::openEditor(const linkage::NotifyRule& rule) {
    auto* const editor = new NewSet_Notify_Dialog(context(), rule, friends_, names_, this); // deletes itself
    connect(editor, &NewSet_Notify_Dialog::sigSaved, this, &Set_Notify_Dialog::onUpTableData);
    editor->open();
}

void Set_Notify_Dialog::edit() {
    if (!edit_->isEnabled())
        return;
    if (const QTreeWidgetItem* const row = demandOne(tr("请选择一个通知策略!")))
        openEditor(rules_.at(keyOf(*row).toInt()));
}

void Set_Notify_Dialog::askToDelete() {
    const QTreeWidgetItem* const row = demandOne(tr("请选择要删除的通知策略!"));
    if (row == nullptr)
        return;
    const linkage::NotifyRule& rule = rules_.at(keyOf(*row).toInt());
    TipDialog::offer({.title = tr("提示"),
                      .text = tr("请确认删除!"),
                      .accept = tr("确定"),
                      .reject = tr("取消"),
                      .destructive = true},
                     this, {.accepted = [this, id = rule.id.value_or(0), name = rule.name] {
                         sendDelete(id, name);
                     }});
}

void Set_Notify_Dialog::sendDelete(int id, const QString& name) {
    account::send(context(), this,
                  {.operation = QStringLiteral("删除通知规则"),
                   .parameters = {{QStringLiteral("reportrulesid"), id}},
                   .busy = delete_,
                   .done = [this, name](const QVariantMap&) {
                       linkage::logChange(context().operationLog, context().gateway.phoneId(),
                                          linkage::LogSubject::Rules, QStringLiteral("删除通知规则"), name);
                       account::tell(tr("删除成功!"), this);
                       onUpTableData();
                   }});
}
