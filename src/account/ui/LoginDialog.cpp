#include "account/ui/LoginDialog.h"

#include "account/SignIn.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ui/FaintHint.h"
#include "base/ui/SendAndReact.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace account = corvanta::account;

namespace {

constexpr int LongestEntry = 64; // characters

QLineEdit* addField(QFormLayout* form, const QString& label, const QString& objectName, QWidget* parent) {
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(objectName);
    edit->setAccessibleName(label);
    edit->setMaxLength(LongestEntry);
    edit->setMinimumWidth(240);
    corvanta::faintHint(*edit);
    form->addRow(label, edit);
    return edit;
}

} // namespace

LoginDialog::LoginDialog(const AppContext& context, bool automatic, QWidget* parent)
    : FramedDialog(tr("登录"), parent)
    , context_(context) {
    setObjectName(QStringLiteral("LoginDialog"));
    setAccessibleName(tr("登录"));
    auto* form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignRight);
    form->setHorizontalSpacing(12);
    form->setVerticalSpacing(12);
    number_ = addField(form, tr("手机号"), QStringLiteral("phoneNumber"), this);
    number_->setPlaceholderText(tr("手机号(与手机客户端共用)"));
    password_ = addField(form, tr("密    码"), QStringLiteral("phonePassword"), this);
    password_->setAccessibleName(tr("密码"));
    password_->setEchoMode(QLineEdit::Password);
    body()->addLayout(form);
    hint_ = new QLabel(this);
    hint_->setObjectName(QStringLiteral("hint"));
    hint_->setAccessibleName(tr("提示"));
    hint_->setTextFormat(Qt::PlainText);
    hint_->hide();
    body()->addWidget(hint_);
    signIn_ = addButton(tr("登      录"), QStringLiteral("signIn"), true);
    signIn_->setAccessibleName(tr("登录"));
    connect(signIn_, &QPushButton::clicked, this, &LoginDialog::signIn);

    offerFirstAccount();
    number_->setFocus();
    if (automatic && !number_->text().isEmpty() && !password_->text().isEmpty())
        QTimer::singleShot(0, this, &LoginDialog::signIn);
}

void LoginDialog::offerFirstAccount() {
    const QVariantMap offered = context_.gateway.document(QStringLiteral("firstaccount"));
    const QString number = offered.value(QStringLiteral("phonenumber")).toString();
    if (number.isEmpty())
        return;
    number_->setText(number);
    password_->setText(offered.value(QStringLiteral("phonepassword")).toString());
    hint_->setText(tr("首次使用：已填入内置账号，可直接登录。"));
    hint_->show();
}

void LoginDialog::signIn() {
    const account::Credentials entries{number_->text().trimmed(), password_->text()};
    if (const auto problem = account::checkSignIn(entries)) {
        showProblem(*problem);
        return;
    }
    showProblem(QString());
    setWaiting(true);
    const std::string request = corvanta::requests::accountRequest(
        QStringLiteral("登录账号"),
        {{QStringLiteral("phonenumber"), entries.phoneNumber}, {QStringLiteral("phonepassword"), entries.password}});
    corvanta::sendAndReact(context_.gateway, request, this,
                           {.done = [this](const QVariantMap&) { accept(); },
                            .failed =
                                [this](const QString& text) {
                                    setWaiting(false);
                                    showProblem(text);
                                }});
}

void LoginDialog::setWaiting(bool waiting) {
    signIn_->setEnabled(!waiting);
    signIn_->setText(waiting ? tr("正在登录...") : tr("登      录"));
}
