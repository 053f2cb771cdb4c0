#include "account/ui/AddEditFriendDialog.h"

#include "account/AccountLog.h"
#include "account/EntryChecks.h"
#include "account/PhoneFlow.h"
#include "account/ui/AccountForm.h"
#include "base/SdkGateway.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace account = corvanta::account;

AddEditFriendDialog::AddEditFriendDialog(const AppContext& context, QList<FriendRecord> known, QWidget* parent)
    : FramedDialog(tr("添加好友"), parent)
    , context_(context)
    , known_(std::move(known))
    , isNew_(true) {
    build({});
}

AddEditFriendDialog::AddEditFriendDialog(const AppContext& context, const FriendRecord& edited, QWidget* parent)
    : FramedDialog(tr("编辑好友信息"), parent)
    , context_(context)
    , isNew_(false) {
    build(edited);
}

void AddEditFriendDialog::build(const FriendRecord& shown) {
    setObjectName(QStringLiteral("AddEditFriendDialog"));
    setAccessibleName(windowTitle());
    QFormLayout* const form = account::makeForm();
    phone_ = account::addField(*form, tr("好友手机号"), tr("好友手机号"), QStringLiteral("friendPhone"));
    phone_->setText(shown.phone);
    phone_->setEnabled(isNew_);
    QLineEdit* const name = account::addField(*form, tr("好 友 名 称"), tr("好友名称"), QStringLiteral("friendName"));
    name->setText(shown.nickname);
    name->setEnabled(false); // the friend's own
    if (isNew_)
        name->setPlaceholderText(tr("添加成功后显示"));
    remark_ = account::addField(*form, tr("好 友 备 注"), tr("好友备注"), QStringLiteral("friendRemark"));
    remark_->setText(shown.remark);
    body()->addLayout(form);
    save_ = addButton(tr("保存"), QStringLiteral("friendSave"), true);
    auto* const cancel = addButton(tr("取消"), QStringLiteral("friendCancel"), false);
    connect(save_, &QPushButton::clicked, this, &AddEditFriendDialog::save);
    connect(cancel, &QPushButton::clicked, this, &AddEditFriendDialog::reject);
    (isNew_ ? phone_ : remark_)->setFocus();
}

std::optional<QString> AddEditFriendDialog::problem() const {
    const QString phone = phone_->text().trimmed();
    if (phone.isEmpty())
        return tr("请输入好友手机号!");
    if (auto wrongNote = account::checkName(remark_->text().trimmed(), tr("请输入备注!")))
        return wrongNote;
    if (!isNew_)
        return std::nullopt;
    if (std::any_of(known_.begin(), known_.end(), [&phone](const FriendRecord& one) { return one.phone == phone; }))
        return tr("该用户已经是您的好友,无需重复添加!");
    if (!account::isPhoneNumber(phone)) // nobody can have it
        return tr("您输入的手机号有误或者是您要添加的\n好友还未注册，请检查手机号输入或先\n请通知好友在该平台注册成功"
                  "后再添加!");
    return std::nullopt;
}

void AddEditFriendDialog::save() {
    if (const auto text = problem()) {
        account::tell(*text, this);
        return;
    }
    const QString phone = phone_->text().trimmed();
    const QString remark = remark_->text().trimmed();
    account::send(context_, this,
                  {.operation = isNew_ ? QStringLiteral("添加好友") : QStringLiteral("编辑好友备注"),
                   .parameters = {{QStringLiteral("friendphone"), phone}, {QStringLiteral("remarkname"), remark}},
                   .busy = save_,
                   .done =
                       [this, phone, remark](const QVariantMap&) {
                           account::logChange(context_.operationLog, context_.gateway.phoneId(),
                                              isNew_ ? account::Change::FriendAdded : account::Change::FriendEdited,
                                              phone + QLatin1Char(' ') + remark);
                           account::tell(isNew_ ? tr("添加好友成功!") : tr("保存成功!"), parentWidget());
                           emit sigSaved();
                           accept();
                       },
                   .refusal =
                       [](const QString& code, const QString& text) {
                           return code == QLatin1String("(not phonenumber)")
                                      ? tr("您输入的手机号有误或者是您要添加的\n好友还未注册，请检查手机号输入或先\n"
                                           "请通知好友在该平台注册成功后再添加!")
                                      : text;
                       }});
}
