#include "account/SignIn.h"

#include <QCoreApplication>

namespace corvanta::account {

std::optional<QString> checkSignIn(const Credentials& entries) {
    if (entries.phoneNumber.isEmpty())
        return QCoreApplication::translate("LoginDialog", "账号不能为空，请录入");
    if (entries.password.isEmpty())
        return QCoreApplication::translate("LoginDialog", "密码不能为空，请录入");
    return std::nullopt;
}

} // namespace corvanta::account
