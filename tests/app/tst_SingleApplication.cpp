// Real processes start at the same time, are killed and send each other messages, in a runtime folder of their own.

#include <QDir>
#include <QFile>
#include <QLocalSocket>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/ipc.h>
#include <sys/shm.h>
#include <sys/stat.h>

#include <csignal>
#include <vector>

namespace {

constexpr int LongestMs = 60000;
const QString Key = QStringLiteral("Corvanta");

} // namespace

class tst_SingleApplication : public QObject {
    Q_OBJECT

private slots:
    void init();
    void secondIsRefusedAndHeard();
    void nextMayStartAfterAnEnd();
    void nextMayStartAfterAKill();
    void refusedOneDoesNotKeepTheKilledOnesPlace();
    void segmentWithoutItsFileIsReused();
    void oneOfManyWins();
    void oneOfManyWinsAfterAKill();
    void keysDoNotMeet_data();
    void keysDoNotMeet();
    void usersDoNotMeet();
    void sayingNothingDoesNoHarm();
    void messages_data();
    void messages();

private:
    struct Subject : QProcess {
        ~Subject() override {
            kill();
            waitForFinished(LongestMs);
        }
        QString line() {
            while (!canReadLine() && waitForReadyRead(LongestMs)) {
            }
            return QString::fromUtf8(readLine()).chopped(1);
        }
    };
    using SubjectPtr = std::unique_ptr<Subject>;

    SubjectPtr start(const QString& message = {}, const QString& key = Key) const {
        return startIn(folder_->path(), message, key);
    }
    static SubjectPtr startIn(const QString& folder, const QString& message, const QString& key) {
        auto subject = std::make_unique<Subject>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder);
        subject->setProcessEnvironment(environment);
        subject->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        subject->start(QStringLiteral(INSTANCE_SUBJECT), {key, message});
        return subject;
    }
    void quit(Subject& first) const {
        const SubjectPtr other = start(QStringLiteral("quit"));
        QVERIFY(other->waitForFinished(LongestMs));
        QVERIFY(first.waitForFinished(LongestMs));
        QCOMPARE(first.exitStatus(), QProcess::NormalExit);
        QCOMPARE(first.exitCode(), 0);
    }
    static void kill(Subject& subject) {
        subject.kill();
        QVERIFY(subject.waitForFinished(LongestMs));
        QCOMPARE(subject.exitStatus(), QProcess::CrashExit);
    }
    void startMany(std::vector<SubjectPtr>& subjects, int& first) const;

    std::unique_ptr<QTemporaryDir> folder_;
};

void tst_SingleApplication::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QCOMPARE(chmod(folder_->path().toLocal8Bit(), 0700), 0);
}

void tst_SingleApplication::secondIsRefusedAndHeard() {
    const SubjectPtr first = start();
    QCOMPARE(first->line(), QStringLiteral("first"));
    const SubjectPtr second = start(QStringLiteral("message from other instance."));
    QCOMPARE(second->line(), QStringLiteral("running"));
    QCOMPARE(second->line(), QStringLiteral("sent"));
    QVERIFY(second->waitForFinished(LongestMs));
    QCOMPARE(second->exitCode(), 0);
    QCOMPARE(first->line(), QStringLiteral("message message from other instance."));
    // Nothing of it lies where other programs and users have theirs.
    QVERIFY(QFile::exists(folder_->filePath(Key)));
    QVERIFY(!QFile::exists(QDir::temp().filePath(Key)));
    quit(*first);
}

void tst_SingleApplication::nextMayStartAfterAnEnd() {
    for (int round = 0; round < 3; ++round) {
        const SubjectPtr first = start();
        QCOMPARE(first->line(), QStringLiteral("first"));
        quit(*first);
        QCOMPARE(QDir(folder_->path()).entryList(QDir::Files | QDir::System), QStringList{Key + ".lock"});
    }
}

void tst_SingleApplication::nextMayStartAfterAKill() {
    for (int round = 0; round < 3; ++round) {
        const SubjectPtr killed = start();
        QCOMPARE(killed->line(), QStringLiteral("first"));
        kill(*killed);
        // The case is the one that is meant: a socket and a key of shared memory are left.
        QVERIFY(QFile::exists(folder_->filePath(Key)));
        QVERIFY(QFile::exists(folder_->filePath(Key + ".memory")));

        const SubjectPtr next = start();
        QCOMPARE(next->line(), QStringLiteral("first"));
        const SubjectPtr refused = start(QStringLiteral("hello"));
        QCOMPARE(refused->line(), QStringLiteral("running"));
        QCOMPARE(refused->line(), QStringLiteral("sent"));
        QCOMPARE(next->line(), QStringLiteral("message hello"));
        QVERIFY(refused->waitForFinished(LongestMs));
        quit(*next);
        QVERIFY(!QFile::exists(folder_->filePath(Key + ".memory")));
    }
}

/// A refused program shows a box and may stand there for long after the first one was killed.
void tst_SingleApplication::refusedOneDoesNotKeepTheKilledOnesPlace() {
    const SubjectPtr first = start();
    QCOMPARE(first->line(), QStringLiteral("first"));
    ::kill(static_cast<pid_t>(first->processId()), SIGSTOP);
    // The stopped first takes the connection only in name: the refused one waits in its call, or has ended.
    const SubjectPtr refused = start(QStringLiteral("hello"));
    QCOMPARE(refused->line(), QStringLiteral("running"));
    ::kill(static_cast<pid_t>(refused->processId()), SIGSTOP);
    kill(*first);
    const SubjectPtr next = start();
    QCOMPARE(next->line(), QStringLiteral("first"));
    ::kill(static_cast<pid_t>(refused->processId()), SIGCONT);
    QVERIFY(refused->waitForFinished(LongestMs));
    quit(*next);
}

/// A runtime folder goes with the session, a segment stays; the next folder's file may get the same number.
void tst_SingleApplication::segmentWithoutItsFileIsReused() {
    const QString memory = folder_->filePath(Key + ".memory");
    std::vector<int> segments;
    for (int i = 0; i < 4; ++i) {
        const SubjectPtr first = start();
        QCOMPARE(first->line(), QStringLiteral("first"));
        const SubjectPtr refused = start(QStringLiteral("hello"));
        QCOMPARE(refused->line(), QStringLiteral("running"));
        QCOMPARE(refused->line(), QStringLiteral("sent"));
        kill(*first);
        segments.push_back(shmget(ftok(memory.toLocal8Bit(), 'Q'), 0, 0600));
        QVERIFY(QFile::remove(memory));
    }
    // Those that no later file had the number of are in nobody's way but the machine's.
    for (const int segment : segments)
        shmctl(segment, IPC_RMID, nullptr);
}

void tst_SingleApplication::startMany(std::vector<SubjectPtr>& subjects, int& first) const {
    constexpr int Many = 10;
    for (int i = 0; i < Many; ++i)
        subjects.push_back(start(QStringLiteral("hello")));
    int winners = 0;
    for (int i = 0; i < Many; ++i) {
        const QString line = subjects[static_cast<std::size_t>(i)]->line();
        if (line == QLatin1String("first")) {
            ++winners;
            first = i;
        } else {
            QCOMPARE(line, QStringLiteral("running"));
        }
    }
    QCOMPARE(winners, 1);
    for (int i = 0; i < Many; ++i) {
        if (i != first)
            QVERIFY(subjects[static_cast<std::size_t>(i)]->waitForFinished(LongestMs));
    }
}

void tst_SingleApplication::oneOfManyWins() {
    std::vector<SubjectPtr> subjects;
    int first = -1;
    startMany(subjects, first);
    QVERIFY(first >= 0);
    quit(*subjects[static_cast<std::size_t>(first)]);
}

void tst_SingleApplication::oneOfManyWinsAfterAKill() {
    const SubjectPtr killed = start();
    QCOMPARE(killed->line(), QStringLiteral("first"));
    kill(*killed);
    oneOfManyWins();
}

void tst_SingleApplication::keysDoNotMeet_data() {
    QTest::addColumn<QString>("key");
    QTest::newRow("another") << "Other";
    QTest::newRow("a path") << "../../../../tmp/Corvanta";
    QTest::newRow("absolute") << "/Corvanta";
    QTest::newRow("chinese") << QString::fromUtf8("监控");
}

void tst_SingleApplication::keysDoNotMeet() {
    QFETCH(QString, key);
    const SubjectPtr first = start();
    QCOMPARE(first->line(), QStringLiteral("first"));
    const SubjectPtr other = start({}, key);
    QCOMPARE(other->line(), QStringLiteral("first"));
    // Two locks, two sockets, two keys of shared memory, all in the folder.
    QCOMPARE(QDir(folder_->path()).entryList(QDir::Files | QDir::System | QDir::Hidden).size(), 6);
    const SubjectPtr end = start(QStringLiteral("quit"), key);
    QVERIFY(end->waitForFinished(LongestMs));
    QVERIFY(other->waitForFinished(LongestMs));
    quit(*first);
}

void tst_SingleApplication::usersDoNotMeet() {
    const SubjectPtr first = start();
    QCOMPARE(first->line(), QStringLiteral("first"));
    const QTemporaryDir othersFolder;
    QCOMPARE(chmod(othersFolder.path().toLocal8Bit(), 0700), 0);
    const SubjectPtr other = startIn(othersFolder.path(), {}, Key);
    QCOMPARE(other->line(), QStringLiteral("first"));
    const SubjectPtr end = startIn(othersFolder.path(), QStringLiteral("quit"), Key);
    QVERIFY(other->waitForFinished(LongestMs));
    QVERIFY(end->waitForFinished(LongestMs));
    quit(*first);
}

void tst_SingleApplication::sayingNothingDoesNoHarm() {
    const SubjectPtr first = start();
    QCOMPARE(first->line(), QStringLiteral("first"));
    QLocalSocket silent;
    silent.connectToServer(folder_->filePath(Key));
    QVERIFY(silent.waitForConnected(LongestMs));
    QLocalSocket hangingUp;
    hangingUp.connectToServer(folder_->filePath(Key));
    QVERIFY(hangingUp.waitForConnected(LongestMs));
    hangingUp.abort();
    const SubjectPtr second = start(QStringLiteral("hello"));
    QCOMPARE(second->line(), QStringLiteral("running"));
    QCOMPARE(first->line(), QStringLiteral("message hello"));
    QVERIFY(second->waitForFinished(LongestMs));
    quit(*first);
}

void tst_SingleApplication::messages_data() {
    QTest::addColumn<QString>("message");
    QTest::newRow("ascii") << "message from other instance.";
    QTest::newRow("chinese") << QString::fromUtf8("来自其他实例的消息");
    QTest::newRow("a few kilobytes") << QString(4000, QLatin1Char('x'));
}

void tst_SingleApplication::messages() {
    QFETCH(QString, message);
    const SubjectPtr first = start();
    QCOMPARE(first->line(), QStringLiteral("first"));
    const SubjectPtr second = start(message);
    QCOMPARE(second->line(), QStringLiteral("running"));
    QCOMPARE(second->line(), QStringLiteral("sent"));
    QVERIFY(second->waitForFinished(LongestMs));
    QCOMPARE(first->line(), QStringLiteral("message ") + message);
    quit(*first);
}

QTEST_GUILESS_MAIN(tst_SingleApplication)
#include "tst_SingleApplication.moc"
