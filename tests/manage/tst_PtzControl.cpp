#include "base/JsonText.h"
#include "manageWidget/PtzControl.h"

#include <QtTest>

using corvanta::manage::PtzControl;
using corvanta::manage::PtzMotion;

/// The life of a movement, told as a script: what is done at which time, and what the camera is told.
class tst_PtzControl : public QObject {
    Q_OBJECT

private slots:
    void init() {
        now_ = 0;
        sent_.clear();
        control_ = std::make_unique<PtzControl>([this](const QVariantMap& commands) {
            sent_ += QString::fromStdString(corvanta::json::toText(commands));
        });
    }
    void aPressAndItsRelease();
    void isRenewedWhileHeld();
    void theNewestOfManyCounts();
    void aStopComesThrough();
    void aRefusalEndsIt();
    void focusAndIrisStopByThemselves();
    void theEndStopsAtOnce();

private:
    void hold(const PtzMotion& motion) { control_->hold(motion, now_); }
    void release() { control_->release(now_); }
    void answer(bool ok = true) { control_->answered(ok, now_); }
    void pass(qint64 milliseconds) {
        for (const qint64 end = now_ + milliseconds; now_ < end;) {
            now_ += 250;
            control_->tick(now_);
        }
    }
    QStringList taken() { return std::exchange(sent_, {}); }
    static QString move(int pan, int tilt, int speed = 5) {
        return QStringLiteral(R"({"ptzmove":{"pan":%1,"speed":%3,"tilt":%2,"zoom":0}})")
            .arg(pan)
            .arg(tilt)
            .arg(speed);
    }

    const QString stop_ = QStringLiteral(R"({"ptzstop":1})");
    qint64 now_ = 0;
    QStringList sent_;
    std::unique_ptr<PtzControl> control_;
};

void tst_PtzControl::aPressAndItsRelease() {
    hold({.pan = 1});
    QCOMPARE(taken(), QStringList{move(1, 0)});
    answer();
    QVERIFY(control_->isBusy());
    release();
    QCOMPARE(taken(), QStringList{stop_});
    answer();
    QVERIFY(!control_->isBusy());
    pass(20000);
    QCOMPARE(taken(), QStringList());
}

void tst_PtzControl::isRenewedWhileHeld() {
    hold({.pan = -1, .tilt = 1});
    answer();
    taken();
    for (int round = 0; round < 3; ++round) {
        pass(PtzControl::RenewAfter - 250);
        QCOMPARE(taken(), QStringList());
        pass(250);
        QCOMPARE(taken(), QStringList{move(-1, 1)});
        answer();
    }
}

void tst_PtzControl::theNewestOfManyCounts() {
    hold({.pan = 1});
    hold({.pan = 1, .tilt = 1});
    hold({.tilt = 1});
    hold({.tilt = 1, .speed = 9});
    QCOMPARE(taken(), QStringList{move(1, 0)});
    answer();
    QCOMPARE(taken(), QStringList{move(0, 1, 9)});
    hold({.tilt = -1});
    hold({.tilt = 1, .speed = 9}); // as it is
    answer();
    QCOMPARE(taken(), QStringList());
}

void tst_PtzControl::aStopComesThrough() {
    hold({.pan = 1});
    release();
    taken();
    pass(PtzControl::ReplyWithin - 250);
    QCOMPARE(taken(), QStringList()); // one message at a time
    pass(250);
    QCOMPARE(taken(), QStringList{stop_}); // though no reply ever came
    pass(PtzControl::ReplyWithin);
    QVERIFY(!control_->isBusy());
}

void tst_PtzControl::aRefusalEndsIt() {
    hold({.pan = 1});
    answer(false);
    taken();
    pass(10000);
    QCOMPARE(taken(), QStringList());
    QVERIFY(!control_->isBusy());
    hold({.pan = -1});
    QCOMPARE(taken(), QStringList{move(-1, 0)});
}

void tst_PtzControl::focusAndIrisStopByThemselves() {
    hold({.focus = 1});
    answer();
    hold({.iris = -1});
    answer();
    hold({.pan = 1});
    answer();
    QCOMPARE(taken(), (QStringList{R"({"ptzfocus":1})", R"({"ptzfocus":0,"ptziris":-1})",
                                   R"({"ptziris":0,)" + move(1, 0).mid(1)}));
}

void tst_PtzControl::theEndStopsAtOnce() {
    hold({.pan = 1});
    taken();
    control_->finish(); // the reply is still awaited
    QCOMPARE(taken(), QStringList{stop_});
    control_->finish();
    QCOMPARE(taken(), QStringList());
    QVERIFY(!control_->isBusy());
}

QTEST_GUILESS_MAIN(tst_PtzControl)
#include "tst_PtzControl.moc"
