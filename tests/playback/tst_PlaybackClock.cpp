#include "playback/PlaybackClock.h"

#include <QtTest>

using namespace corvanta::playback;
using std::chrono::milliseconds;
using std::chrono::seconds;

class tst_PlaybackClock final : public QObject {
    Q_OBJECT

    std::chrono::microseconds time_{12345};
    PlaybackClock::TimeSource source() {
        return [this] {
            return time_;
        };
    }
    /// Recorded from 100 to 110 and from 200 to 220 seconds.
    PlaybackClock twoStretches() {
        PlaybackClock clock(source());
        clock.setCovered({{seconds(100), seconds(110)}, {seconds(200), seconds(220)}});
        return clock;
    }

private slots:
    void beginsWhereSomethingIs() {
        PlaybackClock clock = twoStretches();
        QCOMPARE(clock.now(), Moment(seconds(100)));
        QVERIFY(!clock.isPlaying());
        time_ += seconds(5);
        QCOMPARE(clock.now(), Moment(seconds(100)));
    }

    void goesOnAtItsSpeed_data() {
        QTest::addColumn<double>("speed");
        for (const double speed : PlaybackClock::Speeds)
            QTest::newRow(qPrintable(QString::number(speed))) << speed;
    }
    void goesOnAtItsSpeed() {
        QFETCH(double, speed);
        PlaybackClock clock = twoStretches();
        clock.setSpeed(speed);
        QCOMPARE(clock.speed(), speed);
        clock.play();
        for (int step = 0; step < 50; ++step) {
            time_ += milliseconds(10); // many small steps are as one
            clock.now();
        }
        QCOMPARE(clock.now(), Moment(seconds(100)) + milliseconds(static_cast<int>(500 * speed)));
        clock.pause();
        time_ += seconds(1);
        QCOMPARE(clock.now(), Moment(seconds(100)) + milliseconds(static_cast<int>(500 * speed)));
    }

    void speedsAreARow() {
        PlaybackClock clock = twoStretches();
        std::vector<double> seen;
        clock.setSpeed(0.25);
        for (int step = 0; step < 9; ++step) {
            seen.push_back(clock.speed());
            clock.setSpeed(clock.fasterSpeed());
        }
        QCOMPARE(seen, (std::vector<double>{0.25, 0.5, 1, 2, 4, 8, 16, 16, 16}));
        clock.setSpeed(5.1);
        QCOMPARE(clock.speed(), 4.0);
        clock.setSpeed(0);
        QCOMPARE(clock.speed(), 0.25);
        QCOMPARE(clock.slowerSpeed(), 0.25);
    }

    void jumpsOverGaps() {
        PlaybackClock clock = twoStretches();
        clock.seek(seconds(108));
        clock.play();
        time_ += seconds(1);
        QCOMPARE(clock.now(), Moment(seconds(109)));
        time_ += seconds(4);
        QCOMPARE(clock.now(), Moment(seconds(203)));
        clock.pause();
        clock.seek(seconds(150));
        QCOMPARE(clock.now(), Moment(seconds(150))); // where the operator went; it goes on when it plays
        clock.play();
        time_ += milliseconds(1);
        QCOMPARE(clock.now(), Moment(seconds(200)) + milliseconds(1));
    }

    void waitsThroughGapsWhenTold() {
        PlaybackClock clock = twoStretches();
        clock.setSkipGaps(false);
        clock.seek(seconds(108));
        clock.play();
        time_ += seconds(50);
        QCOMPARE(clock.now(), Moment(seconds(158)));
        clock.setSkipGaps(true);
        QCOMPARE(clock.now(), Moment(seconds(200)));
    }

    void endsAtTheEnd() {
        PlaybackClock clock = twoStretches();
        clock.seek(seconds(219));
        clock.play();
        time_ += seconds(9);
        const Moment last = seconds(220) - std::chrono::microseconds(1);
        QCOMPARE(clock.now(), last);
        QVERIFY(!clock.isPlaying());
        clock.play(); // from the beginning again
        QCOMPARE(clock.now(), Moment(seconds(100)));
        clock.seek(seconds(5000));
        QCOMPARE(clock.now(), last);
        clock.seek(seconds(1));
        QCOMPARE(clock.now(), Moment(seconds(100)));
    }

    void holdsStillWhilePicturesAreOnTheirWay() {
        PlaybackClock clock = twoStretches();
        clock.play();
        clock.hold(true);
        time_ += seconds(3);
        QCOMPARE(clock.now(), Moment(seconds(100)));
        QVERIFY(clock.isPlaying());
        clock.hold(false);
        time_ += seconds(1);
        QCOMPARE(clock.now(), Moment(seconds(101)));
    }

    void findsBegins() {
        PlaybackClock clock = twoStretches();
        QCOMPARE(clock.nextBegin(), std::optional<Moment>(seconds(200)));
        QCOMPARE(clock.previousBegin(), std::nullopt);
        clock.seek(seconds(205));
        QCOMPARE(clock.previousBegin(), std::optional<Moment>(seconds(200)));
        QCOMPARE(clock.nextBegin(), std::nullopt);
        clock.seek(seconds(201));
        clock.play();
        QCOMPARE(clock.previousBegin(), std::optional<Moment>(seconds(100)));
    }

    void nothingRecordedPlaysNothing() {
        PlaybackClock clock(source());
        clock.play();
        QVERIFY(!clock.isPlaying());
        clock.seek(seconds(5));
        QCOMPARE(clock.now(), Moment(0));
        QVERIFY(!clock.nextBegin() && !clock.previousBegin());
    }
};

QTEST_GUILESS_MAIN(tst_PlaybackClock)
#include "tst_PlaybackClock.moc"
