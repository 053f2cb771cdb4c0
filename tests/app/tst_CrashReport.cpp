#include "app/CrashReport.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

namespace {

constexpr int LongestMs = 60000;

const QString Body = QString::fromUtf8("<FONT size=4><div><b>对于发生的错误，表示诚挚的歉意</b><br/></div>"
                                       "<div>错误代码：%1</div><div>错误地址：%2</div></FONT>");

} // namespace

class tst_CrashReport : public QObject {
    Q_OBJECT

private slots:
    void writesNumbersInHexadecimal();
    void showsTheBoxAfterACrash();
    void showsTheBoxOnRequest();
    void refusesWhatAreNoNumbers_data();
    void refusesWhatAreNoNumbers();
    void saysItWithoutADisplay();
    void otherArgumentsAreNotMeant();

private:
    static QStringList box(const QString& file) {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? QString::fromUtf8(in.readAll()).split(QLatin1Char('\n'))
                                            : QStringList();
    }
    void prepare(QProcess& subject) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("BOX_FILE"), folder_.filePath(QStringLiteral("box")));
        subject.setProcessEnvironment(environment);
        subject.setWorkingDirectory(folder_.path());
    }

    QTemporaryDir folder_;
};

void tst_CrashReport::writesNumbersInHexadecimal() {
    QCOMPARE(corvanta::crashReport::text(0xC0000005U, 0xABCDEF), Body.arg("c0000005", "abcdef"));
}

void tst_CrashReport::showsTheBoxAfterACrash() {
    QProcess subject;
    prepare(subject);
    subject.start(QStringLiteral(CRASH_BOX_SUBJECT), {QStringLiteral("crash")});
    QVERIFY(subject.waitForFinished(LongestMs));
    QCOMPARE(subject.exitStatus(), QProcess::CrashExit);
    QCOMPARE(subject.exitCode(), SIGABRT);
    const QString file = folder_.filePath(QStringLiteral("box"));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(file), LongestMs);

    const QStringList dumps = QDir(folder_.path()).entryList({QStringLiteral("*.DMP")}, QDir::Files);
    QCOMPARE(dumps.size(), 1);
    QFile dump(folder_.filePath(dumps.first()));
    QVERIFY(dump.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(dump.readAll());
    const QString address = text.section(QStringLiteral("\npc: "), 1).section(QLatin1Char(' '), 0, 0);
    QCOMPARE(box(file), (QStringList{QString::fromUtf8("程序崩溃"), Body.arg(QStringLiteral("6"), address),
                                     QStringLiteral("1"), QStringLiteral("1"), QString()}));
    QVERIFY(QFile::remove(file));
}

void tst_CrashReport::showsTheBoxOnRequest() {
    QProcess subject;
    prepare(subject);
    subject.start(QStringLiteral(CRASH_BOX_SUBJECT),
                  {QStringLiteral("--crash-report"), QStringLiteral("B"), QStringLiteral("ffffffffffffffff")});
    QVERIFY(subject.waitForFinished(LongestMs));
    QCOMPARE(subject.exitStatus(), QProcess::NormalExit);
    QCOMPARE(subject.exitCode(), 0);
    const QString file = folder_.filePath(QStringLiteral("box"));
    QCOMPARE(box(file).value(1), Body.arg("b", "ffffffffffffffff"));
    QVERIFY(QFile::remove(file));
}

void tst_CrashReport::refusesWhatAreNoNumbers_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("none") << QStringList();
    QTest::newRow("one") << QStringList{"b"};
    QTest::newRow("three") << QStringList{"b", "0", "0"};
    QTest::newRow("markup") << QStringList{"b", "<img src=x>"};
    QTest::newRow("number, then markup") << QStringList{"b<b>", "0"};
    QTest::newRow("empty") << QStringList{"b", ""};
    QTest::newRow("prefix") << QStringList{"0xb", "0"};
    QTest::newRow("sign") << QStringList{"b", "-1"};
    QTest::newRow("blank") << QStringList{" b", "0"};
    QTest::newRow("too large") << QStringList{"b", "10000000000000000"};
}

void tst_CrashReport::refusesWhatAreNoNumbers() {
    QFETCH(QStringList, arguments);
    QProcess subject;
    prepare(subject);
    subject.start(QStringLiteral(CRASH_BOX_SUBJECT), QStringList{QStringLiteral("--crash-report")} + arguments);
    QVERIFY(subject.waitForFinished(LongestMs));
    QCOMPARE(subject.exitStatus(), QProcess::NormalExit);
    QCOMPARE(subject.exitCode(), 2);
    QVERIFY(subject.readAllStandardError().contains("hexadecimal"));
    QVERIFY(!QFile::exists(folder_.filePath(QStringLiteral("box"))));
}

void tst_CrashReport::saysItWithoutADisplay() {
    QProcess subject;
    prepare(subject);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QString::fromLatin1(variable));
    subject.setProcessEnvironment(environment);
    subject.start(QStringLiteral(CRASH_BOX_SUBJECT),
                  {QStringLiteral("--crash-report"), QStringLiteral("b"), QStringLiteral("1f")});
    QVERIFY(subject.waitForFinished(LongestMs));
    QCOMPARE(subject.exitStatus(), QProcess::NormalExit);
    QCOMPARE(subject.exitCode(), 1);
    QVERIFY(subject.readAllStandardError().contains("code b, address 1f"));
}

void tst_CrashReport::otherArgumentsAreNotMeant() {
    char program[] = "corvanta";
    char screenshots[] = "--screenshots";
    char* arguments[] = {program, screenshots, nullptr};
    QVERIFY(!corvanta::crashReport::runBoxIfAsked(2, arguments).has_value());
    QVERIFY(!corvanta::crashReport::runBoxIfAsked(1, arguments).has_value());
}

QTEST_GUILESS_MAIN(tst_CrashReport)
#include "tst_CrashReport.moc"
