#include "linkage/ui/SMSManageDialog.h"

#include "account/ui/AccountForm.h"
#include "base/SdkGateway.h"
#include "base/ui/PlainToolTip.h"
#include "base/ui/Theme.h"
#include "linkage/LinkageLog.h"
#include "linkage/Words.h"
#include "linkage/ui/LinkageForm.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace account = corvanta::account;
namespace linkage = corvanta::linkage;
namespace theme = corvanta::theme;

namespace {

const QSize Usual(620, 400);        // px
constexpr int MostMessages = 99999; // that a reminder may wait for
constexpr int LongestShown = 512;   // characters of a text
const QString SmsNum = QStringLiteral("smsnum");
const QString SmsPhone = QStringLiteral("smsphone");
const QString SmsWarn = QStringLiteral("smswarn");

/// The columns of the records, and the texts of kinds and states as the service names them.
struct Field {
    const char* key;
    const char* text;
    int width; ///< px
};
constexpr Field fields[] = {{"time", QT_TRANSLATE_NOOP("SMSManageDialog", "时间"), 148},
                            {"name", QT_TRANSLATE_NOOP("SMSManageDialog", "接收人"), 80},
                            {"phone", QT_TRANSLATE_NOOP("SMSManageDialog", "手机号"), 104},
                            {"kind", QT_TRANSLATE_NOOP("SMSManageDialog", "类型"), 64},
                            {"state", QT_TRANSLATE_NOOP("SMSManageDialog", "状态"), 72},
                            {"text", QT_TRANSLATE_NOOP("SMSManageDialog", "内容"), 240}};

linkage::Words kinds() {
    return {{QStringLiteral("alarm"), SMSManageDialog::tr("报警")},
            {QStringLiteral("code"), SMSManageDialog::tr("验证码")}};
}

linkage::Words states() {
    return {{QStringLiteral("ok"), SMSManageDialog::tr("成功")},
            {QStringLiteral("error"), SMSManageDialog::tr("失败")},
            {QStringLiteral("nobalance"), SMSManageDialog::tr("余额不足")}};
}

QString shown(const Field& field, const QVariantMap& record) {
    const QString key = QLatin1String(field.key);
    const QString text = record.value(key).toString().left(LongestShown);
    if (key == QLatin1String("kind"))
        return linkage::textOf(kinds(), text);
    return key == QLatin1String("state") ? linkage::textOf(states(), text) : text;
}

} // namespace

SMSManageDialog::SMSManageDialog(const AppContext& context, QWidget* parent)
    : FramedDialog(tr("短信管理"), parent)
    , context_(context) {
    setObjectName(QStringLiteral("SMSManageDialog"));
    setAccessibleName(tr("短信管理"));
    setSizeGripEnabled(true);
    auto* const tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("smsTabs"));
    tabs->setAccessibleName(tr("短信管理"));
    tabs->addTab(makeBasics(), tr("基本信息"));
    tabs->addTab(makeRecords(), tr("发送记录"));
    body()->addWidget(tabs, 1);
    connect(addButton(tr("关闭"), QStringLiteral("smsClose"), false), &QPushButton::clicked, this, &QDialog::reject);
    resize(Usual);
    loadBasics();
    leaf(Way::Next);
}

QWidget* SMSManageDialog::makeBasics() {
    auto* const page = new QWidget(this);
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(4 * theme::Step, 4 * theme::Step, 4 * theme::Step, 4 * theme::Step);
    QFormLayout* const form = account::makeForm();
    left_ = new QLabel(page);
    left_->setObjectName(QStringLiteral("smsLeft"));
    left_->setTextFormat(Qt::PlainText);
    left_->setMinimumHeight(theme::ControlHeight);
    form->addRow(tr("剩余短信条数"), left_);
    phone_ = account::addField(*form, tr("提醒手机号"), tr("提醒手机号"), QStringLiteral("smsPhone"));
    phone_->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]{0,20}")), phone_));
    warnAt_ = account::addField(*form, tr("提醒设定值"), tr("提醒设定值"), QStringLiteral("smsWarn"));
    warnAt_->setValidator(new QIntValidator(0, MostMessages, warnAt_));
    form->addRow(QString(), linkage::makeHint(tr("小于设定值短信提醒充值"), page));
    column->addLayout(form);
    auto* const row = new QHBoxLayout;
    save_ = new QPushButton(tr("保存"), page);
    save_->setObjectName(QStringLiteral("smsSave"));
    save_->setAccessibleName(tr("保存提醒"));
    save_->setEnabled(false); // until it is known what is stored
    row->addStretch(1);
    row->addWidget(save_);
    column->addLayout(row);
    column->addStretch(1);
    connect(save_, &QPushButton::clicked, this, &SMSManageDialog::saveReminder);
    return page;
}

QWidget* SMSManageDialog::makeRecords() {
    auto* const page = new QWidget(this);
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(2 * theme::Step, 2 * theme::Step, 2 * theme::Step, 2 * theme::Step);
    list_ = new QTreeWidget(page);
    list_->setObjectName(QStringLiteral("smsRecords"));
    list_->setAccessibleName(tr("发送记录"));
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    QStringList headers;
    for (const Field& field : fields)
        headers += tr(field.text);
    list_->setHeaderLabels(headers);
    for (int index = 0; index < headers.size(); ++index)
        list_->setColumnWidth(index, fields[index].width);
    column->addWidget(list_, 1);
    empty_ = linkage::makeHint(tr("还没有发送记录"), list_->viewport());
    auto* const middle = new QVBoxLayout(list_->viewport());
    middle->addWidget(empty_, 0, Qt::AlignCenter);
    auto* const row = new QHBoxLayout;
    row->addStretch(1);
    const auto add = [this, page, row](const QString& text, const QString& name, const char* objectName, Way way) {
        auto* const button = new QPushButton(text, page);
        button->setObjectName(QLatin1String(objectName));
        button->setAccessibleName(name);
        button->setToolTip(name);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, way] { leaf(way); });
        row->addWidget(button);
        return button;
    };
    front_ = add(QStringLiteral("<<"), tr("上一步"), "smsFront", Way::Front);
    next_ = add(QStringLiteral(">>"), tr("下一步"), "smsNext", Way::Next);
    column->addLayout(row);
    return page;
}

void SMSManageDialog::loadBasics() {
    account::send(context_, this,
                  {.operation = QStringLiteral("获取个人信息"), .done = [this](const QVariantMap& resp) {
                       const QVariantMap person = resp.value(QStringLiteral("persioninfo")).toMap();
                       left_->setText(tr("%1 条").arg(person.value(SmsNum).toInt()));
                       phone_->setText(person.value(SmsPhone).toString());
                       warnAt_->setText(QString::number(person.value(SmsWarn).toInt()));
                       save_->setEnabled(true);
                   }});
}

void SMSManageDialog::saveReminder() {
    const QString phone = phone_->text();
    const int warnAt = warnAt_->text().toInt();
    account::send(context_, this,
                  {.operation = QStringLiteral("设置手机昵称"),
                   .parameters = {{SmsPhone, phone}, {SmsWarn, warnAt}},
                   .busy = save_,
                   .done = [this, phone, warnAt](const QVariantMap&) {
                       linkage::logChange(context_.operationLog, context_.gateway.phoneId(),
                                          linkage::LogSubject::TextMessages, QStringLiteral("设置短信提醒"),
                                          phone + QLatin1Char(' ') + QString::number(warnAt));
                       account::tell(tr("保存成功!"), this);
                   }});
}

void SMSManageDialog::leaf(Way way) {
    const bool isNext = way == Way::Next;
    account::send(context_, this,
                  {.operation = QStringLiteral("获取短信发送记录"),
                   .parameters = {{QStringLiteral("cmd"), isNext ? QStringLiteral("next") : QStringLiteral("front")},
                                  {QStringLiteral("recid"), isNext ? last_ : first_}},
                   .busy = isNext ? next_ : front_,
                   .done = [this, way](const QVariantMap& resp) {
                       showRecords(way, resp.value(QStringLiteral("records")).toList());
                   }});
}

void SMSManageDialog::showRecords(Way way, const QVariantList& records) {
    empty_->setVisible(records.isEmpty() && list_->topLevelItemCount() == 0);
    if (records.isEmpty()) {
        // The end of the list: what is shown stays.
        (way == Way::Next ? next_ : front_)->setEnabled(false);
        return;
    }
    list_->clear();
    for (const QVariant& entry : records) {
        const QVariantMap record = entry.toMap();
        QStringList texts;
        for (const Field& field : fields)
            texts += shown(field, record);
        auto* const row = new QTreeWidgetItem(list_, texts); // the list owns it
        row->setToolTip(texts.size() - 1, corvanta::plainToolTip(texts.constLast()));
    }
    const auto idOf = [](const QVariant& entry) {
        return entry.toMap().value(QStringLiteral("id")).toLongLong();
    };
    first_ = idOf(records.constFirst());
    last_ = idOf(records.constLast());
    next_->setEnabled(true);
    front_->setEnabled(true);
}
