#include "account/EntryChecks.h"
#include "account/HeadPicture.h"
#include "account/PhoneFlow.h"
#include "account/ShareModel.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

using namespace corvanta::account;

Q_DECLARE_METATYPE(corvanta::account::FlowUse)

/// The rules of numbers, codes, passwords, names and pictures, with time handed in.
class tst_PhoneFlow final : public QObject {
    Q_OBJECT
private slots:
    void texts_data();
    void texts();
    void countdown();
    void codeOfAnotherNumber();
    void passwords_data();
    void passwords();
    void numbers_data();
    void numbers();
    void names_data();
    void names();
    void heads_data();
    void heads();
    void shares();
};

void tst_PhoneFlow::texts_data() {
    QTest::addColumn<FlowUse>("use");
    QTest::addColumn<QString>("numberEmpty");
    QTest::addColumn<QString>("notRequested");
    QTest::addColumn<QString>("codeEmpty");
    QTest::addColumn<QString>("codeOver");
    QTest::addColumn<QString>("codeWrong");
    QTest::addColumn<QString>("unwanted"); ///< when the number is, or is not, registered
    QTest::addColumn<QString>("success");
    QTest::newRow("register") << FlowUse::Register << "请输入手机号!"
                              << "请先获取验证码!"
                              << "请输入验证码!"
                              << "验证码已超时!"
                              << "输入的验证码不正确"
                              << "该手机已注册!"
                              << "注册成功！现在是否要登录？是，请点击登录，否，请点击关闭。";
    QTest::newRow("recover") << FlowUse::Recover << "手机号为空，请输入正确的手机号!"
                             << "请先获取验证码!"
                             << "请输入验证码!"
                             << "验证码已超时!"
                             << "输入的验证码不正确"
                             << "该手机未注册!"
                             << "密码修改成功！现在是否要登录？是，请点击登录，否，请点击关闭。";
    QTest::newRow("change") << FlowUse::ChangePassword << "手机号为空，请输入正确的手机号!"
                            << "请先获取验证码!"
                            << "验证码输入为空，请先获取验证码!"
                            << "验证码已超时!"
                            << "输入的验证码不正确"
                            << ""
                            << "密码修改成功！";
    QTest::newRow("rebind") << FlowUse::Rebind << "请输入手机号!"
                            << "请先获取验证码!"
                            << "请输入验证码!"
                            << "验证码超时!"
                            << "输入的验证码不正确!"
                            << ""
                            << "绑定成功！现在是否要登录？是，请点击登录，否，请点击关闭。";
}

void tst_PhoneFlow::texts() {
    QFETCH(FlowUse, use);
    PhoneFlow flow(use);
    const QString number = QStringLiteral("13900139000");
    QTEST(*flow.checkNumber(QString()), "numberEmpty");
    QVERIFY(!flow.checkNumber(number));
    QFETCH(QString, unwanted);
    const bool refusedState = use == FlowUse::Register;
    QCOMPARE(flow.checkRegistered(refusedState).value_or(QString()), unwanted);
    QVERIFY(!flow.checkRegistered(!refusedState));
    QTEST(*flow.checkCode(number, QString()), "notRequested"); // this comes before the empty code
    flow.codeRequested(number);
    QTEST(*flow.checkCode(number, QString()), "codeEmpty");
    QVERIFY(!flow.checkCode(number, QStringLiteral("123456")));
    for (int second = 0; second < CodeCountdown::Start; ++second)
        flow.countdown().tick();
    QTEST(*flow.checkCode(number, QStringLiteral("123456")), "codeOver");
    QTEST(flow.codeRefusal(QStringLiteral("(checkcode error)"), QStringLiteral("x")), "codeWrong");
    QTEST(flow.codeRefusal(QStringLiteral("(checkcode timeout)"), QStringLiteral("x")), "codeOver");
    QCOMPARE(flow.codeRefusal(QStringLiteral("(store error)"), QStringLiteral("x")), QStringLiteral("x"));
    QTEST(PhoneFlow::text(flow.rules().success), "success");
}

void tst_PhoneFlow::countdown() {
    CodeCountdown countdown;
    QCOMPARE(countdown.buttonText(), QStringLiteral("获取验证码"));
    countdown.start();
    countdown.tick();
    QCOMPARE(countdown.buttonText(), QStringLiteral("60秒后可以重新获取"));
    for (int left = 59; left > 0; --left) {
        countdown.tick();
        QCOMPARE(countdown.buttonText(), QString::number(left) + QStringLiteral("秒后可以重新获取"));
        QVERIFY(countdown.isRunning());
    }
    countdown.tick();
    QCOMPARE(countdown.buttonText(), QStringLiteral("重新获取验证码"));
    QVERIFY(countdown.isOver() && !countdown.isRunning());
    countdown.tick();
    QVERIFY(countdown.isOver());
    countdown.start();
    QVERIFY(countdown.isRunning());
}

void tst_PhoneFlow::codeOfAnotherNumber() {
    PhoneFlow flow(FlowUse::Register);
    flow.codeRequested(QStringLiteral("13900139000"));
    QCOMPARE(*flow.checkCode(QStringLiteral("13900139001"), QStringLiteral("123456")),
             QStringLiteral("请先获取验证码!"));
}

void tst_PhoneFlow::passwords_data() {
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("repeated");
    QTest::addColumn<QString>("problem");
    const QString emoji = QStringLiteral("😀");
    QTest::newRow("empty") << ""
                           << ""
                           << "密码不能为空";
    QTest::newRow("different") << "12345678"
                               << "12345679"
                               << "两次输入的密码不一致";
    QTest::newRow("different and short") << "1"
                                         << "2"
                                         << "两次输入的密码不一致";
    for (const int length : {1, 7, 8, 16, 17, 10000}) {
        const QString text(length, QLatin1Char('x'));
        QTest::addRow("%d", length) << text << text
                                    << (length < 8 || length > 16 ? QStringLiteral("密码长度为8~16位") : QString());
    }
    QTest::newRow("7 emoji") << emoji.repeated(7) << emoji.repeated(7) << "密码长度为8~16位";
    QTest::newRow("16 emoji") << emoji.repeated(16) << emoji.repeated(16) << "";
}

void tst_PhoneFlow::passwords() {
    QFETCH(QString, password);
    QFETCH(QString, repeated);
    QTEST(PhoneFlow(FlowUse::Recover).checkPasswords(password, repeated).value_or(QString()), "problem");
}

void tst_PhoneFlow::numbers_data() {
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("isOne");
    QTest::newRow("usual") << "13800138000" << true;
    QTest::newRow("with plus") << "+8613800138000" << true;
    QTest::newRow("letters") << "1380013800a" << false;
    QTest::newRow("40 digits") << QString(40, QLatin1Char('1')) << false;
    QTest::newRow("4 digits") << "1234" << false;
    QTest::newRow("5 digits") << "12345" << true;
    QTest::newRow("21 digits") << QString(21, QLatin1Char('1')) << false;
    QTest::newRow("other digits") << QStringLiteral("１３８００１３８０００") << false;
    QTest::newRow("markup") << "<b>13800138000</b>" << false;
    QTest::newRow("plus inside") << "138+138000" << false;
}

void tst_PhoneFlow::numbers() {
    QFETCH(QString, number);
    QTEST(isPhoneNumber(number), "isOne");
    QTEST(!PhoneFlow(FlowUse::Register).checkNumber(number).has_value(), "isOne");
}

void tst_PhoneFlow::names_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("problem");
    QTest::newRow("empty") << ""
                           << "E";
    QTest::newRow("blanks") << "   "
                            << "E";
    QTest::newRow("quotes and markup") << "<b>\"a\" 'b'; drop table</b>"
                                       << "";
    QTest::newRow("64 emoji") << QStringLiteral("😀").repeated(64) << "";
    QTest::newRow("65 emoji") << QStringLiteral("😀").repeated(65) << "名称过长，最多64个字符!";
    QTest::newRow("10000") << QString(10000, QLatin1Char('x')) << "名称过长，最多64个字符!";
    QTest::newRow("control") << QStringLiteral("a\x07") << "名称不能包含控制字符!";
}

void tst_PhoneFlow::names() {
    QFETCH(QString, name);
    QTEST(checkName(name, QStringLiteral("E")).value_or(QString()), "problem");
}

void tst_PhoneFlow::heads_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("problem");
    const auto picture = [](const char* format, int width, int height) {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::red);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, format);
        return bytes;
    };
    const QByteArray png = picture("PNG", 300, 200);
    QTest::newRow("png") << png << "";
    QTest::newRow("jpeg") << picture("JPG", 300, 200) << "";
    QTest::newRow("bmp called png") << picture("BMP", 30, 20) << "图片格式不正确，请选择png或jpg图片!";
    QTest::newRow("empty") << QByteArray() << "图片格式不正确，请选择png或jpg图片!";
    QTest::newRow("text") << QByteArray("<svg/>") << "图片格式不正确，请选择png或jpg图片!";
    QTest::newRow("cut off") << png.left(40) << "图片无法读取!";
    QTest::newRow("claims to be huge") << picture("PNG", 5000, 10) << "图片尺寸过大，请重新选择!";
    QTest::newRow("1 MiB") << png + QByteArray(1024 * 1024 - png.size(), '\0') << "图片不能超过1M，请重新选择!";
    QTest::newRow("just below") << png + QByteArray(1024 * 1024 - png.size() - 1, '\0') << "";
}

void tst_PhoneFlow::heads() {
    QFETCH(QByteArray, content);
    const QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("头像.png")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    const CheckedHead checked = checkHeadPicture(file.fileName(), 96);
    QTEST(checked.problem, "problem");
    if (checked.isValid())
        QCOMPARE(checked.picture.size(), QSize(96, 64));
    QCOMPARE(checkHeadPicture(dir.filePath(QStringLiteral("none")), 96).problem, QStringLiteral("图片无法读取!"));
}

void tst_PhoneFlow::shares() {
    const auto device = [](const char* id, const char* nickname, bool admin, const char* owner) {
        return QVariantMap{{"ipncid", id},
                           {"nickname", nickname},
                           {"name", "N"},
                           {"admin", admin},
                           {"authority", QVariantMap{{"video", true}}},
                           {"friendphone", owner}};
    };
    const QVariantMap one{{"friendphone", "1390"}, {"nickname", "甲"}, {"remarkname", ""}};
    ShareModel model = ShareModel::fromReply(
        {{"friendlist", QVariantList{one, one, 5, QVariantMap{{"nickname", "no number"}}}},
         {"ipnclist", QVariantList{device("a", "大门", true, ""), device("b", "", true, ""),
                                   device("c", "他的", false, "1390"), device("a", "again", true, "")}},
         {"devicesharelist", QVariantList{QVariantMap{{"friendphone", "1390"}, {"ipncid", "a"}, {"share", true}},
                                          QVariantMap{{"friendphone", "1390"}, {"ipncid", "b"}, {"share", false}}}}});
    QCOMPARE(model.friends().size(), 1);
    QCOMPARE(model.friends().constFirst().displayName(), QStringLiteral("甲"));
    QCOMPARE(model.ownDevices().size(), 2);
    QCOMPARE(model.ownDevices().at(1).name, QStringLiteral("N"));
    QCOMPARE(model.receivedDevices().constFirst().owner, QStringLiteral("1390"));
    QVERIFY(model.isShared("1390", "a") && !model.isShared("1390", "b"));
    model.setShared("1390", "b", true);
    model.setShared("1390", "a", false);
    QVERIFY(!model.isShared("1390", "a") && model.isShared("1390", "b"));
    QVERIFY(ShareModel::fromReply({{"friendlist", "x"}, {"ipnclist", 3}}).friends().isEmpty());
}

QTEST_GUILESS_MAIN(tst_PhoneFlow)
#include "tst_PhoneFlow.moc"
