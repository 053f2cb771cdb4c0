#include "e2e/ProgramTest.h"

#include <QDir>
#include <QRegularExpression>
#include <QtTest>

#include <algorithm>
#include <cstdio>
#include <utility>

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
    if (isRunning())
        return;
    computers_.clear();
    addComputer();
}

bool ProgramTest::isRunning() const {
    return std::any_of(computers_.begin(), computers_.end(),
                       [](const auto& one) { return one->program != nullptr && one->program->isRunning(); });
}

std::unique_ptr<Program> ProgramTest::Computer::makeProgram(const ScreenReader& reader) const {
    return std::make_unique<Program>(reader, dir.filePath(QStringLiteral("run")), data());
}

void ProgramTest::addComputer() {
    auto added = std::make_unique<Computer>();
    QVERIFY(added->dir.isValid());
    added->program = added->makeProgram(*reader_);
    at_ = added.get();
    computers_.push_back(std::move(added));
}

void ProgramTest::sitAt(int computer) {
    at_ = computers_.at(static_cast<std::size_t>(computer)).get();
    if (!program().isRunning())
        return;
    const QString title = QRegularExpression::escape(window().title());
    // One that has a dialog before it gives the keyboard to that.
    COMES((Desktop::activate(title, program().pid()), Desktop::isActive(QStringLiteral(".*"), program().pid())));
}

void ProgramTest::cleanup() {
    if (QTest::currentTestFailed() && qEnvironmentVariableIsSet("CORVANTA_E2E_PICTURES")) {
        const QString name =
            QStringLiteral("%1-%2.png")
                .arg(QLatin1String(QTest::currentTestFunction()), QLatin1String(QTest::currentDataTag()));
        Desktop::look().save(qEnvironmentVariable("CORVANTA_E2E_PICTURES") + QLatin1Char('/') + name);
    }
    for (const auto& computer : computers_)
        cleanUp(*computer);
}

void ProgramTest::cleanUp(Computer& computer) const {
    if (computer.program == nullptr)
        return;
    const bool failed = QTest::currentTestFailed();
    const QString log = computer.program->log();
    if (failed)
        std::fprintf(stderr, "%s\n", qPrintable(log));
    if (failed || sharing_ == Sharing::None)
        computer.program.reset();
    QVERIFY(!hasReport(log));
}

void ProgramTest::cleanupTestCase() {
    if (!isRunning())
        return;
    // What is only found at the end is found as well.
    quit();
    const QString log = program().log();
    if (hasReport(log))
        std::fprintf(stderr, "%s\n", qPrintable(log));
    QVERIFY(!hasReport(log));
    computers_.clear();
}

void ProgramTest::keepDataIn(const QString& folder) {
    at_->otherData = folder;
    at_->program = at_->makeProgram(*reader_);
}

void ProgramTest::start(const QString& installation) {
    QVERIFY(program().start(installation));
    COMES(!(window() = MainWindow(program().accessible())).isNull());
    COMES(Program::isActive(window().window()));
    // Asked anew each time: the dialog of an automatic sign-in has the keyboard for a moment.
    COMES(window().frame() == Desktop::activePlace().value_or(QRect()));
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

void ProgramTest::startAndSignIn(const QString& installation) {
    if (program().isRunning())
        return;
    STEP(start(installation));
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
    Accessible control;
    const auto find = [&] {
        // Not the text beside it, which may be the same, nor what stands on another page.
        control = dialog.find([&name](const Accessible::Seen& seen) {
            return seen.name == name && seen.role != Accessible::Role::Label && seen.thing.has(State::Showing);
        });
        return !control.isNull() && control.has(State::Enabled);
    };
    QVERIFY2(QTest::qWaitFor(find, Desktop::Patience), qPrintable(name));
    Desktop::click(Program::placeInActive(dialog, control).center());
}

void ProgramTest::openSettings(const QString& page) {
    STEP(clickButton(Settings));
    showPage(Settings, QStringLiteral("设置分类"), page);
}

void ProgramTest::showPage(const QString& title, const QString& list, const QString& page) {
    COMES(program().isActive(title));
    const Accessible dialog = program().dialog(title);
    for (const Accessible::Seen& row : dialog.find(list).children()) {
        if (row.name == page)
            Desktop::click(Program::placeInActive(dialog, row.thing).center());
    }
    const Accessible area = dialog.find([&page](const Accessible::Seen& seen) {
        return seen.name == page && seen.role != Accessible::Role::ListItem;
    });
    COMES(area.has(State::Visible));
}

void ProgramTest::dragTo(const QPoint& from, const QPoint& to) {
    const int windows = Desktop::countWindows(program().pid());
    Desktop::moveMouse(from);
    Desktop::press();
    // What is dragged follows the mouse in a window of its own.
    int steps = 0;
    COMES((Desktop::moveMouse(from + QPoint(15 + ++steps % 4, 4)), Desktop::countWindows(program().pid()) > windows));
    Desktop::moveMouse(to - QPoint(3, 0));
    Desktop::moveMouse(to);
    Desktop::release();
    BECOMES(Desktop::countWindows(program().pid()), windows);
}

void ProgramTest::takeCorner() {
    const QRect before = window().frame();
    const QPoint corner = before.bottomRight() - QPoint(1, 1);
    int steps = 0;
    Desktop::moveMouse(corner);
    Desktop::press();
    COMES((Desktop::pull(corner, corner - QPoint(16, 16), steps), window().frame().size() != before.size()));
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
