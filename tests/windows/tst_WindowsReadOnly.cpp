#include "e2e/ProgramTest.h"
#include "e2e/Sight.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QtTest>

/// The program where an administrator has installed it: in a folder with Chinese letters and a blank in its name,
/// into which the user cannot write. What he makes is in his own folder then.
class tst_WindowsReadOnly final : public ProgramTest {
    Q_OBJECT
private slots:
    void keepsDataInTheUsersFolder();
};

void tst_WindowsReadOnly::keepsDataInTheUsersFolder() {
    const QString installed = qEnvironmentVariable("CORVANTA_READ_ONLY_PROGRAM");
    if (installed.isEmpty())
        QSKIP("CORVANTA_READ_ONLY_PROGRAM does not name a program in a folder that cannot be written to");
    const QDir folder = QFileInfo(installed).absoluteDir();
    const QString users =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/corvanta");
    QVERIFY2(!QDir(users).exists(), "there is a user's own data, which this test does not touch");
    const auto clear = qScopeGuard([&users] { QDir(users).removeRecursively(); });
    const QStringList before = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);

    keepDataIn(users);
    STEP(startAndSignIn(installed));
    STEP(chooseLayout(QStringLiteral("四窗口"), 4));
    STEP(doubleClickRow(QStringLiteral("东大门入口")));
    QVERIFY(sight::becomesLive(window().tile(0)));
    quit();
    for (const char* made : {"dataBase.db", "config/set.json", "service", "workspaces"})
        QVERIFY2(QFileInfo::exists(users + QLatin1Char('/') + QLatin1String(made)), made);
    QCOMPARE(folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), before);

    // What was made is there again: the account, the layout and what was open in it.
    STEP(startAndSignIn(installed));
    BECOMES(window().shownTiles().size(), 4);
    QVERIFY(sight::becomesLive(window().tile(0)));
    quit();
}

QTEST_MAIN(tst_WindowsReadOnly)
#include "tst_WindowsReadOnly.moc"
