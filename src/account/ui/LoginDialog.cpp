#include "account/ui/LoginDialog.h"

#include "account/AccountFlags.h"
#include "account/SignIn.h"
#include "account/ui/AccountForm.h"
#include "account/ui/RePasswordDialog.h"
#include "account/ui/Rebindphonewidget.h"
#include "account/ui/RegisterDialog.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ui/FaintHint.h"
#include "base/ui/SendAndReact.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace account = corvanta::account;
namespace theme = corvanta::theme;

namespace {
constexpr int LongestEntry = 64; // characters
} // namespace

LoginDialog::LoginDialog(const AppContext& context, bool automatic, QWidget* parent)
    : FramedDialog(tr("登录"), parent)
    , context_(context)
    , remembered_(context.database, context.vault) {
    setObjectName(QStringLiteral("LoginDialog"));
    setAccessibleName(tr("登录"));
    addFields();
    addChecks();
    hint_ = new QLabel(this);
    hint_->setObjectName(QStringLiteral("hint"));
    hint_->setAccessibleName(tr("提示"));
    hint_->setTextFormat(Qt::PlainText);
    hint_->setWordWrap(true);
    hint_->hide();
    body()->addWidget(hint_);
    addLinks();
    signIn_ = addButton(tr("登      录"), QStringLiteral("signIn"), true);
    signIn_->setAccessibleName(tr("登录"));
    connect(signIn_, &QPushButton::clicked, this, &LoginDialog::signIn);
    setTabs();
    offerRemembered(automatic);
    numbers_->setFocus();
    numbers_->lineEdit()->selectAll();
}

void LoginDialog::addFields() {
    QFormLayout* const form = account::makeForm();
    numbers_ = new QComboBox(this);
    numbers_->setObjectName(QStringLiteral("phoneNumberBox"));
    numbers_->setAccessibleName(tr("手机号"));
    numbers_->setEditable(true);
    numbers_->setInsertPolicy(QComboBox::NoInsert);
    numbers_->setCompleter(nullptr);
    numbers_->setMinimumWidth(260); // px
    QLineEdit* const number = numbers_->lineEdit();
    number->setObjectName(QStringLiteral("phoneNumber"));
    number->setAccessibleName(tr("手机号"));
    number->setMaxLength(LongestEntry);
    number->setPlaceholderText(tr("手机号(与手机客户端共用)"));
    corvanta::faintHint(*number);
    forget_ = new QToolButton(this);
    forget_->setObjectName(QStringLiteral("forgetNumber"));
    forget_->setAccessibleName(tr("不再记住该账号"));
    forget_->setToolTip(tr("不再记住该账号"));
    forget_->setIcon(corvanta::svgIcon(QStringLiteral("remove"), theme::TextOnLight));
    auto* const row = new QHBoxLayout;
    row->setSpacing(theme::Step);
    row->addWidget(numbers_, 1);
    row->addWidget(forget_);
    form->addRow(tr("手机号"), row);
    password_ = account::addField(*form, tr("密    码"), tr("密码"), QStringLiteral("phonePassword"));
    password_->setMaxLength(LongestEntry);
    password_->setEchoMode(QLineEdit::Password);
    body()->addLayout(form);
    numbers_->setFixedHeight(password_->sizeHint().height()); // an edit inside a box would be lower
    connect(forget_, &QToolButton::clicked, this, &LoginDialog::forgetNumber);
    connect(number, &QLineEdit::textChanged, this, &LoginDialog::showForget);
    connect(numbers_, qOverload<int>(&QComboBox::activated), this,
            [this](int index) { fillPassword(numbers_->itemText(index), false); });
}

void LoginDialog::addChecks() {
    const auto add = [this](QHBoxLayout& row, const QString& text, const char* objectName, bool on) {
        auto* const check = new QCheckBox(text, this);
        check->setObjectName(QLatin1String(objectName));
        check->setAccessibleName(text);
        check->setChecked(on);
        row.addWidget(check);
        return check;
    };
    auto* const row = new QHBoxLayout;
    row->setSpacing(6 * theme::Step);
    savePassword_ = add(*row, tr("记住密码"), "savePassword", context_.accountFlags.savePassword());
    autoLogin_ = add(*row, tr("自动登录"), "autoLogin", context_.accountFlags.autoLogin());
    row->addStretch(1);
    body()->addLayout(row);
    connect(savePassword_, &QCheckBox::toggled, this, [this](bool on) {
        context_.accountFlags.setSavePassword(on);
        if (!on)
            autoLogin_->setChecked(false); // there is nothing to sign in with
    });
    connect(autoLogin_, &QCheckBox::toggled, this, [this](bool on) {
        context_.accountFlags.setAutoLogin(on);
        if (on)
            savePassword_->setChecked(true);
    });
}

QPushButton* LoginDialog::addLink(QHBoxLayout& row, const QString& text, const char* objectName) {
    auto* const link = new QPushButton(text, this);
    link->setObjectName(QLatin1String(objectName));
    link->setAccessibleName(text);
    link->setAutoDefault(false);
    link->setProperty("role", QStringLiteral("link"));
    link->setCursor(Qt::PointingHandCursor);
    row.addWidget(link);
    links_ += link;
    return link;
}

void LoginDialog::addLinks() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(4 * theme::Step);
    connect(addLink(*row, tr("免费注册"), "register"), &QPushButton::clicked, this,
            [this] { openFlow(new RegisterDialog(context_, QString(), this)); });
    connect(addLink(*row, tr("忘记密码"), "recover"), &QPushButton::clicked, this,
            [this] { openFlow(new RePasswordDialog(context_, number(), this)); });
    connect(addLink(*row, tr("绑定"), "rebind"), &QPushButton::clicked, this, &LoginDialog::rebind);
    row->addStretch(1);
    connect(addLink(*row, tr("代理设置"), "proxy"), &QPushButton::clicked, this, &LoginDialog::sigProxy);
    body()->addLayout(row);
}

void LoginDialog::setTabs() {
    QList<QWidget*> order{numbers_, password_, savePassword_, autoLogin_, signIn_};
    for (QPushButton* const link : qAsConst(links_))
        order += link;
    order += forget_;
    for (int i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void LoginDialog::offerRemembered(bool automatic) {
    numbers_->addItems(remembered_.numbers());
    showForget();
    if (numbers_->count() == 0)
        offerFirstAccount();
    else
        fillPassword(number(), automatic);
}

void LoginDialog::offerFirstAccount() {
    const QVariantMap offered = context_.gateway.document(QStringLiteral("firstaccount"));
    const QString first = offered.value(QStringLiteral("phonenumber")).toString();
    if (first.isEmpty())
        return;
    numbers_->setEditText(first);
    password_->setText(offered.value(QStringLiteral("phonepassword")).toString());
    hint_->setText(tr("首次使用：已填入内置账号，可直接登录。"));
    hint_->show();
}

void LoginDialog::fillPassword(const QString& chosen, bool thenSignIn) {
    password_->clear();
    remembered_.password(chosen, [this, chosen, thenSignIn](const QString& password) {
        if (number() != chosen || !password_->text().isEmpty())
            return; // the user was faster
        password_->setText(password);
        if (thenSignIn && !chosen.isEmpty() && !password.isEmpty())
            signIn();
    });
}

void LoginDialog::forgetNumber() {
    const QString forgotten = number();
    remembered_.forget(forgotten);
    numbers_->removeItem(numbers_->findText(forgotten));
    numbers_->setCurrentIndex(-1);
    numbers_->clearEditText();
    password_->clear();
    numbers_->setFocus();
}

void LoginDialog::showForget() {
    forget_->setEnabled(remembered_.isRemembered(number()));
}

QString LoginDialog::number() const {
    return numbers_->currentText().trimmed();
}

void LoginDialog::signIn() {
    const account::Credentials entries{number(), password_->text()};
    if (const auto problem = account::checkSignIn(entries)) {
        account::tell(*problem, this);
        return;
    }
    setWaiting(true);
    const std::string request = corvanta::requests::accountRequest(
        QStringLiteral("登录账号"),
        {{QStringLiteral("phonenumber"), entries.phoneNumber}, {QStringLiteral("phonepassword"), entries.password}});
    corvanta::sendAndReact(context_.gateway, request, this,
                           {.done = [this, entries](const QVariantMap&) { signedIn(entries); },
                            .failed = [this](const QString& text) { refused(QString(), text); },
                            .refused =
                                [this](const QString& code, const QString& text) {
                                    refused(code, text);
                                }});
}

void LoginDialog::signedIn(const account::Credentials& entries) {
    if (savePassword_->isChecked())
        remembered_.remember(entries);
    else
        remembered_.forget(entries.phoneNumber);
    accept();
}

void LoginDialog::refused(const QString& code, const QString& text) {
    setWaiting(false);
    if (code != QLatin1String("(not bind)")) {
        account::tell(text, this);
        return;
    }
    TipDialog::offer({.title = tr("提示"), .text = text, .accept = tr("绑定"), .reject = tr("取消")}, this,
                     {.accepted = [this] {
                         rebind();
                     }});
}

void LoginDialog::setWaiting(bool waiting) {
    signIn_->setEnabled(!waiting);
    signIn_->setText(waiting ? tr("正在登录...") : tr("登      录"));
}

void LoginDialog::rebind() {
    openFlow(new Rebindphonewidget(context_, number(), this));
}

void LoginDialog::openFlow(PhoneFlowDialog* dialog) {
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &PhoneFlowDialog::sigSignIn, this, [this](const QString& proved) {
        hint_->hide();
        numbers_->setEditText(proved);
        fillPassword(remembered_.isRemembered(proved) ? proved : QString(), false);
        password_->clear();
        password_->setFocus();
    });
    dialog->open();
}
