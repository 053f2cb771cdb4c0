#include "e2e/AccountTest.h"

#include <QtTest>

namespace {
const QString Fresh = QStringLiteral("ward-9-gate");
const QString Unbind = QStringLiteral("解除绑定");
} // namespace

/// One account on two computers: what is changed at one of them is felt at the other.
class tst_Computers final : public AccountTest {
    Q_OBJECT
private slots:
    void newPasswordEndsTheOtherSession();
    void unboundComputer();
    void groups();

private:
    static constexpr int Desk = 0;
    static constexpr int Gate = 1;

    /// Signs in at both; ends at the first.
    void signInAtBoth(const QString& number);
    /// Chooses an entry of a group's menu in the tree.
    void chooseOfGroup(const QString& group, const QString& entry);
    void quitBoth();
};

void tst_Computers::signInAtBoth(const QString& number) {
    for (const int computer : {Gate, Desk}) {
        STEP(sitAt(computer));
        STEP(start());
        STEP(signInAs(number, Password));
    }
}

void tst_Computers::chooseOfGroup(const QString& group, const QString& entry) {
    QRect place;
    STEP(reveal(group, place));
    Desktop::clickRight(place.center());
    chooseEntry(entry);
}

void tst_Computers::quitBoth() {
    for (const int computer : {Desk, Gate}) {
        STEP(sitAt(computer));
        STEP(quit());
    }
}

void tst_Computers::newPasswordEndsTheOtherSession() {
    const QString number = QStringLiteral("13700137000");
    STEP(signInAtBoth(number));
    STEP(openFromMenu(Person));
    STEP(clickIn(Person, QStringLiteral("修改密码")));
    STEP(enterCode(Person));
    STEP(enterPasswords(Person, Fresh, Fresh));

    STEP(sitAt(Gate));
    STEP(closeTip(QStringLiteral("登录密码已被修改，请使用新密码重新登录!")));
    QVERIFY(window().rows().isEmpty());
    STEP(sitAt(Desk));
    STEP(closeTip(QStringLiteral("密码修改成功！")));
    STEP(closeDialog(Person));
    QVERIFY(!window().rows().isEmpty()); // who changed it stays

    STEP(sitAt(Gate));
    STEP(openSignIn());
    typeSignIn(number, Password);
    STEP(closeTip(QStringLiteral("账号或密码错误!")));
    STEP(clickIn(SignIn, QStringLiteral("手机号")));
    typeSignIn(number, Fresh);
    STEP(waitForDevices(true));
    quitBoth();
}

void tst_Computers::unboundComputer() {
    const QString number = QStringLiteral("13600136000");
    STEP(signInAtBoth(number));
    STEP(openFromMenu(Person));
    STEP(clickIn(Person, Unbind));
    STEP(answer(Tip, QStringLiteral("取消")));
    QVERIFY(!window().rows().isEmpty());
    STEP(clickIn(Person, Unbind));
    STEP(closeTip(QStringLiteral("确定解除和当前电脑的绑定？")));
    STEP(closeTip(QStringLiteral("解除绑定成功!")));
    COMES(window().rows().isEmpty());

    STEP(openSignIn());
    typeSignIn(number, Password);
    const QString refusal = QStringLiteral("该账号已与当前电脑解除绑定，请重新绑定!");
    COMES(program().isActive(Tip) && !program().dialog(Tip).find(refusal).isNull());
    STEP(answer(Tip, QStringLiteral("绑定")));
    STEP(clickIn(Rebind, GetCode)); // the number is there
    QString code;
    STEP(readCode(code));
    STEP(clickIn(Rebind, Next));
    STEP(fill(Rebind, QStringLiteral("验证码"), code));
    STEP(clickIn(Rebind, Submit));
    STEP(answer(Tip, SignIn));
    COMES(program().isActive(SignIn));
    Desktop::type(Password);
    Desktop::keys({QStringLiteral("Return")});
    STEP(waitForDevices(true));

    STEP(sitAt(Gate)); // the other computer was never unbound
    QVERIFY(!window().rows().isEmpty());
    quitBoth();
}

// The account's own groups, changed by the dialog and by the tree's menu.
void tst_Computers::groups() {
    const QString made = QStringLiteral("Ward 7");
    const QString renamed = QStringLiteral("Ward 8");
    const QString empty = QStringLiteral("  0/0");
    const QString full = QStringLiteral("园区大门");
    STEP(signInAtBoth(Number));
    const QStringList before = window().rows();
    STEP(openFromMenu(Groups));
    STEP(clickIn(Groups, QStringLiteral("新增")));
    const QString adding = QStringLiteral("新增分组");
    STEP(clickIn(adding, Save));
    STEP(closeTip(QStringLiteral("请输入名称!")));
    STEP(fill(adding, QStringLiteral("分组名称"), made));
    STEP(clickIn(adding, Save));
    STEP(closeTip(QStringLiteral("保存成功!")));
    STEP(clickRow(Groups, Groups, made));
    STEP(clickIn(Groups, QStringLiteral("编辑")));
    const QString editing = QStringLiteral("编辑分组");
    STEP(fill(editing, QStringLiteral("分组名称"), renamed));
    STEP(clickIn(editing, Save));
    STEP(closeTip(QStringLiteral("保存成功!")));
    COMES(!rowIn(Groups, Groups, renamed).isNull());
    STEP(closeDialog(Groups));
    BECOMES(window().rows().last(), renamed + empty);

    STEP(sitAt(Gate));
    BECOMES(window().rows().last(), renamed + empty);
    STEP(chooseOfGroup(renamed, QStringLiteral("上移")));
    BECOMES(window().rows().contains(renamed + empty) && window().rows().last() != renamed + empty, true);
    const QStringList moved = window().rows();

    STEP(sitAt(Desk));
    BECOMES(window().rows(), moved);
    STEP(openFromMenu(Groups));
    STEP(clickRow(Groups, Groups, full));
    STEP(clickIn(Groups, Delete));
    STEP(answer(Tip, QStringLiteral("确定")));
    STEP(closeTip(QStringLiteral("分组下还有设备，无法删除!")));
    STEP(clickRow(Groups, Groups, renamed));
    STEP(clickIn(Groups, Delete));
    STEP(answer(Tip, QStringLiteral("确定")));
    STEP(closeTip(QStringLiteral("删除分组成功!")));
    STEP(closeDialog(Groups));
    BECOMES(window().rows(), before);
    STEP(sitAt(Gate));
    BECOMES(window().rows(), before);
    quitBoth();
}

QTEST_MAIN(tst_Computers)
#include "tst_Computers.moc"
