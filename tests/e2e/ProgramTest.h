#pragma once

#include "e2e/Desktop.h"
#include "e2e/MainWindow.h"
#include "e2e/Program.h"
#include "e2e/ScreenReader.h"

#include <QObject>
#include <QTemporaryDir>

#include <memory>
#include <vector>

/// What the tests of the built program share: a desktop with a screen reader, and a user with one program, which has
/// never been started. After each test what the program said is searched for a sanitizer's report.
///
/// A test may put further computers beside the first one. Their programs share the display and nothing else; all
/// steps are done at the one where the user sits.
class ProgramTest : public QObject {
    Q_OBJECT
public:
    /// Each test has a user and a program of its own, or goes on with those of the one before, unless that failed.
    enum class Sharing { None, Program };

protected:
    static const inline QString Number = QStringLiteral("13800138000");
    static const inline QString Password = QStringLiteral("corvanta-8000");
    static const inline QString SignIn = QStringLiteral("登录");
    static const inline QString Account = QStringLiteral("账号");
    static const inline QString SignOut = QStringLiteral("退出登录");
    static const inline QString Settings = QStringLiteral("软件设置");
    static const inline QString Tip = QStringLiteral("提示");

    explicit ProgramTest(Sharing sharing = Sharing::None)
        : sharing_(sharing) {}

    Program& program() { return *at_->program; }
    const Program& program() const { return *at_->program; }
    MainWindow& window() { return at_->window; }
    /// Another process of the same user.
    std::unique_ptr<Program> another() const { return at_->makeProgram(*reader_); }
    QString data() const { return at_->data(); }
    /// Has the user's data in a folder that is not of this test.
    void keepDataIn(const QString& folder);
    /// One more computer, with a user and a program of its own, and sits down at it.
    void addComputer();
    /// Goes to a computer, from 0, and takes its program's window to the front.
    void sitAt(int computer);

    // Each of these is a failure of the test when it does not come about.
    /// Starts the program, or another installation of it, and waits until its main window has the keyboard.
    void start(const QString& installation = {});
    /// Opens the sign-in dialog and waits until it has the keyboard.
    void openSignIn();
    /// Types into the sign-in dialog and sends it off.
    static void typeSignIn(const QString& number, const QString& password);
    /// Waits until the sign-in dialog is gone and the device tree is filled, or empty.
    void waitForDevices(bool filled);
    /// Signs in with the account of the first start, which the dialog offers only then.
    void signIn();
    /// `start` and `signIn`; nothing when a shared program runs already.
    void startAndSignIn(const QString& installation = {});
    /// Shows a layout by its button or, without one, by the grid's menu, and waits for its tiles.
    void chooseLayout(const QString& name, int tiles);
    /// Waits until a row is seen, turning the wheel where it has to, and tells its place.
    void reveal(const QString& row, QRect& place);
    void doubleClickRow(const QString& row);
    /// Chooses an entry of the menu that is open.
    void chooseEntry(const QString& text);
    /// Clicks a button of the main window.
    void clickButton(const QString& name);
    /// Waits for a question, answers it by a button's name and waits until it is gone.
    void answer(const QString& title, const QString& button);
    /// Clicks a control that a dialog shows, by its name.
    void clickIn(const QString& title, const QString& name);
    /// Shows one of a dialog's pages by its row in the list of them.
    void showPage(const QString& title, const QString& list, const QString& page);
    /// Drags something from one place to another and lets it go.
    void dragTo(const QPoint& from, const QPoint& to);
    /// Takes hold of the main window's lower right corner, at a few pixels more or less, and waits until it follows.
    void takeCorner();
    /// Opens the settings and shows one of the pages.
    void openSettings(const QString& page);
    /// Ends the program as a user does, and demands that it ends well.
    void quit();

protected slots:
    void initTestCase();
    /// A test class with an `init` of its own calls this one.
    void init();
    void cleanup();
    void cleanupTestCase();

private:
    struct Computer {
        QTemporaryDir dir;
        std::unique_ptr<Program> program;
        MainWindow window;
        QString otherData;

        QString data() const { return otherData.isEmpty() ? dir.filePath(QStringLiteral("data 数据")) : otherData; }
        std::unique_ptr<Program> makeProgram(const ScreenReader& reader) const;
    };

    bool isRunning() const;
    void cleanUp(Computer& computer) const;

    const Sharing sharing_;
    Desktop desktop_;
    std::unique_ptr<ScreenReader> reader_;
    std::vector<std::unique_ptr<Computer>> computers_;
    Computer* at_ = nullptr; ///< one of them
};

/// Leaves the test when a step of it has failed.
#define STEP(...)                                                                                                    \
    do {                                                                                                             \
        __VA_ARGS__;                                                                                                 \
        if (QTest::currentTestFailed())                                                                              \
            return;                                                                                                  \
    } while (false)

/// Waits for what must come. Unlike Qt's own, by the clock: what is asked may take its time.
#define COMES(...) QVERIFY2(QTest::qWaitFor([&]() -> bool { return __VA_ARGS__; }, Desktop::Patience), #__VA_ARGS__)
#define BECOMES(value, expected)                                                                                     \
    do {                                                                                                             \
        auto seen_ = value;                                                                                          \
        const decltype(seen_) wanted_ = expected;                                                                    \
        const bool came_ = QTest::qWaitFor([&] { return (seen_ = value) == wanted_; }, Desktop::Patience);           \
        Q_UNUSED(came_)                                                                                              \
        QCOMPARE(seen_, wanted_);                                                                                    \
    } while (false)
