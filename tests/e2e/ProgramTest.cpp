#include "e2e/ProgramTest.h"

#include <QDir>
#include <QtTest>

#include <cstdio>

using State = Accessible::State;

namespace {
bool hasReport(const QString& log) {
    return log.contains(QStringLiteral("Sanitizer")) || log.contains(QStringLiteral("runtime error"));
}
} // namespace

void ProgramTest::initTestCase() {
    QVERIFY2(desktop_.start(), "there is no window manager");
    reader_ = std::make_unique<ScreenReader>();
    QVERIFY2(reader_->start(), "there is no accessibility bus");
}

void ProgramTest::init() {
    if (program_ != nullptr && program_->isRunning())
        return;
    dir_ = std::make_unique<QTemporaryDir>();
    QVERIFY(dir_->isValid());
    program_ = another();
}

std::unique_ptr<Program> ProgramTest::another() const {
    return std::make_unique<Program>(*reader_, dir_->filePath(QStringLiteral("run")), data());
}

void ProgramTest::cleanup() {
    const bool failed = QTest::currentTestFailed();
    const QString log = program_->log();
    if (failed)
        std::fprintf(stderr, "%s\n", qPrintable(log));
    if (failed && qEnvironmentVariableIsSet("CORVANTA_E2E_PICTURES")) {
        const QString name =
            QStringLiteral("%1-%2.png")
                .arg(QLatin1String(QTest::currentTestFunction()), QLatin1String(QTest::currentDataTag()));
        Desktop::look().save(qEnvironmentVariable("CORVANTA_E2E_PICTURES") + QLatin1Char('/') + name);
    }
    if (failed || sharing_ == Sharing::None)
        program_.reset();
    QVERIFY(!hasReport(log));
}

void ProgramTest::cleanupTestCase() {
    if (program_ == nullptr || !program_->isRunning())
        return;
    // What is only found at the end is found as well.
    quit();
    const QString log = program_->log();
    if (hasReport(log))
        std::fprintf(stderr, "%s\n", qPrintable(log));
    QVERIFY(!hasReport(log));
    program_.reset();
}

void ProgramTest::start() {
    QVERIFY(program().start());
    COMES(!(window_ = MainWindow(program().accessible())).isNull());
    COMES(Program::isActive(window_.window()));
    BECOMES(window_.frame(), Desktop::activePlace().value_or(QRect()));
}

void ProgramTest::openSignIn() {
    STEP(clickButton(SignIn));
    COMES(program().isActive(SignIn));
}

void ProgramTest::typeSignIn(const QString& number, const QString& password) {
    // The number's field has the keyboard when the dialog comes up.
    Desktop::keys({QStringLiteral("ctrl+a")});
    Desktop::type(number);
    Desktop::keys({QStringLiteral("Tab"), QStringLiteral("ctrl+a")});
    Desktop::type(password);
    Desktop::keys({QStringLiteral("Return")});
}

void ProgramTest::waitForDevices(bool filled) {
    COMES(program().dialog(SignIn).isNull());
    COMES(window().rows().isEmpty() != filled);
    COMES(Program::isActive(window().window()));
}

void ProgramTest::signIn() {
    STEP(openSignIn());
    typeSignIn(Number, Password);
    waitForDevices(true);
}

void ProgramTest::startAndSignIn() {
    if (program().isRunning())
        return;
    STEP(start());
    signIn();
}

void ProgramTest::clickButton(const QString& name) {
    Accessible button;
    COMES(!(button = window().button(name)).isNull());
    COMES(button.has(State::Enabled));
    Desktop::click(button.place().center());
}

void ProgramTest::chooseLayout(const QString& name, int tiles) {
    if (!window().button(name).isNull()) {
        STEP(clickButton(name));
    } else {
        STEP(clickButton(QStringLiteral("画面布局")));
        STEP(chooseEntry(name));
    }
    BECOMES(window().shownTiles().size(), tiles);
}

void ProgramTest::reveal(const QString& row, QRect& place) {
    const auto isSeen = [&] {
        const QRect area = window().treeArea();
        place = window().row(row).place();
        if (place.isEmpty() || area.contains(place.center()))
            return !place.isEmpty();
        Desktop::turnWheel(area.center(), place.center().y() > area.center().y());
        return false;
    };
    COMES(isSeen());
    // Where the wheel has left it.
    place = window().row(row).place();
}

void ProgramTest::doubleClickRow(const QString& row) {
    QRect place;
    STEP(reveal(row, place));
    Desktop::doubleClick(place.center());
}

void ProgramTest::chooseEntry(const QString& text) {
    Accessible entry;
    COMES(!(entry = program().openMenu().find(text)).isNull());
    COMES(entry.has(State::Enabled));
    Desktop::click(entry.place().center());
    COMES(program().openMenu().isNull());
}

void ProgramTest::answer(const QString& title, const QString& button) {
    COMES(program().isActive(title));
    const Accessible dialog = program().dialog(title);
    const Accessible chosen = dialog.find(button);
    QVERIFY2(!chosen.isNull(), qPrintable(button));
    Desktop::click(Program::placeInActive(dialog, chosen).center());
    COMES(!(program().dialog(title) == dialog));
}

void ProgramTest::clickIn(const QString& title, const QString& name) {
    COMES(program().isActive(title));
    const Accessible dialog = program().dialog(title);
    const Accessible control = dialog.find(
        // Not the text beside it, which may be the same.
        [&name](const Accessible::Seen& seen) { return seen.name == name && seen.role != Accessible::Role::Label; });
    QVERIFY2(!control.isNull(), qPrintable(name));
    COMES(control.has(State::Showing) && control.has(State::Enabled));
    Desktop::click(Program::placeInActive(dialog, control).center());
}

void ProgramTest::openSettings(const QString& page) {
    STEP(clickButton(Settings));
    COMES(program().isActive(Settings));
    const Accessible dialog = program().dialog(Settings);
    for (const Accessible::Seen& row : dialog.find(QStringLiteral("设置分类")).children()) {
        if (row.name == page)
            Desktop::click(Program::placeInActive(dialog, row.thing).center());
    }
    const Accessible area = dialog.find([&page](const Accessible::Seen& seen) {
        return seen.name == page && seen.role != Accessible::Role::ListItem;
    });
    COMES(area.has(State::Visible));
}

void ProgramTest::quit() {
    STEP(clickButton(QStringLiteral("退出")));
    COMES(program().isActive(Tip));
    // From the safe answer, which has the keyboard, to the other one.
    Desktop::keys({QStringLiteral("shift+Tab"), QStringLiteral("space")});
    const auto code = program().exitCode();
    QCOMPARE(code.value_or(-1), 0);
    QVERIFY(program().log().contains(QStringLiteral("~AppManager()")));
}
