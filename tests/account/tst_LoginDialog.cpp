#include "account/AccountFlags.h"
#include "account/AccountTest.h"
#include "account/ui/LoginDialog.h"
#include "account/ui/PhoneFlowDialog.h"
#include "account/ui/PhoneFlowPages.h"
#include "account/ui/RegisterDialog.h"
#include "base/SdkGateway.h"
#include "database/SqlHelp.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSignalSpy>
#include <QStackedWidget>

using namespace std::chrono_literals;

/// Signing in and what the sign-in dialog leads to.
class tst_LoginDialog final : public AccountTest {
    Q_OBJECT
private slots:
    void entries_data();
    void entries();
    void badReplies_data();
    void badReplies();
    void silence();
    void doubleClickSendsOnce();
    void rememberedAtTheNextStart();
    void automaticNeedsBoth_data();
    void automaticNeedsBoth();
    void forgetting();
    void flags();
    void unboundOffersBinding();
    void registering();
    void registeredAlready();
    void wrongCodes();
    void stepsBack();

private:
    static QStackedWidget* pages(const QDialog& dialog) {
        return find<QWidget>(dialog, "phoneFlow")->findChild<QStackedWidget*>();
    }
    QString storedPassword() { return context().database.getPhoneAndPassword().password; }
};

void tst_LoginDialog::entries_data() {
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("tipText");
    QTest::newRow("no number") << ""
                               << "x"
                               << "账号不能为空，请录入";
    QTest::newRow("neither") << "  "
                             << ""
                             << "账号不能为空，请录入";
    QTest::newRow("no password") << "13800138000"
                                 << ""
                                 << "密码不能为空，请录入";
}

void tst_LoginDialog::entries() {
    QFETCH(QString, number);
    QFETCH(QString, password);
    LoginDialog dialog(context(), false);
    show(dialog);
    type(dialog, "phoneNumber", number);
    type(dialog, "phonePassword", password);
    click(dialog, "signIn");
    QTEST(tip(), "tipText");
    QCOMPARE(sentCount(), 0);
    checkNames(dialog);
}

void tst_LoginDialog::badReplies_data() {
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("tipText");
    QTest::newRow("refused") << error("(password error)") << "账号或密码错误!";
    QTest::newRow("empty") << QByteArray("{}") << "操作失败(0)";
    QTest::newRow("no object") << QByteArray("[]") << "操作失败(0)";
    QTest::newRow("no state") << QByteArray(R"({"retcode":0,"resp":{}})") << "操作失败(0)";
    QTest::newRow("markup") << error("<b>x</b>") << "操作失败(<b>x</b>)";
}

void tst_LoginDialog::badReplies() {
    QFETCH(QByteArray, reply);
    answer("logon", reply);
    LoginDialog dialog(context(), false);
    show(dialog);
    const QString number = QStringLiteral("a\"'<i>😀") + QString(40, QLatin1Char('1'));
    type(dialog, "phoneNumber", number);
    type(dialog, "phonePassword", QStringLiteral("12345678"));
    click(dialog, "signIn");
    QTEST(tip(), "tipText");
    QVERIFY(dialog.isVisible());
    QCOMPARE(find<QLineEdit>(dialog, "phoneNumber")->text(), number); // what was typed stays
    QCOMPARE(sent("logon").constFirst().value(QStringLiteral("phonenumber")).toString(), number);
    QVERIFY(find<QAbstractButton>(dialog, "signIn")->isEnabled());
}

void tst_LoginDialog::silence() {
    QCOMPARE(context().gateway.patience(), std::chrono::milliseconds(15000));
    context().gateway.setPatience(50ms);
    answer("logon", "");
    LoginDialog dialog(context(), false);
    show(dialog);
    type(dialog, "phoneNumber", QStringLiteral("13800138000"));
    type(dialog, "phonePassword", QStringLiteral("12345678"));
    click(dialog, "signIn");
    QCOMPARE(tip(), QStringLiteral("服务器没有响应，请稍后再试!"));
    QCOMPARE(find<QLineEdit>(dialog, "phonePassword")->text(), QStringLiteral("12345678"));
    sdk_.respond(sdk_.requests().back().id, ok().toStdString()); // too late
    answer("logon", ok());
    QSignalSpy accepted(&dialog, &QDialog::accepted);
    click(dialog, "signIn"); // the same again
    QTRY_COMPARE(accepted.size(), 1);
    QCOMPARE(sent("logon").size(), 2);
}

void tst_LoginDialog::doubleClickSendsOnce() {
    answer("logon", "");
    LoginDialog dialog(context(), false);
    show(dialog);
    type(dialog, "phoneNumber", QStringLiteral("13800138000"));
    type(dialog, "phonePassword", QStringLiteral("12345678"));
    auto* const button = find<QAbstractButton>(dialog, "signIn");
    QTest::mouseDClick(button, Qt::LeftButton);
    button->setEnabled(true); // even where a button forgets to wait
    button->click();
    QCOMPARE(sent("logon").size(), 1);
}

void tst_LoginDialog::rememberedAtTheNextStart() {
    answer("logon", ok());
    {
        LoginDialog dialog(context(), false);
        show(dialog);
        type(dialog, "phoneNumber", QStringLiteral("13900139000"));
        type(dialog, "phonePassword", QStringLiteral("12345678"));
        click(dialog, "autoLogin");
        QVERIFY(find<QCheckBox>(dialog, "savePassword")->isChecked());
        QSignalSpy accepted(&dialog, &QDialog::accepted);
        click(dialog, "signIn");
        QTRY_COMPARE(accepted.size(), 1);
    }
    QTRY_VERIFY(!storedPassword().isEmpty());
    QVERIFY(!storedPassword().contains(QStringLiteral("12345678")));
    QVERIFY(AccountFlags(dir_->filePath(QStringLiteral("config/account.json"))).autoLogin());
    {
        LoginDialog dialog(context(), false);
        show(dialog);
        QTRY_COMPARE(find<QLineEdit>(dialog, "phonePassword")->text(), QStringLiteral("12345678"));
        QCOMPARE(find<QComboBox>(dialog, "phoneNumberBox")->currentText(), QStringLiteral("13900139000"));
    }
    LoginDialog dialog(context(), true);
    QSignalSpy accepted(&dialog, &QDialog::accepted);
    show(dialog);
    QTRY_COMPARE(accepted.size(), 1);
    QCOMPARE(sent("logon").back().value(QStringLiteral("phonepassword")).toString(), QStringLiteral("12345678"));
}

void tst_LoginDialog::automaticNeedsBoth_data() {
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("password");
    QTest::newRow("no password") << "13900139000"
                                 << "";
    QTest::newRow("no number") << ""
                               << "12345678";
    QTest::newRow("unreadable") << "13900139000"
                                << "corvanta-vault:file:AAAA";
}

void tst_LoginDialog::automaticNeedsBoth() {
    QFETCH(QString, number);
    QFETCH(QString, password);
    context().database.savePhoneAndPassword(number, password);
    LoginDialog dialog(context(), true);
    show(dialog);
    // Behind everything that the vault answers.
    bool isAnswered = false;
    QTimer::singleShot(0, &dialog, [&] { QTimer::singleShot(0, &dialog, [&isAnswered] { isAnswered = true; }); });
    QTRY_VERIFY(isAnswered);
    QCOMPARE(sentCount(), 0);
    QVERIFY(dialog.isVisible());
}

void tst_LoginDialog::forgetting() {
    context().database.savePhoneAndPassword(QStringLiteral("13900139000"), QStringLiteral("readable"));
    LoginDialog dialog(context(), false);
    show(dialog);
    QTRY_COMPARE(find<QLineEdit>(dialog, "phonePassword")->text(), QStringLiteral("readable"));
    click(dialog, "forgetNumber");
    QVERIFY(context().database.phonesAndPasswords().isEmpty());
    QVERIFY(find<QLineEdit>(dialog, "phonePassword")->text().isEmpty());
    QCOMPARE(find<QComboBox>(dialog, "phoneNumberBox")->count(), 0);
    QVERIFY(!find<QAbstractButton>(dialog, "forgetNumber")->isEnabled());
}

void tst_LoginDialog::flags() {
    LoginDialog dialog(context(), false);
    show(dialog);
    const auto stored = [this] {
        const AccountFlags flags(dir_->filePath(QStringLiteral("config/account.json")));
        return std::pair(flags.savePassword(), flags.autoLogin());
    };
    click(dialog, "savePassword");
    QCOMPARE(stored(), std::pair(true, false)); // at once, whatever becomes of the dialog
    click(dialog, "autoLogin");
    QCOMPARE(stored(), std::pair(true, true));
    click(dialog, "savePassword");
    QCOMPARE(stored(), std::pair(false, false));
}

void tst_LoginDialog::unboundOffersBinding() {
    answer("logon", error("(not bind)"));
    answer("rebindcode", ok());
    answer("checkmessagecode", ok());
    answer("rebindphone", ok());
    LoginDialog dialog(context(), false);
    show(dialog);
    type(dialog, "phoneNumber", QStringLiteral("13900139000"));
    type(dialog, "phonePassword", QStringLiteral("12345678"));
    click(dialog, "signIn");
    tip(); // "绑定"
    PhoneFlowDialog* flow = nullptr;
    QTRY_VERIFY((flow = dialog.findChild<PhoneFlowDialog*>()) != nullptr && flow->isVisible());
    checkNames(*flow);
    QCOMPARE(flow->windowTitle(), QStringLiteral("重新绑定电脑"));
    QCOMPARE(find<QLineEdit>(*flow, "flowNumber")->text(), QStringLiteral("13900139000"));
    click(*flow, "getCode");
    QTRY_VERIFY(flow->pages().flow().countdown().isRunning());
    click(*flow, "flowForward");
    type(*flow, "flowCode", QStringLiteral("123456"));
    click(*flow, "flowForward");
    QCOMPARE(tip(), QStringLiteral("绑定成功！现在是否要登录？是，请点击登录，否，请点击关闭。"));
    QTRY_VERIFY(dialog.findChild<PhoneFlowDialog*>() == nullptr);
    QCOMPARE(sent("rebindphone").constFirst().value(QStringLiteral("phonetype")).toString(), QStringLiteral("pc"));
    QCOMPARE(log(), QStringList{QStringLiteral("账号|重新绑定电脑|13900139000")});
}

void tst_LoginDialog::registering() {
    answer("checkphone", ok(R"("registered":false)"));
    answer("logincode", ok());
    answer("checkmessagecode", ok());
    answer("loginphone", ok());
    LoginDialog login(context(), false);
    show(login);
    click(login, "register");
    auto* const dialog = login.findChild<RegisterDialog*>();
    QVERIFY(dialog != nullptr && QTest::qWaitForWindowExposed(dialog));
    find<QComboBox>(*dialog, "region")->setCurrentIndex(2);
    click(*dialog, "getCode");
    QCOMPARE(tip(), QStringLiteral("请输入手机号!"));
    type(*dialog, "flowNumber", QStringLiteral("13900139000"));
    click(*dialog, "flowForward");
    click(*dialog, "flowForward");
    QCOMPARE(tip(), QStringLiteral("请先获取验证码!"));
    click(*dialog, "getCodeAgain");
    QTRY_COMPARE(sent("logincode").size(), 1);
    QCOMPARE(sent("logincode").constFirst().value(QStringLiteral("countrycode")).toString(), QStringLiteral("853"));
    auto* const button = find<QAbstractButton>(*dialog, "getCodeAgain");
    QTRY_VERIFY(dialog->pages().flow().countdown().isRunning());
    QVERIFY(!button->isEnabled());
    dialog->pages().tick();
    QCOMPARE(button->text(), QStringLiteral("60秒后可以重新获取"));
    type(*dialog, "flowCode", QStringLiteral("123456"));
    click(*dialog, "flowForward");
    QTRY_COMPARE(pages(*dialog)->currentIndex(), 2);
    type(*dialog, "flowPassword", QStringLiteral("1234567"));
    type(*dialog, "flowRepeated", QStringLiteral("1234567"));
    click(*dialog, "flowForward");
    QCOMPARE(tip(), QStringLiteral("密码长度为8~16位"));
    type(*dialog, "flowPassword", QStringLiteral("12345678"));
    type(*dialog, "flowRepeated", QStringLiteral("12345678"));
    click(*dialog, "flowForward");
    QCOMPARE(tip(), QStringLiteral("注册成功！现在是否要登录？是，请点击登录，否，请点击关闭。"));
    QTRY_VERIFY(login.findChild<RegisterDialog*>() == nullptr);
    QCOMPARE(find<QLineEdit>(login, "phoneNumber")->text(), QStringLiteral("13900139000"));
    QCOMPARE(sent("loginphone").constFirst().value(QStringLiteral("phonepassword")).toString(),
             QStringLiteral("12345678"));
}

void tst_LoginDialog::registeredAlready() {
    answer("checkphone", ok(R"("registered":true)"));
    RegisterDialog dialog(context(), QStringLiteral("13900139000"));
    show(dialog);
    click(dialog, "getCode");
    QCOMPARE(tip(), QStringLiteral("该手机已注册!"));
    QVERIFY(sent("logincode").isEmpty());
    QCOMPARE(pages(dialog)->currentIndex(), 0);
    QVERIFY(find<QAbstractButton>(dialog, "getCode")->isEnabled());
}

void tst_LoginDialog::wrongCodes() {
    answer("checkphone", ok(R"("registered":false)"));
    answer("logincode", ok());
    RegisterDialog dialog(context(), QStringLiteral("13900139000"));
    show(dialog);
    click(dialog, "getCode");
    QTRY_VERIFY(dialog.pages().flow().countdown().isRunning());
    click(dialog, "flowForward");
    type(dialog, "flowCode", QStringLiteral("000000"));
    answer("checkmessagecode", error("(checkcode error)"));
    click(dialog, "flowForward");
    QCOMPARE(tip(), QStringLiteral("输入的验证码不正确"));
    answer("checkmessagecode", error("(checkcode timeout)"));
    QTRY_VERIFY(!isTipOpen());
    click(dialog, "flowForward");
    QCOMPARE(tip(), QStringLiteral("验证码已超时!"));
    for (int second = 0; second < CodeCountdown::Start; ++second)
        dialog.pages().tick();
    QCOMPARE(find<QAbstractButton>(dialog, "getCodeAgain")->text(), QStringLiteral("重新获取验证码"));
    QVERIFY(find<QAbstractButton>(dialog, "getCodeAgain")->isEnabled());
    const int before = sentCount();
    QTRY_VERIFY(!isTipOpen());
    click(dialog, "flowForward");
    QCOMPARE(tip(), QStringLiteral("验证码已超时!"));
    QCOMPARE(sentCount(), before);
}

void tst_LoginDialog::stepsBack() {
    RegisterDialog dialog(context(), QStringLiteral("1380013800a"));
    show(dialog);
    QVERIFY(!find<QAbstractButton>(dialog, "flowBack")->isVisible());
    click(dialog, "flowForward");
    QCOMPARE(tip(), QStringLiteral("手机号格式不正确，请输入5~20位数字!"));
    type(dialog, "flowNumber", QStringLiteral("13900139000"));
    QTRY_VERIFY(!isTipOpen());
    click(dialog, "flowForward");
    QCOMPARE(pages(dialog)->currentIndex(), 1);
    click(dialog, "flowBack");
    QCOMPARE(pages(dialog)->currentIndex(), 0);
}

QTEST_MAIN(tst_LoginDialog)
#include "tst_LoginDialog.moc"
