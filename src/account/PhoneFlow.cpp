#include "account/PhoneFlow.h"

#include <QCoreApplication>

#include <algorithm>

namespace corvanta::account {
namespace {

// The texts are the product's own, down to their marks: they differ from use to use and stay as they are.
constexpr FlowRules Register{
    .title = QT_TRANSLATE_NOOP("PhoneFlow", "注册账号"),
    .numberHint = QT_TRANSLATE_NOOP("PhoneFlow", "选择国家地区，输入手机号。"),
    .numberEmpty = QT_TRANSLATE_NOOP("PhoneFlow", "请输入手机号!"),
    .codeHint = QT_TRANSLATE_NOOP("PhoneFlow", "输入手机收到的验证码。"),
    .codeNotRequested = QT_TRANSLATE_NOOP("PhoneFlow", "请先获取验证码!"),
    .codeEmpty = QT_TRANSLATE_NOOP("PhoneFlow", "请输入验证码!"),
    .codeOver = QT_TRANSLATE_NOOP("PhoneFlow", "验证码已超时!"),
    .codeWrong = QT_TRANSLATE_NOOP("PhoneFlow", "输入的验证码不正确"),
    .passwordHint = QT_TRANSLATE_NOOP("PhoneFlow", "输入账户登录密码。"),
    .passwordLabel = QT_TRANSLATE_NOOP("PhoneFlow", "输入密码"),
    .repeatLabel = QT_TRANSLATE_NOOP("PhoneFlow", "再次输入密码"),
    .success = QT_TRANSLATE_NOOP("PhoneFlow", "注册成功！现在是否要登录？是，请点击登录，否，请点击关闭。"),
    .codeOperation = "发送手机注册验证码",
    .submitOperation = "提交注册手机账号",
    .asksRegion = true,
    .wantsRegistered = false,
    .registrationRefused = QT_TRANSLATE_NOOP("PhoneFlow", "该手机已注册!"),
    .offersSignIn = true,
};

constexpr FlowRules Recover{
    .title = QT_TRANSLATE_NOOP("PhoneFlow", "找回密码"),
    .numberHint = QT_TRANSLATE_NOOP("PhoneFlow", "输入手机号。"),
    .numberEmpty = QT_TRANSLATE_NOOP("PhoneFlow", "手机号为空，请输入正确的手机号!"),
    .codeHint = Register.codeHint,
    .codeNotRequested = Register.codeNotRequested,
    .codeEmpty = Register.codeEmpty,
    .codeOver = Register.codeOver,
    .codeWrong = Register.codeWrong,
    .passwordHint = QT_TRANSLATE_NOOP("PhoneFlow", "输入账户新的登录密码。"),
    .passwordLabel = QT_TRANSLATE_NOOP("PhoneFlow", "输入新密码"),
    .repeatLabel = QT_TRANSLATE_NOOP("PhoneFlow", "再次输入新密码"),
    .success = QT_TRANSLATE_NOOP("PhoneFlow", "密码修改成功！现在是否要登录？是，请点击登录，否，请点击关闭。"),
    .codeOperation = "发送修改密码验证码",
    .submitOperation = "提交修改密码",
    .asksRegion = false,
    .wantsRegistered = true,
    .registrationRefused = QT_TRANSLATE_NOOP("PhoneFlow", "该手机未注册!"),
    .offersSignIn = true,
};

constexpr FlowRules ChangePassword{
    .title = QT_TRANSLATE_NOOP("PhoneFlow", "修改密码"),
    .numberHint = QT_TRANSLATE_NOOP("PhoneFlow", "验证码将发送到当前登录账户的手机。"),
    .numberEmpty = Recover.numberEmpty,
    .codeHint = Register.codeHint,
    .codeNotRequested = Register.codeNotRequested,
    .codeEmpty = QT_TRANSLATE_NOOP("PhoneFlow", "验证码输入为空，请先获取验证码!"),
    .codeOver = Register.codeOver,
    .codeWrong = Register.codeWrong,
    .passwordHint = Recover.passwordHint,
    .passwordLabel = Recover.passwordLabel,
    .repeatLabel = Recover.repeatLabel,
    .success = QT_TRANSLATE_NOOP("PhoneFlow", "密码修改成功！"),
    .codeOperation = Recover.codeOperation,
    .submitOperation = Recover.submitOperation,
    .asksRegion = false,
    .wantsRegistered = std::nullopt,
    .registrationRefused = nullptr,
    .offersSignIn = false,
};

constexpr FlowRules Rebind{
    .title = QT_TRANSLATE_NOOP("PhoneFlow", "重新绑定电脑"),
    .numberHint = Recover.numberHint,
    .numberEmpty = Register.numberEmpty,
    .codeHint = Register.codeHint,
    .codeNotRequested = Register.codeNotRequested,
    .codeEmpty = Register.codeEmpty,
    .codeOver = QT_TRANSLATE_NOOP("PhoneFlow", "验证码超时!"),
    .codeWrong = QT_TRANSLATE_NOOP("PhoneFlow", "输入的验证码不正确!"),
    .passwordHint = nullptr,
    .passwordLabel = nullptr,
    .repeatLabel = nullptr,
    .success = QT_TRANSLATE_NOOP("PhoneFlow", "绑定成功！现在是否要登录？是，请点击登录，否，请点击关闭。"),
    .codeOperation = "发送重新绑定手机验证码",
    .submitOperation = "重新绑定电脑",
    .asksRegion = false,
    .wantsRegistered = std::nullopt,
    .registrationRefused = nullptr,
    .offersSignIn = true,
};

} // namespace

const FlowRules& flowRules(FlowUse use) {
    switch (use) {
    case FlowUse::Register:
        return Register;
    case FlowUse::Recover:
        return Recover;
    case FlowUse::ChangePassword:
        return ChangePassword;
    case FlowUse::Rebind:
        break;
    }
    return Rebind;
}

bool isPhoneNumber(const QString& text) {
    const QString digits = text.startsWith(QLatin1Char('+')) ? text.mid(1) : text;
    constexpr int least = 5;
    constexpr int most = 20;
    return digits.size() >= least && digits.size() <= most &&
           std::all_of(digits.begin(), digits.end(),
                       [](QChar one) { return one >= QLatin1Char('0') && one <= QLatin1Char('9'); });
}

QString PhoneFlow::text(const char* source) {
    return QCoreApplication::translate("PhoneFlow", source);
}

std::optional<QString> PhoneFlow::checkNumber(const QString& number) const {
    if (number.isEmpty())
        return text(rules_.numberEmpty);
    if (!isPhoneNumber(number))
        return text(QT_TRANSLATE_NOOP("PhoneFlow", "手机号格式不正确，请输入5~20位数字!"));
    return std::nullopt;
}

std::optional<QString> PhoneFlow::checkRegistered(bool isRegistered) const {
    if (rules_.wantsRegistered.value_or(isRegistered) != isRegistered)
        return text(rules_.registrationRefused);
    return std::nullopt;
}

void PhoneFlow::codeRequested(const QString& number) {
    codeNumber_ = number;
    countdown_.start();
}

std::optional<QString> PhoneFlow::checkCode(const QString& number, const QString& code) const {
    // A code for another number proves nothing of this one.
    if (!countdown_.wasStarted() || number != codeNumber_)
        return text(rules_.codeNotRequested);
    if (code.isEmpty())
        return text(rules_.codeEmpty);
    if (countdown_.isOver())
        return text(rules_.codeOver);
    return std::nullopt;
}

std::optional<QString> PhoneFlow::checkPasswords(const QString& password, const QString& repeated) const {
    if (password.isEmpty())
        return text(QT_TRANSLATE_NOOP("PhoneFlow", "密码不能为空"));
    if (password != repeated)
        return text(QT_TRANSLATE_NOOP("PhoneFlow", "两次输入的密码不一致"));
    const int length = password.toUcs4().size(); // as the service counts
    if (length < ShortestPassword || length > LongestPassword)
        return text(QT_TRANSLATE_NOOP("PhoneFlow", "密码长度为8~16位"));
    return std::nullopt;
}

QString PhoneFlow::codeRefusal(const QString& errorCode, const QString& refusal) const {
    if (errorCode == QLatin1String("(checkcode error)"))
        return text(rules_.codeWrong);
    if (errorCode == QLatin1String("(checkcode timeout)"))
        return text(rules_.codeOver);
    return refusal;
}

} // namespace corvanta::account
