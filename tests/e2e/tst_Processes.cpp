#include "e2e/ProgramTest.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

/// Several processes of the program after and beside one another: the second start, and the one that reports a crash.
class tst_Processes final : public ProgramTest {
    Q_OBJECT
private slots:
    void secondStartIsRefused();
    void crashIsReported();

private:
    void refused();
};

void tst_Processes::refused() {
    const auto second = another();
    QVERIFY(second->start());
    COMES(second->isActive(Tip));
    QVERIFY(!second->dialog(Tip).find(QStringLiteral("该软件正在运行!")).isNull());
    QVERIFY(MainWindow(second->accessible()).isNull());
    Desktop::keys({QStringLiteral("Return")});
    const auto code = second->exitCode();
    QCOMPARE(code.value_or(-1), 0);
    QVERIFY(!second->log().contains(QStringLiteral("Sanitizer")));
    QVERIFY(program().isRunning());
    COMES(Program::isActive(window().window()));
}

void tst_Processes::secondStartIsRefused() {
    STEP(start());
    STEP(refused());
    program().kill();
    STEP(start());
    STEP(refused());
    quit();
}

void tst_Processes::crashIsReported() {
#ifdef Q_OS_WIN
    QSKIP("the program itself tells it there, and tst_WindowsCrash reads its report");
#endif
    const QString box = QStringLiteral("^程序崩溃$");
    STEP(start());
    program().crash();
    QVERIFY2(!program().exitCode(), "the signal must be what ended it");
    COMES(Desktop::isActive(box));
    const qint64 helper = Desktop::window(box)->process;
    QVERIFY(helper != program().pid());

    const QStringList reports = QDir(data()).entryList({QStringLiteral("*.DMP")});
    QCOMPARE(reports.size(), 1);
    QVERIFY(
        QRegularExpression(QStringLiteral("^\\d{4}_\\d\\d_\\d\\d_\\d{6}\\.DMP$")).match(reports.first()).hasMatch());
    QFile report(data() + QLatin1Char('/') + reports.first());
    QVERIFY(report.open(QIODevice::ReadOnly));
    const QByteArray content = report.readAll();
    QVERIFY2(content.startsWith("signal: 11 SIGSEGV\n"), content);
    QVERIFY2(content.contains("\nbacktrace:\n#0 "), content);

    Desktop::keys({QStringLiteral("Return")});
    COMES(!Desktop::window(box));
    // Ended, even if nobody has taken note of it.
    COMES([helper] {
        QFile state(QStringLiteral("/proc/%1/stat").arg(helper));
        return !state.open(QIODevice::ReadOnly) || state.readAll().contains(") Z ");
    }());
    // The next start is like any other.
    STEP(start());
    quit();
}

QTEST_MAIN(tst_Processes)
#include "tst_Processes.moc"
