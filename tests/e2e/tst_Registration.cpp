#include "e2e/AccountTest.h"

#include <QDirIterator>
#include <QtTest>

namespace {
const QString New = QStringLiteral("18600186001");
const QString First = QStringLiteral("ward-7-gate");
const QString Other = QStringLiteral("ward-8-gate");
const QString Again = QStringLiteral("重新获取验证码");
const QString OwnGroup = QStringLiteral("默认分组  0/0");

/// The files below a folder that hold this text as it is.
QStringList filesWith(const QString& text, const QString& folder) {
    QStringList result;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly) && file.readAll().contains(text.toUtf8()))
            result += file.fileName();
    }
    return result;
}
} // namespace

/// Registering, the remembered sign-in, and a forgotten password.
class tst_Registration final : public AccountTest {
    Q_OBJECT
private slots:
    void registersAndIsRemembered();
    void wrongEntries();
    void recoversThePassword();
    void codeRunsOut();

private:
    /// Opens one of the sign-in dialog's flows and enters a number.
    void openFlow(const QString& link, const QString& flow, const QString& number);
};

void tst_Registration::openFlow(const QString& link, const QString& flow, const QString& number) {
    STEP(start());
    STEP(openSignIn());
    STEP(clickIn(SignIn, link));
    fill(flow, QStringLiteral("手机号"), number);
}

void tst_Registration::registersAndIsRemembered() {
    STEP(start());
    STEP(openSignIn());
    STEP(registerNumber(New, First));
    STEP(clickIn(SignIn, QStringLiteral("自动登录"))); // which also remembers
    STEP(clickIn(SignIn, QStringLiteral("密码")));
    Desktop::type(First);
    Desktop::keys({QStringLiteral("Return")});
    STEP(waitForDevices(true));
    QCOMPARE(window().rows(), QStringList{OwnGroup});
    STEP(quit());
    QCOMPARE(filesWith(First, data()), QStringList());

    STEP(start());
    STEP(waitForDevices(true)); // by itself
    QCOMPARE(window().rows(), QStringList{OwnGroup});
    quit();
}

void tst_Registration::wrongEntries() {
    const QString link = QStringLiteral("免费注册");
    STEP(openFlow(link, Register, QString()));
    STEP(clickIn(Register, GetCode));
    STEP(closeTip(QStringLiteral("请输入手机号!")));
    STEP(fill(Register, QStringLiteral("手机号"), QStringLiteral("1860x186002")));
    STEP(clickIn(Register, GetCode));
    STEP(closeTip(QStringLiteral("手机号格式不正确，请输入5~20位数字!")));
    STEP(fill(Register, QStringLiteral("手机号"), Number));
    STEP(clickIn(Register, GetCode));
    STEP(closeTip(QStringLiteral("该手机已注册!")));
    STEP(fill(Register, QStringLiteral("手机号"), New));
    STEP(clickIn(Register, Next));
    STEP(clickIn(Register, Next));
    STEP(closeTip(QStringLiteral("请先获取验证码!")));

    STEP(clickIn(Register, GetCode)); // the page of the code has the button, too
    QString code;
    STEP(readCode(code));
    STEP(clickIn(Register, Next));
    STEP(closeTip(QStringLiteral("请输入验证码!")));
    const QString wrong = code == QStringLiteral("000000") ? QStringLiteral("000001") : QStringLiteral("000000");
    STEP(fill(Register, QStringLiteral("验证码"), wrong));
    STEP(clickIn(Register, Next));
    STEP(closeTip(QStringLiteral("输入的验证码不正确")));
    STEP(fill(Register, QStringLiteral("验证码"), code));
    STEP(clickIn(Register, Next));

    STEP(enterPasswords(Register, QString(), QString()));
    STEP(closeTip(QStringLiteral("密码不能为空")));
    STEP(enterPasswords(Register, First, Other));
    STEP(closeTip(QStringLiteral("两次输入的密码不一致")));
    for (const QString& password : {QStringLiteral("seven-7"), QStringLiteral("seventeen-letters")}) {
        STEP(enterPasswords(Register, password, password));
        STEP(closeTip(QStringLiteral("密码长度为8~16位")));
    }
    // After all that it is still the same flow, and ends well.
    STEP(enterPasswords(Register, First, First));
    STEP(answer(Tip, Close));
    STEP(clickIn(SignIn, QStringLiteral("手机号")));
    typeSignIn(New, First);
    STEP(waitForDevices(true));
    quit();
}

void tst_Registration::recoversThePassword() {
    const QString known = QStringLiteral("13600136000");
    STEP(openFlow(QStringLiteral("忘记密码"), Recover, New));
    STEP(clickIn(Recover, GetCode));
    STEP(closeTip(QStringLiteral("该手机未注册!")));
    STEP(fill(Recover, QStringLiteral("手机号"), known));
    STEP(enterCode(Recover));
    STEP(enterPasswords(Recover, Other, Other));
    STEP(answer(Tip, SignIn));
    COMES(program().isActive(SignIn));
    Desktop::type(Password);
    Desktop::keys({QStringLiteral("Return")});
    STEP(closeTip(QStringLiteral("账号或密码错误!")));
    STEP(clickIn(SignIn, QStringLiteral("手机号")));
    typeSignIn(known, Other);
    STEP(waitForDevices(true));
    quit();
}

void tst_Registration::codeRunsOut() {
    STEP(openFlow(QStringLiteral("免费注册"), Register, New));
    STEP(clickIn(Register, GetCode));
    QString late;
    STEP(readCode(late));
    STEP(clickIn(Register, Next));
    const auto isOver = [this] {
        return !program().dialog(Register).find(Again).isNull();
    };
    QVERIFY(QTest::qWaitFor(isOver, 2 * Desktop::Patience)); // a minute that nothing shortens
    STEP(fill(Register, QStringLiteral("验证码"), late));
    STEP(clickIn(Register, Next));
    STEP(closeTip(QStringLiteral("验证码已超时!")));
    STEP(clickIn(Register, Again));
    QString code;
    STEP(readCode(code));
    STEP(fill(Register, QStringLiteral("验证码"), code));
    STEP(clickIn(Register, Next));
    STEP(enterPasswords(Register, First, First));
    STEP(answer(Tip, SignIn));
    COMES(program().isActive(SignIn));
    Desktop::type(First);
    Desktop::keys({QStringLiteral("Return")});
    STEP(waitForDevices(true));
    quit();
}

QTEST_MAIN(tst_Registration)
#include "tst_Registration.moc"
