#include "recording/RecorderTest.h"
#include "support/CodedVideo.h"

#include <QDir>
#include <QtTest>

namespace keys = corvanta::keys;
using State = Recorder::State;

/// Recordings whose camera, drive or clock fails.
class tst_RecorderFaults final : public RecorderTest {
    Q_OBJECT
private slots:
    void connectionLost();
    void endedByTheDevice();
    void neverOpened();
    void otherDriveTakesOver();
    void noRoomAnywhere();
    void folderCannotBeMade();
    void namesAreNeverTakenTwice();
    void clockIsSetBack();
    void requestRefused();
};

void tst_RecorderFaults::connectionLost() {
    const int id = start(QStringLiteral("c"));
    opened(id);
    frames(id, 0, 30);
    report(id, R"("type":"avstate","state":1)");
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Waiting);
    const QString first = files().first();
    QCOMPARE(ProbedVideo::of(first).frames, 30); // complete, while the connection is being made
    now_ = now_.addSecs(20);
    waited_ += std::chrono::seconds(20);
    opened(id);
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Recording);
    QCOMPARE(recorder_->lasting(QStringLiteral("c")), std::make_optional(std::chrono::seconds(20)));
    frames(id, 25, 45);
    recorder_->stop(QStringLiteral("c"));
    queue_->drain();
    QCOMPARE(files().size(), 2);
    QCOMPARE(ProbedVideo::of(files().last()).frames, 20);
}

void tst_RecorderFaults::endedByTheDevice() {
    const int id = start(QStringLiteral("c"));
    opened(id);
    frames(id, 0, 30);
    report(id, R"("type":"avclose","retcode":15)");
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Waiting);
    QCOMPARE(ProbedVideo::of(files().first()).frames, 30);
    waited_ += Recorder::RetryTime;
    QTRY_COMPARE_WITH_TIMEOUT(sdk_.requests().size(), std::size_t(2), 60000);
    const int again = sdk_.requests().back().id;
    opened(again);
    frames(again, 0, 10);
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Recording);
    recorder_->stop(QStringLiteral("c"));
    queue_->drain();
    QCOMPARE(files().size(), 2);
}

void tst_RecorderFaults::neverOpened() {
    const int id = start(QStringLiteral("c"));
    for (int i = 0; i < 2; ++i)
        QTest::ignoreMessage(QtWarningMsg, "Recoderclose not contains AviRecoder");
    report(id, R"("type":"avclose","retcode":12)");
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Off);
    report(start(QStringLiteral("named")), R"("type":"avclose","retcode":12)");
    QCOMPARE(said_, QStringList({QStringLiteral("c 录像失败(12)"), QStringLiteral("东门 %2 录像失败(12)")}));
    QVERIFY(settings_->get(keys::Recordings).toStringList().isEmpty());
    QVERIFY(files().isEmpty());
}

void tst_RecorderFaults::otherDriveTakesOver() {
    const int id = start(QStringLiteral("c"));
    opened(id);
    frames(id, 0, 30);
    disks_->setFull({drive(1)});
    frames(id, 30, 50); // no key frame: goes on where it is
    QCOMPARE(files(drive(2)).size(), 0);
    frames(id, 50, 60);
    QCOMPARE(files(drive(2)).size(), 1);
    disks_->setFull({});
    frames(id, 60, 80); // back at the key frame 75
    recorder_->stop(QStringLiteral("c"));
    queue_->drain();
    QCOMPARE(files(drive(1)).size(), 2);
    int sum = 0;
    for (const QString& file : files()) {
        const ProbedVideo probed = ProbedVideo::of(file);
        QCOMPARE(probed.problems, QString());
        sum += probed.frames;
    }
    QCOMPARE(sum, 80);
    QCOMPARE(ProbedVideo::of(files(drive(2)).first()).frames, 25);
}

void tst_RecorderFaults::noRoomAnywhere() {
    disks_->setFull({drive(1), drive(2)});
    const int id = start(QStringLiteral("c"));
    opened(id);
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Waiting);
    QCOMPARE(said_, QStringList{QStringLiteral("c 录像暂停：没有可用的存储空间")});
    frames(id, 0, 30);
    QVERIFY(files().isEmpty());
    // There is room again: from the next key frame on.
    disks_->setFull({});
    waited_ += Recorder::RetryTime;
    QTRY_COMPARE_WITH_TIMEOUT(recorder_->state(QStringLiteral("c")), State::Recording, 60000);
    frames(id, 30, 60);
    recorder_->stop(QStringLiteral("c"));
    queue_->drain();
    QCOMPARE(ProbedVideo::of(files().first()).frames, 10);
}

void tst_RecorderFaults::folderCannotBeMade() {
    QFile inTheWay(drive(1) + QStringLiteral("ZEL"));
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    const int id = start(QStringLiteral("c"));
    opened(id);
    QCOMPARE(said_.size(), 1);
    QVERIFY(said_.first().startsWith(QStringLiteral("c 录像文件无法创建：")));
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Recording); // at once, so that nothing is lost
    QVERIFY(recorder_->file(QStringLiteral("c")).startsWith(drive(2)));
}

void tst_RecorderFaults::namesAreNeverTakenTwice() {
    const QString folder = drive(1) + QStringLiteral("ZEL/c/LocalRecord/2024-03-05/");
    QVERIFY(QDir().mkpath(folder));
    for (const char* const name : {"20240305100000.avi", "20240305100001.avi"}) {
        QFile file(folder + QLatin1String(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("precious") == 8);
    }
    const int id = start(QStringLiteral("c"));
    opened(id);
    QCOMPARE(recorder_->file(QStringLiteral("c")), folder + QStringLiteral("20240305100002.avi"));
}

// By a day, in the middle of a recording, and yesterday had one at the same second.
void tst_RecorderFaults::clockIsSetBack() {
    const QString yesterday = drive(1) + QStringLiteral("ZEL/c/LocalRecord/2024-03-04/");
    QVERIFY(QDir().mkpath(yesterday));
    QFile old(yesterday + QStringLiteral("20240304100015.avi"));
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("precious") == 8);
    old.close();
    settings_->set(keys::PackingTime, 1);
    const int id = start(QStringLiteral("c"));
    opened(id, 1);
    frames(id, 0, 30);
    now_ = now_.addSecs(15).addDays(-1);
    disks_->today_ = now_.date();
    frames(id, 30, 60);
    QCOMPARE(recorder_->lasting(QStringLiteral("c")), std::make_optional(std::chrono::seconds(0)));
    frames(id, 60, 100); // the packing time is over at the key frame 75, as it would have been
    const QString second = recorder_->file(QStringLiteral("c"));
    QCOMPARE(second, yesterday + QStringLiteral("20240304100016.avi"));
    // What waits, waits its five seconds and no day: a camera that went, and a drive that took no file.
    report(id, R"("type":"avclose","retcode":15)");
    now_ = now_.addDays(-1);
    waited_ += Recorder::RetryTime;
    QTRY_COMPARE_WITH_TIMEOUT(sdk_.requests().size(), std::size_t(2), 60000);
    const int again = sdk_.requests().back().id;
    disks_->setFull({drive(1), drive(2)});
    opened(again, 1);
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Waiting);
    disks_->setFull({});
    now_ = now_.addDays(-1);
    waited_ += Recorder::RetryTime;
    QTRY_COMPARE_WITH_TIMEOUT(recorder_->state(QStringLiteral("c")), State::Recording, 60000);
    frames(again, 100, 120);
    frames(again, 0, 10);
    recorder_->stop(QStringLiteral("c"));
    queue_->drain();
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(old.readAll(), QByteArray("precious"));
    QStringList recorded = files();
    QVERIFY(recorded.removeOne(old.fileName()));
    QCOMPARE(recorded.size(), 3);
    const QString first = drive(1) + QStringLiteral("ZEL/c/LocalRecord/2024-03-05/20240305100000.avi");
    QCOMPARE(ProbedVideo::of(first).frames, 75);
    QCOMPARE(ProbedVideo::of(second).frames, 25);
    recorded.removeOne(first);
    recorded.removeOne(second);
    QCOMPARE(ProbedVideo::of(recorded.constFirst()).frames, 30); // 100 is a key frame
    for (const QString& file : files())
        QVERIFY(file == old.fileName() || ProbedVideo::of(file).problems.isEmpty());
}

void tst_RecorderFaults::requestRefused() {
    sdk_.nextId = 0;
    recorder_->start(QStringLiteral("c"));
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Waiting);
    sdk_.nextId = 9;
    waited_ += Recorder::RetryTime;
    QTRY_COMPARE_WITH_TIMEOUT(sdk_.requests().size(), std::size_t(1), 60000); // one that was not taken is none
    opened(9);
    QCOMPARE(recorder_->state(QStringLiteral("c")), State::Recording);
}

QTEST_GUILESS_MAIN(tst_RecorderFaults)
#include "tst_RecorderFaults.moc"
