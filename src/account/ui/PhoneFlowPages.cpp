#include "account/ui/PhoneFlowPages.h"

#include "account/AccountLog.h"
#include "account/ui/AccountForm.h"
#include "base/ui/Theme.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <QVariant>

namespace account = corvanta::account;
namespace theme = corvanta::theme;
using account::PhoneFlow;

namespace {

constexpr int Second = 1000;         // ms
constexpr int LongestNumber = 64;    // characters
constexpr int LongestCode = 16;      // characters
constexpr int CodeButtonWidth = 168; // px, so that the countdown does not move what stands beside it

account::Change changeOf(account::FlowUse use) {
    switch (use) {
    case account::FlowUse::Register:
        return account::Change::Registered;
    case account::FlowUse::Recover:
        return account::Change::Recovered;
    case account::FlowUse::ChangePassword:
        return account::Change::PasswordChanged;
    case account::FlowUse::Rebind:
        break;
    }
    return account::Change::Rebound;
}

} // namespace

PhoneFlowPages::PhoneFlowPages(const AppContext& context, account::FlowUse use, QWidget* parent)
    : QWidget(parent)
    , context_(context)
    , flow_(use) {
    setObjectName(QStringLiteral("phoneFlow"));
    setAccessibleName(PhoneFlow::text(flow_.rules().title));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4 * theme::Step);
    pages_ = new QStackedWidget(this);
    column->addWidget(pages_, 1);
    addNumberPage();
    addCodePage();
    addPasswordPage();
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(2 * theme::Step);
    buttons->addStretch(1);
    const auto addButton = [this, buttons](const QString& text, const char* objectName) {
        auto* const button = new QPushButton(text, this);
        button->setObjectName(QLatin1String(objectName));
        button->setAccessibleName(text);
        button->setMinimumWidth(88); // px
        buttons->addWidget(button);
        return button;
    };
    back_ = addButton(tr("上一步"), "flowBack");
    back_->setAutoDefault(false);
    forward_ = addButton(tr("下一步"), "flowForward");
    forward_->setDefault(true);
    forward_->setProperty("primary", true);
    column->addLayout(buttons);
    connect(back_, &QPushButton::clicked, this, &PhoneFlowPages::back);
    connect(forward_, &QPushButton::clicked, this, &PhoneFlowPages::forward);
    clock_.setInterval(Second);
    connect(&clock_, &QTimer::timeout, this, &PhoneFlowPages::tick);
    showPage(NumberPage);
    showCountdown();
}

QFormLayout* PhoneFlowPages::addPage(const char* hint, const char* objectName) {
    auto* const page = new QWidget(pages_);
    page->setObjectName(QLatin1String(objectName));
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(3 * theme::Step);
    auto* const label = new QLabel(PhoneFlow::text(hint), page);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    column->addWidget(label);
    QFormLayout* const form = account::makeForm();
    column->addLayout(form);
    column->addStretch(1);
    pages_->addWidget(page);
    return form;
}

QPushButton* PhoneFlowPages::makeCodeButton(const QString& objectName) {
    auto* const button = new QPushButton(this);
    button->setObjectName(objectName);
    button->setAutoDefault(false);
    button->setFixedWidth(CodeButtonWidth);
    connect(button, &QPushButton::clicked, this, &PhoneFlowPages::askForCode);
    return button;
}

void PhoneFlowPages::addNumberPage() {
    QFormLayout* const form = addPage(flow_.rules().numberHint, "numberPage");
    if (flow_.rules().asksRegion) {
        region_ = new QComboBox(this);
        region_->setObjectName(QStringLiteral("region"));
        region_->setAccessibleName(tr("国家地区"));
        for (const account::Region& region : account::Regions)
            region_->addItem(PhoneFlow::text(region.name), QString::fromLatin1(region.code));
        form->addRow(tr("国家地区"), region_);
    }
    number_ = account::addField(*form, tr("手机号"), tr("手机号"), QStringLiteral("flowNumber"));
    number_->setMaxLength(LongestNumber);
    codeButtons_[NumberPage] = makeCodeButton(QStringLiteral("getCode"));
    form->addRow(QString(), codeButtons_[NumberPage]);
}

void PhoneFlowPages::addCodePage() {
    QFormLayout* const form = addPage(flow_.rules().codeHint, "codePage");
    sentTo_ = new QLabel(this);
    sentTo_->setObjectName(QStringLiteral("flowNumberShown"));
    sentTo_->setTextFormat(Qt::PlainText);
    form->addRow(tr("手机号"), sentTo_);
    code_ = account::addField(*form, tr("验证码"), tr("验证码"), QStringLiteral("flowCode"));
    code_->setMaxLength(LongestCode);
    codeButtons_[CodePage] = makeCodeButton(QStringLiteral("getCodeAgain"));
    form->addRow(QString(), codeButtons_[CodePage]);
}

void PhoneFlowPages::addPasswordPage() {
    const account::FlowRules& rules = flow_.rules();
    if (rules.passwordHint == nullptr)
        return;
    QFormLayout* const form = addPage(rules.passwordHint, "passwordPage");
    const auto addPassword = [form](const QString& label, const char* objectName) {
        QLineEdit* const edit = account::addField(*form, label, label, QLatin1String(objectName));
        edit->setEchoMode(QLineEdit::Password);
        return edit;
    };
    password_ = addPassword(PhoneFlow::text(rules.passwordLabel), "flowPassword");
    password_->setPlaceholderText(tr("8~16位"));
    repeated_ = addPassword(PhoneFlow::text(rules.repeatLabel), "flowRepeated");
}

QString PhoneFlowPages::number() const {
    return number_->text().trimmed();
}

void PhoneFlowPages::setNumber(const QString& number, bool isFixed) {
    number_->setText(number);
    number_->setEnabled(!isFixed);
}

void PhoneFlowPages::restart() {
    for (QLineEdit* const edit : {code_, password_, repeated_}) {
        if (edit != nullptr)
            edit->clear();
    }
    showPage(NumberPage);
}

void PhoneFlowPages::showPage(int page) {
    pages_->setCurrentIndex(page);
    back_->setVisible(page > NumberPage);
    forward_->setText(page + 1 < pages_->count() ? tr("下一步") : tr("提交"));
    forward_->setAccessibleName(forward_->text());
    sentTo_->setText(number());
    QLineEdit* const first = page == NumberPage ? number_ : page == CodePage ? code_ : password_;
    first->setFocus();
}

void PhoneFlowPages::back() {
    if (pages_->currentIndex() > NumberPage)
        showPage(pages_->currentIndex() - 1);
}

void PhoneFlowPages::forward() {
    switch (pages_->currentIndex()) {
    case NumberPage:
        leaveNumberPage();
        break;
    case CodePage:
        leaveCodePage();
        break;
    default:
        leavePasswordPage();
    }
}

void PhoneFlowPages::tick() {
    flow_.countdown().tick();
    showCountdown();
}

void PhoneFlowPages::showCountdown() {
    const CodeCountdown& countdown = flow_.countdown();
    for (QPushButton* const button : codeButtons_) {
        button->setText(countdown.buttonText());
        button->setAccessibleName(button->text());
        button->setEnabled(!countdown.isRunning());
    }
    if (!countdown.isRunning())
        clock_.stop();
}

void PhoneFlowPages::askForCode() {
    if (flow_.countdown().isRunning())
        return;
    const QString wanted = number();
    if (const auto problem = flow_.checkNumber(wanted)) {
        account::tell(*problem, this);
        return;
    }
    if (!flow_.rules().wantsRegistered) {
        sendCode(wanted);
        return;
    }
    account::send(context_, this,
                  {.operation = QStringLiteral("验证是否注册"),
                   .parameters = {{QStringLiteral("phonenumber"), wanted}},
                   .busy = codeButtons_[pages_->currentIndex()],
                   .done = [this, wanted](const QVariantMap& resp) {
                       const bool isRegistered = resp.value(QStringLiteral("registered")).toBool();
                       if (const auto problem = flow_.checkRegistered(isRegistered))
                           account::tell(*problem, this);
                       else
                           sendCode(wanted);
                   }});
}

void PhoneFlowPages::sendCode(const QString& wanted) {
    QVariantMap parameters{{QStringLiteral("phonenumber"), wanted}};
    if (region_ != nullptr)
        parameters.insert(QStringLiteral("countrycode"), region_->currentData());
    account::send(context_, this,
                  {.operation = QString::fromUtf8(flow_.rules().codeOperation),
                   .parameters = parameters,
                   .busy = codeButtons_[pages_->currentIndex()],
                   .done = [this, wanted](const QVariantMap&) {
                       flow_.codeRequested(wanted);
                       showCountdown();
                       clock_.start();
                   }});
}

void PhoneFlowPages::leaveNumberPage() {
    if (const auto problem = flow_.checkNumber(number()))
        account::tell(*problem, this);
    else
        showPage(CodePage);
}

void PhoneFlowPages::leaveCodePage() {
    const QString code = code_->text().trimmed();
    if (const auto problem = flow_.checkCode(number(), code)) {
        account::tell(*problem, this);
        return;
    }
    account::send(context_, this,
                  {.operation = QStringLiteral("验证短信验证码是否正确"),
                   .parameters = {{QStringLiteral("phonenumber"), number()}, {QStringLiteral("checkcode"), code}},
                   .busy = forward_,
                   .done =
                       [this](const QVariantMap&) {
                           if (password_ != nullptr)
                               showPage(PasswordPage);
                           else
                               submit(QString());
                       },
                   .refusal =
                       [this](const QString& refused, const QString& text) {
                           return flow_.codeRefusal(refused, text);
                       }});
}

void PhoneFlowPages::leavePasswordPage() {
    if (const auto problem = flow_.checkPasswords(password_->text(), repeated_->text()))
        account::tell(*problem, this);
    else
        submit(password_->text());
}

void PhoneFlowPages::submit(const QString& password) {
    QVariantMap parameters{{QStringLiteral("phonenumber"), number()}};
    if (password_ != nullptr)
        parameters.insert(QStringLiteral("phonepassword"), password);
    account::send(context_, this,
                  {.operation = QString::fromUtf8(flow_.rules().submitOperation),
                   .parameters = parameters,
                   .busy = forward_,
                   .done =
                       [this, wanted = number(), password](const QVariantMap&) {
                           account::logChange(context_.operationLog, wanted, changeOf(flow_.use()), wanted);
                           emit sigDone(wanted, password);
                       },
                   .refusal =
                       [this](const QString& refused, const QString& text) {
                           return flow_.codeRefusal(refused, text);
                       }});
}
