#include "playback/NumberedVideo.h"
#include "playback/PlaybackSession.h"

#include <QDateTime>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <random>

using namespace corvanta::playback;
using State = CameraPlayer::Report::State;
using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::seconds;

class tst_PlaybackSession final : public QObject {
    Q_OBJECT

    static constexpr int Waiting = 60000; // ms, for what a sanitizer slows down

    QTemporaryDir dir_;
    microseconds time_{0}; ///< of the clock, moved by the test
    std::unique_ptr<PlaybackSession> session_;
    const QDateTime start_{QDate(2026, 3, 5), QTime(14, 0, 0)};

    QString path(const QString& name) const { return dir_.filePath(name); }
    Moment at(double second) const { return toMoment(start_) + microseconds(qRound64(second * 1e6)); }
    QString named(int second, const char* suffix) const {
        return path(start_.addSecs(second).toString(QStringLiteral("yyyyMMddhhmmss.")) + QLatin1String(suffix));
    }
    int shown(int camera) const { return numbered::numberOf(session_->view(camera).picture.get()); }

    void begin(const QVector<PlaybackCamera>& cameras) {
        session_ = std::make_unique<PlaybackSession>(cameras, [this] { return time_; });
        QTRY_VERIFY_WITH_TIMEOUT(session_->isReady() && session_->isSettled(), Waiting);
    }
    void settle() { QTRY_VERIFY_WITH_TIMEOUT(session_->isSettled(), Waiting); }

    /// "a": 0 to 8 s at 25 frames a second; "b": 2 to 10 s at 12.5; "c": two pieces, 0 to 4 s and 20 to 24 s.
    QVector<PlaybackCamera> threeCameras() const {
        return {{QStringLiteral("a"), QStringLiteral("1"), {path(QStringLiteral("a/20260305140000.avi"))}},
                {QStringLiteral("b"), QStringLiteral("2"), {path(QStringLiteral("b/20260305140002.mp4"))}},
                {QStringLiteral("c"),
                 QStringLiteral("3"),
                 {path(QStringLiteral("c/20260305140020.avi")), path(QStringLiteral("c/20260305140000.avi"))}}};
    }

private slots:
    void initTestCase() {
        for (const char* folder : {"a", "b", "c"})
            QVERIFY(QDir(dir_.path()).mkdir(QLatin1String(folder)));
        QVERIFY(numbered::make(path(QStringLiteral("a/20260305140000.avi")), {"avi", "25", 200, 50, 2}));
        QVERIFY(
            numbered::make(path(QStringLiteral("b/20260305140002.mp4")), {"mp4", "12.5", 100, 25, 0, false, 1000}));
        QVERIFY(numbered::make(path(QStringLiteral("c/20260305140000.avi")), {"avi", "25", 100, 25, 0, false, 2000}));
        QVERIFY(numbered::make(path(QStringLiteral("c/20260305140020.avi")), {"avi", "25", 100, 25, 0, false, 3000}));
    }
    void cleanup() { session_.reset(); }

    void camerasShowOneMoment() {
        begin(threeCameras());
        QCOMPARE(session_->whole(), (Span{at(0), at(24)}));
        std::mt19937 random(5);
        for (int turn = 0; turn < 40; ++turn) {
            const double second = static_cast<double>(random() % 24000) / 1000 + 0.0005;
            session_->seek(at(second));
            settle();
            const bool a = second < 8;
            const bool b = second >= 2 && second < 10;
            QCOMPARE(session_->view(0).state, a ? State::Picture : State::Gap);
            QCOMPARE(session_->view(1).state, b ? State::Picture : State::Gap);
            QCOMPARE(shown(0), a ? static_cast<int>(second * 25) : -1);
            QCOMPARE(shown(1), b ? 1000 + static_cast<int>((second - 2) * 12.5) : -1);
            QCOMPARE(shown(2), second < 4    ? 2000 + static_cast<int>(second * 25)
                               : second < 20 ? -1
                                             : 3000 + static_cast<int>((second - 20) * 25));
        }
    }

    void theNewestSeekIsCarriedOut() {
        begin(threeCameras());
        std::mt19937 random(9);
        for (int turn = 0; turn < 10; ++turn) {
            int frame = 0;
            for (int hurry = 0; hurry < 50; ++hurry) {
                frame = static_cast<int>(random() % 100);
                session_->seek(at(frame / 25.0 + 0.001));
                if (hurry % 8 == 0)
                    QCoreApplication::processEvents();
            }
            settle();
            QCOMPARE(shown(0), frame);
            QCOMPARE(shown(2), 2000 + frame);
        }
    }

    void stepsFrameByFrame() {
        begin(threeCameras());
        session_->seek(at(3.97)); // the last but one frame of c's first piece
        settle();
        QCOMPARE(shown(2), 2099);
        session_->step(1, 2);
        QTRY_COMPARE_WITH_TIMEOUT(shown(2), 3000, Waiting); // over the gap
        QTRY_COMPARE_WITH_TIMEOUT(session_->now(), at(20), Waiting);
        settle();
        QCOMPARE(session_->view(0).state, State::Gap);
        session_->step(-2, 2);
        QTRY_COMPARE_WITH_TIMEOUT(shown(2), 2098, Waiting);
        QTRY_COMPARE_WITH_TIMEOUT(shown(0), 98, Waiting); // the others follow
        settle();
        for (int step = 1; step <= 60; ++step)
            session_->step(-1, 0); // faster than they are made
        QTRY_COMPARE_WITH_TIMEOUT(shown(0), 38, Waiting);
        QTRY_COMPARE_WITH_TIMEOUT(shown(2), 2038, Waiting);
        settle();
        session_->step(-100, 0); // no farther than the first one
        QTRY_COMPARE_WITH_TIMEOUT(shown(0), 0, Waiting);
        QTRY_COMPARE_WITH_TIMEOUT(session_->now(), at(0), Waiting);
    }

    void stepsOutOfAGap() {
        begin(threeCameras());
        session_->seek(at(15));
        settle();
        session_->step(-1, 0);
        QTRY_COMPARE_WITH_TIMEOUT(shown(0), 199, Waiting);
        session_->seek(at(15));
        settle();
        session_->step(1, 2);
        QTRY_COMPARE_WITH_TIMEOUT(shown(2), 3000, Waiting);
    }

    void playsAtItsSpeed_data() {
        QTest::addColumn<double>("speed");
        for (const double speed : PlaybackClock::Speeds)
            QTest::newRow(qPrintable(QString::number(speed))) << speed;
    }

    void playsAtItsSpeed() {
        QFETCH(double, speed);
        begin(threeCameras());
        session_->setSpeed(speed);
        session_->seek(at(2));
        settle();
        session_->play();
        QTRY_VERIFY_WITH_TIMEOUT(session_->isSettled(), Waiting);
        time_ += microseconds(qRound64(1.5e6 / speed));
        const auto expect = [this](int camera, int number, int groupFrames) {
            const int found = shown(camera);
            // Where there is no time for all of them, what was decoded of the group stands for the rest of it.
            const bool inGroup = found / groupFrames == number / groupFrames && found <= number;
            return session_->view(camera).keyFramesOnly ? inGroup : found == number;
        };
        QTRY_VERIFY_WITH_TIMEOUT(expect(0, 87, 50) && expect(1, 1018, 25) && expect(2, 2087, 25), Waiting);
        QCOMPARE(session_->now(), at(3.5));
        session_->pause();
        QTRY_COMPARE_WITH_TIMEOUT(shown(0), 87, Waiting);
        QTRY_COMPARE_WITH_TIMEOUT(shown(2), 2087, Waiting);
    }

    void aWaitingClockLosesNoTime() {
        begin(threeCameras());
        session_->play();
        session_->seek(at(1));
        time_ += seconds(2); // passes while the pictures are on their way
        settle();
        QTRY_COMPARE_WITH_TIMEOUT(shown(0), 25, Waiting);
        QCOMPARE(session_->now(), at(1));
    }

    void endsAtTheEndAndBeginsAgain() {
        begin(threeCameras());
        QSignalSpy changed(session_.get(), &PlaybackSession::sigStateChanged);
        session_->play();
        settle();
        time_ += seconds(600);
        QTRY_VERIFY_WITH_TIMEOUT(!session_->isPlaying(), Waiting);
        QTRY_COMPARE_WITH_TIMEOUT(shown(2), 3099, Waiting);
        QVERIFY(changed.count() >= 2);
        session_->play();
        QVERIFY(session_->isPlaying());
        QCOMPARE(session_->now(), at(0));
    }

    void jumpsFromRecordingToRecording() {
        begin(threeCameras());
        QVERIFY(session_->seekNextBegin());
        QCOMPARE(session_->now(), at(20));
        QVERIFY(!session_->seekNextBegin());
        settle();
        QCOMPARE(shown(2), 3000);
        QVERIFY(session_->seekPreviousBegin());
        QCOMPARE(session_->now(), at(0));
    }

    void tellsWhichFilesCannotBePlayed() {
        const QString text = path(QStringLiteral("20260305150000.avi"));
        QFile file(text);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no video") > 0);
        file.close();
        begin({{QStringLiteral("a"), {}, {text, path(QStringLiteral("a/20260305140000.avi"))}},
               {QStringLiteral("none"), {}, {path(QStringLiteral("missing.avi"))}}});
        QCOMPARE(session_->findings(0)->unreadable.size(), std::size_t{1});
        QCOMPARE(session_->findings(0)->unreadable[0].second, OpenError::NotAVideo);
        QCOMPARE(session_->findings(1)->unreadable[0].second, OpenError::Missing);
        QCOMPARE(session_->view(1).state, State::Gap);
        QCOMPARE(shown(0), 0);
    }

    void aFileThatGoesAwayIsSaid() {
        const QString name = named(7200, "avi");
        QVERIFY(QFile::copy(path(QStringLiteral("a/20260305140000.avi")), name));
        begin({{QStringLiteral("a"), {}, {path(QStringLiteral("c/20260305140000.avi")), name}}});
        QVERIFY(QFile::remove(name));
        session_->seek(at(7202));
        settle();
        QCOMPARE(session_->view(0).state, State::Broken);
        session_->seek(at(1));
        settle();
        QCOMPARE(shown(0), 2025);
    }

    void endsInTheMiddleOfEverything() {
        for (int turn = 0; turn < 20; ++turn) {
            PlaybackSession session(threeCameras());
            if (turn % 2 == 0)
                QTRY_VERIFY_WITH_TIMEOUT(session.isReady(), Waiting);
            session.play();
            session.seek(at(turn % 7));
            QTest::qWait(turn % 5);
        }
    }
};

QTEST_GUILESS_MAIN(tst_PlaybackSession)
#include "tst_PlaybackSession.moc"
