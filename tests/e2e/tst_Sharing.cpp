#include "e2e/AccountTest.h"
#include "e2e/Sight.h"

#include <QtTest>

namespace {
const QString New = QStringLiteral("18600186003");
const QString NewPassword = QStringLiteral("ward-7-gate");
const QString Remark = QStringLiteral("Main office");
const QString Camera = QStringLiteral("东大门入口");
const QString Adding = QStringLiteral("添加好友");
const QString FriendNumber = QStringLiteral("好友手机号");
const QString FriendRemark = QStringLiteral("好友备注");
const QString Ok = QStringLiteral("确定");
} // namespace

/// A new account makes a friend, is given a camera and loses it again.
class tst_Sharing final : public AccountTest {
    Q_OBJECT
private slots:
    void shareAndTakeBack();
    void wrongEntries();

private:
    static constexpr int Guest = 0;
    static constexpr int Owner = 1;

    /// Registers at the guest's computer and signs in.
    void beGuest();
    /// Adds a friend; a tip with this text follows.
    void addFriend(const QString& number, const QString& remark, const QString& tip);
    /// Ticks or clears the camera for the guest.
    void clickCamera();
};

void tst_Sharing::beGuest() {
    STEP(sitAt(Guest));
    STEP(start());
    STEP(openSignIn());
    STEP(registerNumber(New, NewPassword));
    STEP(clickIn(SignIn, QStringLiteral("密码")));
    Desktop::type(NewPassword);
    Desktop::keys({QStringLiteral("Return")});
    waitForDevices(true);
}

void tst_Sharing::addFriend(const QString& number, const QString& remark, const QString& tip) {
    if (program().dialog(Adding).isNull())
        STEP(clickIn(Friends, QStringLiteral("添加")));
    STEP(fill(Adding, FriendNumber, number));
    STEP(fill(Adding, FriendRemark, remark));
    STEP(clickIn(Adding, Save));
    closeTip(tip);
}

void tst_Sharing::clickCamera() {
    tickRow(Rights, QStringLiteral("可访问设备"), Camera);
}

void tst_Sharing::shareAndTakeBack() {
    STEP(sitAt(Owner));
    STEP(start());
    STEP(signInAs(Number, Password));
    STEP(beGuest());
    STEP(openFromMenu(Friends));
    STEP(addFriend(Number, Remark, QStringLiteral("添加好友成功!")));
    COMES(!rowIn(Friends, Friends, Remark).isNull());
    STEP(closeDialog(Friends));
    QVERIFY(!window().hasRow(Camera));

    // The friendship has reached the owner, where the guest goes by the own nickname: the number.
    STEP(sitAt(Owner));
    STEP(openFromMenu(Rights));
    STEP(fill(Rights, QStringLiteral("好友"), New));
    Desktop::keys({QStringLiteral("Tab")});
    STEP(clickCamera());

    // The guest sees it at once and opens it.
    STEP(sitAt(Guest));
    COMES(window().hasRow(Camera));
    STEP(chooseLayout(QStringLiteral("四窗口"), 4));
    BECOMES(window().tileOfDevice(Camera), 0);
    QVERIFY(sight::isEmpty(window().tile(0)));
    STEP(doubleClickRow(Camera));
    QVERIFY(sight::becomesLive(window().tile(0)));

    STEP(sitAt(Owner));
    STEP(clickCamera());
    STEP(closeDialog(Rights));
    STEP(sitAt(Guest));
    BECOMES(window().rows(), QStringList{QStringLiteral("默认分组  0/0")});
    BECOMES(window().tileOfDevice(Camera), -1);
    COMES(sight::isEmpty(window().tile(0)));

    // Shared again, it goes with the friendship.
    STEP(sitAt(Owner));
    STEP(openFromMenu(Rights));
    STEP(fill(Rights, QStringLiteral("好友"), New));
    Desktop::keys({QStringLiteral("Tab")});
    STEP(clickCamera());
    STEP(closeDialog(Rights));
    STEP(sitAt(Guest));
    COMES(window().hasRow(Camera));
    STEP(openFromMenu(Friends));
    STEP(clickRow(Friends, Friends, Remark));
    STEP(clickIn(Friends, Delete));
    STEP(answer(Tip, Ok));
    STEP(closeTip(QStringLiteral("删除好友成功!")));
    COMES(rowIn(Friends, Friends, Remark).isNull());
    STEP(closeDialog(Friends));
    COMES(!window().hasRow(Camera));
    STEP(quit());
    STEP(sitAt(Owner));
    STEP(openFromMenu(Friends));
    COMES(!rowIn(Friends, Friends, QStringLiteral("13900139000")).isNull());
    COMES(rowIn(Friends, Friends, New).isNull());
    STEP(closeDialog(Friends));
    quit();
}

void tst_Sharing::wrongEntries() {
    STEP(beGuest());
    STEP(openFromMenu(Friends));
    const QString unknown = QStringLiteral("您输入的手机号有误或者是您要添加的\n好友还未注册，请检查手机号输入或先\n"
                                           "请通知好友在该平台注册成功后再添加!");
    STEP(addFriend(QString(), Remark, QStringLiteral("请输入好友手机号!")));
    STEP(addFriend(Number, QString(), QStringLiteral("请输入备注!")));
    STEP(addFriend(QStringLiteral("18600186999"), Remark, unknown));
    STEP(addFriend(QStringLiteral("office"), Remark, unknown));
    STEP(addFriend(New, Remark, QStringLiteral("不能添加自己为好友!")));
    STEP(addFriend(Number, Remark, QStringLiteral("添加好友成功!")));
    COMES(program().dialog(Adding).isNull());
    COMES(!rowIn(Friends, Friends, Remark).isNull());
    STEP(addFriend(Number, Remark, QStringLiteral("该用户已经是您的好友,无需重复添加!")));
    STEP(addFriend(QStringLiteral("13900139000"), QStringLiteral("River"), QStringLiteral("添加好友成功!")));
    COMES(!rowIn(Friends, Friends, QStringLiteral("River")).isNull());

    STEP(clickIn(Friends, Delete));
    STEP(closeTip(QStringLiteral("请选择要删除的好友!")));
    STEP(clickRow(Friends, Friends, Remark));
    Desktop::keys({QStringLiteral("ctrl+a")});
    STEP(clickIn(Friends, Delete));
    STEP(closeTip(QStringLiteral("目前系统不支持多选删除，请选择一个需要删除项！")));
    QVERIFY(!rowIn(Friends, Friends, Remark).isNull());
    QVERIFY(!rowIn(Friends, Friends, QStringLiteral("River")).isNull());
    STEP(closeDialog(Friends));
    quit();
}

QTEST_MAIN(tst_Sharing)
#include "tst_Sharing.moc"
