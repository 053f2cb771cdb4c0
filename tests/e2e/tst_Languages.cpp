#include "e2e/ProgramTest.h"

#include <QtTest>

#include <algorithm>

/// The interface in another language: switched while the program runs, kept over a restart, and switched back.
class tst_Languages final : public ProgramTest {
    Q_OBJECT
private slots:
    void thereAndBack();

private:
    struct Words {
        QString settings, pages, general, box, apply;
    };
    /// Chooses a language in the settings, which are open, by the key that leads to it, and applies that.
    void choose(const Words& words, const QString& key, const QString& code);
    void logRowsStay();
    bool hasButton(const QString& name) { return !window().button(name).isNull(); }
    /// Whether something of this name stands in a window.
    bool shows(const QString& name) {
        const auto windows = program().accessible().children();
        return std::any_of(windows.begin(), windows.end(),
                           [&name](const Accessible::Seen& shown) { return !shown.thing.find(name).isNull(); });
    }
};

void tst_Languages::choose(const Words& words, const QString& key, const QString& code) {
    STEP(showPage(words.settings, words.pages, words.general));
    // The list is a window of its own; its entries are reached by the keyboard.
    const int windows = Desktop::countWindows(program().pid());
    STEP(clickIn(words.settings, words.box));
    COMES(Desktop::countWindows(program().pid()) > windows);
    Desktop::keys({key, QStringLiteral("Return")});
    BECOMES(Desktop::countWindows(program().pid()), windows);
    STEP(clickIn(words.settings, words.apply));
    BECOMES(program().stored(QStringLiteral("语言")).toString(), code);
}

// That the settings were changed is a row of the log, which is stored: it keeps its words.
void tst_Languages::logRowsStay() {
    STEP(clickButton(QStringLiteral("Log")));
    Accessible tab;
    COMES((tab = window().window().find(QStringLiteral("Operation log"))).has(Accessible::State::Showing));
    Desktop::click(tab.place().center());
    const auto hasRow = [this] {
        const auto cells = window().window().find(Accessible::Role::Table, QStringLiteral("Log rows")).children();
        return std::any_of(cells.begin(), cells.end(),
                           [](const Accessible::Seen& cell) { return cell.name == QStringLiteral("修改软件设置"); });
    };
    COMES(hasRow());
}

void tst_Languages::thereAndBack() {
#ifdef Q_OS_WIN
    const QString chineseBox = QStringLiteral("界面语言");
    const QString englishBox = QStringLiteral("Interface language");
#else
    // A box goes by the name of what is chosen.
    const QString chineseBox = QStringLiteral("简体中文");
    const QString englishBox = QStringLiteral("English");
#endif
    const Words chinese{Settings, QStringLiteral("设置分类"), QStringLiteral("常规"), chineseBox,
                        QStringLiteral("应用")};
    const Words english{QStringLiteral("Settings"), QStringLiteral("Settings pages"), QStringLiteral("General"),
                        englishBox, QStringLiteral("Apply")};
    STEP(startAndSignIn());
    STEP(clickButton(QStringLiteral("日志"))); // a page that is there already
    STEP(clickButton(QStringLiteral("视频")));
    STEP(openSettings(chinese.general));
    STEP(choose(chinese, QStringLiteral("End"), QStringLiteral("en")));
    // The dialog comes anew in the language that was chosen.
    COMES(program().isActive(english.settings));
    COMES(hasButton(QStringLiteral("Playback")) && hasButton(QStringLiteral("Close all videos")));
    QVERIFY(!hasButton(QStringLiteral("回放")));
    QVERIFY(shows(QStringLiteral("Search conditions")) && !shows(QStringLiteral("查询条件")));
    QVERIFY(window().hasRow(QStringLiteral("东大门入口"))); // what people named stays
    STEP(choose(english, QStringLiteral("Home"), QStringLiteral("zh")));
    COMES(program().isActive(chinese.settings));
    COMES(hasButton(QStringLiteral("回放")) && !hasButton(QStringLiteral("Playback")));
    STEP(choose(chinese, QStringLiteral("End"), QStringLiteral("en")));
    STEP(answer(english.settings, QStringLiteral("OK")));
    COMES(shows(QStringLiteral("Device tree")) && !shows(QStringLiteral("设备树")));
    STEP(logRowsStay());

    STEP(clickButton(QStringLiteral("Quit")));
    COMES(program().isActive(QStringLiteral("Notice")));
    Desktop::keys({QStringLiteral("shift+Tab"), QStringLiteral("space")});
    QCOMPARE(program().exitCode().value_or(-1), 0);
    QVERIFY(program().start());
    COMES(shows(QStringLiteral("Playback")));
    QVERIFY(!shows(QStringLiteral("回放")));
}

QTEST_MAIN(tst_Languages)
#include "tst_Languages.moc"
