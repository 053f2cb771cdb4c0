#include "e2e/ProgramTest.h"
#include "e2e/Sight.h"

#include <QtTest>

namespace {
constexpr int Edge = 4; // px, by which the window is resized
constexpr QSize Usual(1280, 720);
constexpr QSize Smallest(680 + 2 * Edge, 384 + 2 * Edge);
} // namespace

/// The main window from the first start to the end.
class tst_Program final : public ProgramTest {
    Q_OBJECT
private slots:
    void firstStart();
    void signInAgain();
    void endIsAskedFor();
    void windowIsMovedAndResized();
};

void tst_Program::firstStart() {
    STEP(start());
    QVERIFY(window().rows().isEmpty());
    STEP(openSignIn());
    Desktop::keys({QStringLiteral("Return")}); // the account is offered
    STEP(waitForDevices(true));
    QVERIFY(program().log().contains(QStringLiteral("\"phonenumber\":\"") + Number));
    QVERIFY(window().hasRow(QStringLiteral("园区大门  9/9")));
    QVERIFY(window().hasRow(QStringLiteral("停用待检  0/6")));
    constexpr int groups = 9;
    constexpr int devices = 72;
    QCOMPARE(window().rows().size(), groups + devices);
    QCOMPARE(window().deviceOfTile(0), QStringLiteral("东大门入口"));

    STEP(chooseLayout(QStringLiteral("四窗口"), 4));
    COMES(sight::isEmpty(window().tile(0)));
    STEP(doubleClickRow(QStringLiteral("东大门入口")));
    QVERIFY(sight::becomesLive(window().tile(0)));
    quit(); // with a stream open
}

void tst_Program::signInAgain() {
    STEP(start());
    STEP(openSignIn());
    Desktop::keys({QStringLiteral("Return")});
    STEP(waitForDevices(true));
    STEP(chooseLayout(QStringLiteral("四窗口"), 4));
    STEP(doubleClickRow(QStringLiteral("东大门入口")));
    QVERIFY(sight::becomesLive(window().tile(0)));

    STEP(clickButton(Account));
    STEP(chooseEntry(SignOut));
    STEP(waitForDevices(false));
    COMES(sight::isEmpty(window().tile(0)));

    STEP(openSignIn());
    typeSignIn(Number, QStringLiteral("corvanta-8001"));
    STEP(answer(Tip, QStringLiteral("确定"))); // the refusal is told; what was typed stays
    QVERIFY(window().rows().isEmpty());
    STEP(clickIn(SignIn, QStringLiteral("密码")));
    Desktop::keys({QStringLiteral("ctrl+a")});
    Desktop::type(Password);
    Desktop::keys({QStringLiteral("Return")});
    STEP(waitForDevices(true));
    QVERIFY(sight::becomesLive(window().tile(0))); // what was open is opened again
    quit();
}

void tst_Program::endIsAskedFor() {
    STEP(start());
    // The button, and what the window manager sends; Escape, Enter and the other answer: all keep the program.
    for (const bool byButton : {true, false}) {
        for (const char* key : {"Escape", "Return"}) {
            if (byButton)
                STEP(clickButton(QStringLiteral("退出")));
            else
                Desktop::keys({QStringLiteral("alt+F4")});
            COMES(program().isActive(Tip));
            Desktop::keys({QLatin1String(key)});
            COMES(program().dialog(Tip).isNull());
            COMES(Program::isActive(window().window()));
            QVERIFY(program().isRunning());
        }
    }
    STEP(clickButton(QStringLiteral("退出")));
    STEP(answer(Tip, QStringLiteral("取消")));
    COMES(Program::isActive(window().window()));
    quit();
}

void tst_Program::windowIsMovedAndResized() {
    const QRect screen = Desktop::screen();
    STEP(start());
    const QRect first = window().frame();
    QCOMPARE(first.size(), Usual.boundedTo(screen.size() * 9 / 10));
    QVERIFY((first.center() - screen.center()).manhattanLength() <= 2);
    int steps = 0;
    const QPoint handle = window().handle();
    Desktop::moveMouse(handle);
    Desktop::press();
    // The program is told of its new place when the move has ended; the X server knows it before.
    const auto place = [] {
        return Desktop::activePlace().value_or(QRect());
    };
    COMES((Desktop::pull(handle, handle - QPoint(40, 20), steps), place().topLeft() != first.topLeft()));
    Desktop::release();
    QCOMPARE(place().size(), first.size());
    COMES(window().frame() == place());

    const QRect moved = window().frame();
    STEP(takeCorner());
    COMES((Desktop::pull(moved.bottomRight(), moved.bottomRight() - QPoint(120, 90), steps),
           window().frame().width() < moved.width() - 60 && window().frame().height() < moved.height() - 40));
    Desktop::release();
    QCOMPARE(window().frame().topLeft(), moved.topLeft());

    const QPoint corner = window().frame().bottomRight();
    STEP(takeCorner());
    COMES((Desktop::pull(corner, moved.topLeft() + QPoint(100, 100), steps), window().frame().size() == Smallest));
    Desktop::release();

    STEP(clickButton(QStringLiteral("全屏")));
    BECOMES(window().frame(), screen);
    COMES(window().grid().right() == screen.right()); // no edge to take hold of
    STEP(clickButton(QStringLiteral("退出全屏")));
    BECOMES(window().frame(), QRect(moved.topLeft(), Smallest));
    quit();
}

QTEST_MAIN(tst_Program)
#include "tst_Program.moc"
