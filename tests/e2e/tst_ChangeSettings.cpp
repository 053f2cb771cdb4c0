#include "e2e/ProgramTest.h"
#include "e2e/Sight.h"

#include <QtTest>

namespace {
const QString General = QStringLiteral("常规");
const QString Video = QStringLiteral("视频");
const QString Ok = QStringLiteral("确定");
const QString Cancel = QStringLiteral("取消");
const QString Apply = QStringLiteral("应用");
const QString AppName = QStringLiteral("APP名称");
const QString AspectMode = QStringLiteral("画面比例");
} // namespace

/// The settings dialog, and what the main window makes of it.
class tst_ChangeSettings final : public ProgramTest {
    Q_OBJECT
public:
    tst_ChangeSettings()
        : ProgramTest(Sharing::Program) {}

private slots:
    void init();
    void applicationName();
    void refusedName();
    void aspectMode();
    void cancel();

private:
    /// Writes a name into its field.
    void enterName(const QString& name);
    Accessible field(const QString& name) { return program().dialog(Settings).find(name); }
};

void tst_ChangeSettings::init() {
    ProgramTest::init();
    startAndSignIn();
}

void tst_ChangeSettings::enterName(const QString& name) {
    STEP(clickIn(Settings, AppName));
    COMES(field(AppName).has(Accessible::State::Focused));
    Desktop::keys({QStringLiteral("ctrl+a")});
    if (name.isEmpty())
        Desktop::keys({QStringLiteral("BackSpace")});
    else
        Desktop::type(name);
    BECOMES(field(AppName).text(), name);
}

void tst_ChangeSettings::applicationName() {
    STEP(openSettings(General));
    QVERIFY(!field(Apply).has(Accessible::State::Enabled));
    STEP(enterName(QStringLiteral("Wall-7")));
    STEP(clickIn(Settings, Apply));
    BECOMES(window().title(), QStringLiteral("Wall-7--视频监控与测量平台"));
    QCOMPARE(program().stored(AppName).toString(), QStringLiteral("Wall-7"));
    COMES(!field(Apply).has(Accessible::State::Enabled));
    STEP(enterName(QStringLiteral("Wall-8")));
    STEP(answer(Settings, Ok));
    BECOMES(window().title(), QStringLiteral("Wall-8--视频监控与测量平台"));
    QCOMPARE(program().stored(AppName).toString(), QStringLiteral("Wall-8"));
}

void tst_ChangeSettings::refusedName() {
    const QString before = window().title();
    STEP(openSettings(General));
    STEP(enterName(QString()));
    STEP(clickIn(Settings, Ok));
    COMES(field(QStringLiteral("错误信息")).has(Accessible::State::Visible));
    QCOMPARE(window().title(), before);
    STEP(clickIn(Settings, Cancel));
    STEP(answer(Tip, Ok));
    COMES(program().dialog(Settings).isNull());
    QCOMPARE(window().title(), before);
}

// A picture of 16:9 in a tile of another shape, with and without the dark stripes beside it.
void tst_ChangeSettings::aspectMode() {
    const QString device = QStringLiteral("东大门入口");
    STEP(chooseLayout(QStringLiteral("十八窗口"), 18)); // tiles that are higher than wide
    STEP(doubleClickRow(device));
    QVERIFY(sight::becomesLive(window().tile(0)));
    COMES(sight::hasStripes(window().tile(0)));
    const auto choose = [this](const QString& text) {
        STEP(openSettings(Video));
        // A box goes by the name of what is chosen, on Windows by its own. Its list is a window of its own; the
        // entries are reached by the keyboard.
#ifdef Q_OS_WIN
        const QString& box = AspectMode;
#else
        const QString box = program().stored(AspectMode).toString();
#endif
        const int windows = Desktop::countWindows(program().pid());
        STEP(clickIn(Settings, box));
        COMES(Desktop::countWindows(program().pid()) > windows);
        Desktop::keys({text == QStringLiteral("平铺") ? QStringLiteral("End") : QStringLiteral("Home"),
                       QStringLiteral("Return")});
        BECOMES(Desktop::countWindows(program().pid()), windows);
        STEP(answer(Settings, Ok));
        BECOMES(program().stored(AspectMode).toString(), text);
    };
    STEP(choose(QStringLiteral("平铺")));
    COMES(!sight::hasStripes(window().tile(0)) && sight::isPicture(window().tile(0)));
    STEP(choose(QStringLiteral("原始比例")));
    COMES(sight::hasStripes(window().tile(0)));
    STEP(clickButton(QStringLiteral("关闭所有视频")));
    COMES(sight::isEmpty(window().tile(0)));
}

void tst_ChangeSettings::cancel() {
    const QString before = window().title();
    const QVariant stored = program().stored(AppName);
    // Nothing changed, nothing asked.
    STEP(openSettings(General));
    STEP(answer(Settings, Cancel));
    STEP(openSettings(General));
    STEP(enterName(QStringLiteral("Another")));
    // Kept open by the safe answer.
    STEP(clickIn(Settings, Cancel));
    COMES(program().isActive(Tip));
    QVERIFY(!program().dialog(Tip).find(QStringLiteral("放弃修改?")).isNull());
    Desktop::keys({QStringLiteral("Return")});
    COMES(program().dialog(Tip).isNull() && program().isActive(Settings));
    QCOMPARE(field(AppName).text(), QStringLiteral("Another"));
    STEP(clickIn(Settings, Cancel));
    STEP(answer(Tip, Ok));
    COMES(program().dialog(Settings).isNull());
    QCOMPARE(window().title(), before);
    QCOMPARE(program().stored(AppName), stored);
}

QTEST_MAIN(tst_ChangeSettings)
#include "tst_ChangeSettings.moc"
