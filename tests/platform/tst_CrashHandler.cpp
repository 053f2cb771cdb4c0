// Real processes crash, and what they leave is looked at.

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <sys/wait.h>

#include <csignal>
#include <cstdlib>

namespace {

const QString Subject = QStringLiteral(CRASH_SUBJECT);
constexpr int LongestMs = 60000;

/// What a crashed subject left.
struct Remains {
    int signal = 0; ///< that ended it; 0 if it ended by itself
    QStringList files;
    QString text;
    QStringList box; ///< the helper's arguments
};

QString contentOf(const QString& file) {
    QFile in(file);
    return in.open(QIODevice::ReadOnly) ? QString::fromUtf8(in.readAll()) : QString();
}

/// The lines between the heading `name` and the next empty line.
QStringList section(const QString& text, const QString& name) {
    const QStringList lines = text.split(QLatin1Char('\n'));
    const int start = lines.indexOf(name + QLatin1Char(':'));
    if (start < 0)
        return {};
    const int end = lines.indexOf(QString(), start);
    return lines.mid(start + 1, end < 0 ? -1 : end - start - 1);
}

/// The value in the line "name: value".
QString value(const QString& text, const QString& name) {
    const QRegularExpression line(QStringLiteral("^%1: (.*)$").arg(name), QRegularExpression::MultilineOption);
    return line.match(text).captured(1);
}

} // namespace

class tst_CrashHandler : public QObject {
    Q_OBJECT

private slots:
    void reports_data();
    void reports();
    void overwritesFileOfTheSameSecond();
    void reportsWithoutFolder();
    void endsWhenTheReportCrashes();

private:
    /// Runs the subject in `folder` until it has ended and its helper has been seen.
    static void crash(const QString& how, const QString& folder, Remains& remains);
};

void tst_CrashHandler::crash(const QString& how, const QString& folder, Remains& remains) {
    const QTemporaryDir boxFolder;
    const QString boxFile = boxFolder.filePath(QStringLiteral("box"));
    QProcess subject;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("BOX_FILE"), boxFile);
    // No core files, and no summary of the sanitizers where a crash is wanted.
    subject.setProcessEnvironment(environment);
    subject.setWorkingDirectory(folder);
    subject.setProcessChannelMode(QProcess::MergedChannels);
    subject.start(Subject, {how});
    QVERIFY(subject.waitForFinished(LongestMs));
    QCOMPARE(subject.exitStatus(), QProcess::CrashExit);
    remains.signal = subject.exitCode();
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(boxFile), LongestMs);
    remains.box = contentOf(boxFile).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    remains.files = QDir(folder).entryList(QDir::Files);
    if (remains.files.size() == 1)
        remains.text = contentOf(folder + QLatin1Char('/') + remains.files.first());
}

void tst_CrashHandler::reports_data() {
    QTest::addColumn<int>("signal");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("address"); // empty: not to be known, or none

    QTest::newRow("null") << SIGSEGV << "SIGSEGV"
                          << "0";
    QTest::newRow("abort") << SIGABRT << "SIGABRT" << QString();
    QTest::newRow("exception") << SIGABRT << "SIGABRT" << QString();
    QTest::newRow("fpe") << SIGFPE << "SIGFPE" << QString();
    QTest::newRow("ill") << SIGILL << "SIGILL" << QString();
    QTest::newRow("overflow") << SIGSEGV << "SIGSEGV" << QString();
    QTest::newRow("thread") << SIGSEGV << "SIGSEGV"
                            << "0";
    QTest::newRow("thread-overflow") << SIGSEGV << "SIGSEGV" << QString();
    QTest::newRow("after-thread-stack") << SIGSEGV << "SIGSEGV" << QString();
    QTest::newRow("two-threads") << SIGSEGV << "SIGSEGV"
                                 << "0";
}

void tst_CrashHandler::reports() {
    QFETCH(int, signal);
    QFETCH(QString, name);
    QFETCH(QString, address);
    const QTemporaryDir folder;
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    Remains remains;
    crash(QString::fromLatin1(QTest::currentDataTag()), folder.path(), remains);
    if (QTest::currentTestFailed())
        return;

    QCOMPARE(remains.signal, signal);
    QCOMPARE(remains.files.size(), 1);
    const QString stem = remains.files.first().section(QLatin1Char('.'), 0, 0);
    QCOMPARE(remains.files.first(), stem + QStringLiteral(".DMP"));
    const QDateTime time = QDateTime::fromString(stem, QStringLiteral("yyyy_MM_dd_hhmmss"));
    QVERIFY2(time >= before && time <= QDateTime::currentDateTime(), qPrintable(stem));

    QCOMPARE(value(remains.text, QStringLiteral("signal")), QStringLiteral("%1 %2").arg(signal).arg(name));
    if (!address.isEmpty())
        QCOMPARE(value(remains.text, QStringLiteral("address")), address);

    // The list of modules is the kernel's: whole, with the program and the C library in it.
    const QStringList modules = section(remains.text, QStringLiteral("modules"));
    QVERIFY(!modules.filter(QRegularExpression(QStringLiteral(" r-xp .* %1$").arg(Subject))).isEmpty());
    QVERIFY(!modules.filter(QStringLiteral("libc.so")).isEmpty());
    QVERIFY(!modules.filter(QStringLiteral("[stack]")).isEmpty());

    const QStringList frames = section(remains.text, QStringLiteral("backtrace"));
    QVERIFY2(!frames.filter(Subject + QLatin1Char('+')).isEmpty(), qPrintable(remains.text));
    // The walk begins where the crash was, not in the handler.
    const QString place = value(remains.text, QStringLiteral("pc"));
    QCOMPARE(frames.first(), QStringLiteral("#0 ") + place);
    if (signal == SIGSEGV || signal == SIGILL)
        QVERIFY2(place.contains(Subject), qPrintable(place));

    QCOMPARE(remains.box, (QStringList{QStringLiteral("--crash-report"), QString::number(signal, 16),
                                       place.section(QLatin1Char(' '), 0, 0)}));
}

void tst_CrashHandler::overwritesFileOfTheSameSecond() {
    const QTemporaryDir folder;
    // Whatever second of the next minute the crash comes in, there is a file of that name already.
    const QByteArray old(1 << 20, 'o');
    for (int second = 0; second < 60; ++second) {
        const QString name =
            QDateTime::currentDateTime().addSecs(second).toString(QStringLiteral("yyyy_MM_dd_hhmmss'.DMP'"));
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(old.left(second == 0 ? old.size() : 200000)) > 0);
    }
    Remains remains;
    crash(QStringLiteral("null"), folder.path(), remains);
    int written = 0;
    for (const QString& name : qAsConst(remains.files)) {
        const QString text = contentOf(folder.filePath(name));
        if (text.contains(QLatin1String("signal:"))) {
            ++written;
            QVERIFY(!text.contains(QLatin1String("ooo")));
        }
    }
    QCOMPARE(written, 1);
}

void tst_CrashHandler::reportsWithoutFolder() {
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("gone")));
    Remains remains;
    crash(QStringLiteral("no-folder"), folder.filePath(QStringLiteral("gone")), remains);
    QCOMPARE(remains.signal, SIGSEGV);
    QVERIFY(!QFile::exists(folder.filePath(QStringLiteral("gone"))));
    QCOMPARE(remains.box.size(), 3);
}

void tst_CrashHandler::endsWhenTheReportCrashes() {
    const QTemporaryDir folder;
    Remains remains;
    crash(QStringLiteral("lost-stack"), folder.path(), remains);
    QCOMPARE(remains.signal, SIGSEGV);
    QCOMPARE(value(remains.text, QStringLiteral("signal")), QStringLiteral("11 SIGSEGV"));
    QVERIFY(!section(remains.text, QStringLiteral("modules")).isEmpty());
    QCOMPARE(remains.box.value(1), QStringLiteral("b"));
}

QTEST_GUILESS_MAIN(tst_CrashHandler)
#include "tst_CrashHandler.moc"
