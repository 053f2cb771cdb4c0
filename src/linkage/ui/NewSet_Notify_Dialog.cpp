#include "linkage/ui/NewSet_Notify_Dialog.h"

#include "account/ui/AccountForm.h"
#include "base/DeviceModel.h"
#include "base/SdkGateway.h"
#include "base/ui/PlainToolTip.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"
#include "linkage/Boards.h"
#include "linkage/LinkageLog.h"
#include "linkage/ui/CheckPicker.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <utility>

namespace account = corvanta::account;
namespace linkage = corvanta::linkage;
namespace theme = corvanta::theme;
using linkage::NotifyRule;

namespace {

constexpr int LongestName = 64;
const QSize Usual(600, 400); // px
/// The own account among the receivers; no number of anybody.
const QString OwnId = QStringLiteral("self");

QPushButton* makeButton(const QString& text, const QString& name, const QString& objectName, QWidget* parent) {
    auto* const button = new QPushButton(text, parent);
    button->setObjectName(objectName);
    button->setAccessibleName(name);
    button->setAutoDefault(false);
    return button;
}

} // namespace

NewSet_Notify_Dialog::NewSet_Notify_Dialog(const AppContext& context, NotifyRule rule, const QVariantList& friends,
                                           const linkage::SystemNames& names, QWidget* parent)
    : FramedDialog(rule.id ? tr("编辑通知规则") : tr("新增通知规则"), parent)
    , context_(context)
    , rule_(std::move(rule))
    , friends_(linkage::receiversOf(friends))
    , names_(names) {
    setObjectName(QStringLiteral("NewSet_Notify_Dialog"));
    setAccessibleName(windowTitle());
    setAttribute(Qt::WA_DeleteOnClose);
    setSizeGripEnabled(true);
    auto* const tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("ruleTabs"));
    tabs->setAccessibleName(windowTitle());
    tabs->addTab(makeRulePage(), tr("通知规则"));
    tabs->addTab(makeTemplate(tr("短信模板"), "smsTemplate", &NotifyRule::smsTemplate), tr("短信模板"));
    tabs->addTab(makeTemplate(tr("APP模板"), "appTemplate", &NotifyRule::appTemplate), tr("APP模板"));
    body()->addWidget(tabs, 1);
    save_ = addButton(tr("保存"), QStringLiteral("ruleSave"), true);
    connect(save_, &QPushButton::clicked, this, &NewSet_Notify_Dialog::save);
    connect(addButton(tr("取消"), QStringLiteral("ruleCancel"), false), &QPushButton::clicked, this,
            &NewSet_Notify_Dialog::reject);
    showPicked();
    resize(Usual);
    name_->setFocus();
}

QWidget* NewSet_Notify_Dialog::makeRulePage() {
    auto* const page = new QWidget(this);
    QFormLayout* const form = account::makeForm();
    form->setVerticalSpacing(2 * theme::Step);
    name_ = account::addField(*form, tr("通知策略名称"), tr("通知策略名称"), QStringLiteral("ruleName"));
    name_->setMaxLength(LongestName);
    name_->setText(rule_.name);
    addPick(*form, tr("接收人"), "ruleReceivers", receivers_, [this] { pickReceivers(); });
    addPick(*form, tr("关注设备"), "ruleDevices", devices_, [this] { pickDevices(); });
    addCodes(*form, tr("接收通知类型"), "ruleType", names_.reportTypes, &NotifyRule::types);
    addCodes(*form, tr("接收方式"), "ruleMode", names_.reportModes, &NotifyRule::modes);
    addCodes(*form, tr("短信接收等级"), "ruleSmsLevel", linkage::levels(), &NotifyRule::smsLevels);
    addCodes(*form, tr("APP接收等级"), "ruleAppLevel", linkage::levels(), &NotifyRule::appLevels);
    enable_ = new QCheckBox(tr("启用"), page);
    enable_->setObjectName(QStringLiteral("ruleEnable"));
    enable_->setAccessibleName(tr("启用"));
    enable_->setChecked(rule_.enable);
    form->addRow(tr("状态"), enable_);
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(3 * theme::Step, 3 * theme::Step, 3 * theme::Step, 3 * theme::Step);
    column->addLayout(form);
    column->addStretch(1);
    return page;
}

void NewSet_Notify_Dialog::addPick(QFormLayout& form, const QString& label, const char* objectName, QLineEdit*& shown,
                                   std::function<void()> pick) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(2 * theme::Step);
    shown = new QLineEdit(this);
    shown->setObjectName(QLatin1String(objectName));
    shown->setAccessibleName(label);
    shown->setReadOnly(true);
    QPushButton* const button =
        makeButton(tr("选择"), tr("选择%1").arg(label), QLatin1String(objectName) + QStringLiteral("Pick"), this);
    connect(button, &QPushButton::clicked, this, std::move(pick));
    row->addWidget(shown, 1);
    row->addWidget(button);
    form.addRow(label, row);
}

void NewSet_Notify_Dialog::addCodes(QFormLayout& form, const QString& label, const char* objectName,
                                    const linkage::Words& words, QStringList NotifyRule::*field) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(3 * theme::Step);
    Codes codes{field, {}};
    for (const linkage::Word& word : words) {
        auto* const box = new QCheckBox(word.text, this);
        box->setObjectName(QLatin1String(objectName) + QLatin1Char('_') + word.code);
        box->setAccessibleName(tr("%1%2").arg(label, word.text));
        box->setChecked((rule_.*field).contains(word.code));
        codes.boxes.append({word.code, box});
        row->addWidget(box);
    }
    row->addStretch(1);
    codes_ += codes;
    form.addRow(label, row);
}

QWidget* NewSet_Notify_Dialog::makeTemplate(const QString& label, const char* objectName,
                                            QString NotifyRule::*field) {
    auto* const page = new QWidget(this);
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(3 * theme::Step, 3 * theme::Step, 3 * theme::Step, 3 * theme::Step);
    column->setSpacing(2 * theme::Step);
    const QString name = QLatin1String(objectName);
    auto* const edit = new QPlainTextEdit(rule_.*field, page);
    edit->setObjectName(name);
    edit->setAccessibleName(label);
    edit->setTabChangesFocus(true);
    column->addWidget(edit, 1);
    templates_.append({field, edit});
    auto* const row = new QHBoxLayout;
    QPushButton* const insert =
        makeButton(tr("插入"), tr("%1插入").arg(label), name + QStringLiteral("Insert"), page);
    auto* const menu = new QMenu(insert);
    menu->setObjectName(name + QStringLiteral("Menu"));
    for (const linkage::Word& word : linkage::placeholders())
        menu->addAction(word.text, edit, [edit, code = word.code] { edit->insertPlainText(code); });
    insert->setMenu(menu);
    QPushButton* const preview =
        makeButton(tr("预览"), tr("%1预览").arg(label), name + QStringLiteral("Preview"), page);
    connect(preview, &QPushButton::clicked, this,
            [this, edit] { TipDialog::tell(tr("预览"), linkage::previewOf(edit->toPlainText()), this); });
    row->addWidget(insert);
    row->addWidget(preview);
    row->addStretch(1);
    column->addLayout(row);
    return page;
}

void NewSet_Notify_Dialog::showPicked() {
    receivers_->setText(linkage::receiverTexts(rule_, friends_));
    devices_->setText(linkage::deviceTexts(rule_, context_.devices));
    for (QLineEdit* const shown : {receivers_, devices_}) {
        shown->setToolTip(corvanta::plainToolTip(shown->text()));
        shown->setCursorPosition(0);
    }
}

void NewSet_Notify_Dialog::pickReceivers() {
    QList<CheckPicker::Entry> entries{{OwnId, linkage::ownReceiver(), context_.gateway.phoneId()}};
    QStringList known;
    for (const linkage::Receiver& one : friends_) {
        entries += CheckPicker::Entry{one.phone, one.name, one.phone};
        known += one.phone;
    }
    for (const QString& phone : qAsConst(rule_.phones)) { // of friends who are none any more
        if (!known.contains(phone))
            entries += CheckPicker::Entry{phone, phone, {}};
    }
    QStringList chosen = rule_.phones;
    if (rule_.selfUse)
        chosen += OwnId;
    const auto accepted = [this](QStringList ids) {
        rule_.selfUse = ids.removeAll(OwnId) > 0;
        rule_.phones = ids;
        showPicked();
    };
    (new CheckPicker(tr("接收人"), entries, chosen, accepted, this))->open();
}

void NewSet_Notify_Dialog::pickDevices() {
    if (!rule_.selfUse && rule_.phones.isEmpty()) {
        account::tell(tr("请先选择接收人!"), this);
        return;
    }
    const QStringList watchable = linkage::watchableDevices(context_.devices);
    if (watchable.isEmpty()) {
        account::tell(tr("没有可选的设备!"), this);
        return;
    }
    QList<CheckPicker::Entry> entries;
    for (const QString& ipncId : watchable)
        entries += CheckPicker::Entry{ipncId, context_.devices.device(ipncId)->displayName(), ipncId};
    // What the rule watches and cannot be watched any more can be taken out.
    for (const QString& ipncId : qAsConst(rule_.ipncIds)) {
        if (!watchable.contains(ipncId))
            entries += CheckPicker::Entry{ipncId, linkage::deletedText(ipncId), {}};
    }
    const auto accepted = [this](const QStringList& ids) {
        rule_.ipncIds = ids;
        showPicked();
    };
    (new CheckPicker(tr("关注设备"), entries, rule_.ipncIds, accepted, this))->open();
}

void NewSet_Notify_Dialog::readRule() {
    rule_.name = name_->text().trimmed();
    rule_.enable = enable_->isChecked();
    for (const Template& one : qAsConst(templates_))
        rule_.*one.field = one.edit->toPlainText();
    for (const Codes& codes : qAsConst(codes_)) {
        QStringList& list = rule_.*codes.field;
        for (const auto& [code, box] : codes.boxes) {
            list.removeAll(code);
            if (box->isChecked())
                list += code;
        }
    }
}

void NewSet_Notify_Dialog::save() {
    readRule();
    if (const auto problem = linkage::checkRule(rule_)) {
        account::tell(*problem, this);
        return;
    }
    const bool isNew = !rule_.id.has_value();
    account::send(context_, this,
                  {.operation = QStringLiteral("提交通知规则"),
                   .parameters = {{QStringLiteral("reportrules"), rule_.toMap()}},
                   .busy = save_,
                   .done = [this, isNew, name = rule_.name](const QVariantMap&) {
                       linkage::logChange(
                           context_.operationLog, context_.gateway.phoneId(), linkage::LogSubject::Rules,
                           isNew ? QStringLiteral("新增通知规则") : QStringLiteral("编辑通知规则"), name);
                       account::tell(tr("保存成功!"), parentWidget());
                       emit sigSaved();
                       accept();
                   }});
}
