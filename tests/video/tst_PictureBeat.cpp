#include "video/ui/PictureBeat.h"

#include <QTest>

#include <memory>
#include <utility>
#include <vector>

namespace {

/// Has a picture whenever the test gives it one.
class Receiver final : public PictureReceiver {
public:
    bool takePicture() override {
        ++asked;
        shown += waiting > 0 ? 1 : 0;
        return std::exchange(waiting, 0) > 0;
    }
    std::uint32_t receivedPictures() const override { return received; }
    bool rest() override {
        ++rests;
        return waiting == 0;
    }
    void give() {
        ++waiting;
        ++received;
    }

    int waiting = 0;
    std::uint32_t received = 0xFFFFFFF0U; // the count wraps
    int asked = 0;
    int shown = 0;
    int rests = 0;
};

} // namespace

class tst_PictureBeat : public QObject {
    Q_OBJECT
private slots:
    void period_data();
    void period();
    void firstPictureIsShownAtOnce();
    void oneBeatForAll();
    void restsWithoutPictures();
    void followsTheFastestStream_data();
    void followsTheFastestStream();
};

void tst_PictureBeat::period_data() {
    QTest::addColumn<double>("rate");
    QTest::addColumn<int>("shortest");
    QTest::addColumn<int>("longest");
    QTest::newRow("nothing is known") << 0.0 << 33 << 33;
    QTest::newRow("one a second") << 1.0 << 66 << 66;
    QTest::newRow("15") << 15.0 << 50 << 66;
    QTest::newRow("25") << 25.0 << 30 << 40;
    QTest::newRow("30") << 30.0 << 25 << 33;
    QTest::newRow("200") << 200.0 << 16 << 16;
}

void tst_PictureBeat::period() {
    QFETCH(double, rate);
    QFETCH(int, shortest);
    QFETCH(int, longest);
    QVERIFY(PictureBeat::periodFor(rate) >= shortest);
    QVERIFY(PictureBeat::periodFor(rate) <= longest);
}

void tst_PictureBeat::firstPictureIsShownAtOnce() {
    PictureBeat beat;
    Receiver receiver;
    beat.add(receiver);
    QVERIFY(beat.isResting());
    receiver.give();
    beat.wake();
    QCOMPARE(receiver.shown, 1);
    QVERIFY(!beat.isResting());
    const int asked = receiver.asked;
    beat.wake(); // while it beats nothing comes out of turn
    QCOMPARE(receiver.asked, asked);
    receiver.give();
    QTRY_COMPARE(receiver.shown, 2);
}

void tst_PictureBeat::oneBeatForAll() {
    PictureBeat beat;
    std::vector<std::unique_ptr<Receiver>> receivers;
    for (int i = 0; i < 5; ++i) {
        receivers.push_back(std::make_unique<Receiver>());
        beat.add(*receivers.back());
    }
    beat.wake();
    for (const auto& receiver : receivers)
        receiver->give();
    QTRY_COMPARE(receivers.front()->shown, 1);
    for (const auto& receiver : receivers)
        QCOMPARE(receiver->shown, 1);
    beat.remove(*receivers.front());
    const int asked = receivers.front()->asked;
    receivers.front().reset();
    receivers.back()->give();
    QTRY_COMPARE(receivers.back()->shown, 2);
    QVERIFY(asked > 0);
}

void tst_PictureBeat::restsWithoutPictures() {
    PictureBeat beat;
    Receiver receiver;
    Receiver quiet;
    beat.add(receiver);
    beat.add(quiet);
    receiver.give();
    beat.wake();
    QTRY_VERIFY(beat.isResting());
    QVERIFY(receiver.rests > 0 && quiet.rests > 0);
    const int asked = receiver.asked;
    receiver.give();
    beat.wake();
    QCOMPARE(receiver.asked, asked + 1);
    QCOMPARE(receiver.shown, 2);
}

void tst_PictureBeat::followsTheFastestStream_data() {
    QTest::addColumn<int>("interval");
    QTest::newRow("slow") << 80;
    QTest::newRow("fast") << 10;
}

void tst_PictureBeat::followsTheFastestStream() {
    QFETCH(int, interval);
    PictureBeat beat;
    Receiver fast;
    Receiver slow;
    beat.add(fast);
    beat.add(slow);
    QTimer stream;
    connect(&stream, &QTimer::timeout, &stream, [&] {
        fast.give();
        beat.wake();
    });
    stream.start(interval);
    // At first 33 ms: a slow stream makes it longer, a fast one shorter.
    QTRY_VERIFY_WITH_TIMEOUT(interval > 33 ? beat.period() > 50 : beat.period() < 25, 60000);
}

QTEST_GUILESS_MAIN(tst_PictureBeat)
#include "tst_PictureBeat.moc"
