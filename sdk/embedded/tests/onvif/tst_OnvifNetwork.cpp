#include "onvif/CameraProbe.h"
#include "onvif/OnvifImaging.h"
#include "onvif/OnvifPtz.h"
#include "support/CuttingProxy.h"
#include "support/OnvifDevice.h"

#include <QtTest>

#include <chrono>
#include <functional>
#include <optional>

using namespace ipncsdk::onvif;
using namespace std::chrono_literals;
using Manner = CuttingProxy::Manner;
using Side = CuttingProxy::Side;

namespace {

/// One kind of request; the failure when it fails.
using Kind = std::function<std::optional<Failure>(CameraSession&)>;

template <typename T>
std::optional<Failure> failureOf(const Outcome<T>& outcome) {
    return outcome ? std::nullopt : std::make_optional(outcome.failure());
}

constexpr auto limit = 20s; ///< for what ends at once, or after some tenths of a second of silence

} // namespace

Q_DECLARE_METATYPE(Kind)

/// A camera whose network goes away in the middle of each kind of conversation.
class tst_OnvifNetwork final : public QObject {
    Q_OBJECT

private slots:
    void requests_data();
    void requests();
};

void tst_OnvifNetwork::requests_data() {
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<Manner>("manner");
    const auto rows = [](const char* name, const Kind& kind) {
        QTest::addRow("%s, closed", name) << kind << Manner::Closed;
        QTest::addRow("%s, silent", name) << kind << Manner::Silent;
    };
    rows("what it is", [](CameraSession& session) { return failureOf(probe(session)); });
    rows("where it looks", [](CameraSession& session) { return failureOf(OnvifPtz(session).state()); });
    rows("moving", [](CameraSession& session) { return failureOf(OnvifPtz(session).move(1, 0, 0, 5)); });
    rows("presets", [](CameraSession& session) { return failureOf(OnvifPtz(session).presets()); });
    rows("a new preset", [](CameraSession& session) { return failureOf(OnvifPtz(session).setPreset(3, "Door")); });
    rows("its picture", [](CameraSession& session) { return failureOf(OnvifImaging(session).read()); });
    rows("another picture", [](CameraSession& session) {
        return failureOf(OnvifImaging(session).write({{"brightness", 51}, {"contrast", 255}}));
    });
}

void tst_OnvifNetwork::requests() {
    QFETCH(Kind, kind);
    QFETCH(Manner, manner);
    OnvifDevice device;
    CuttingProxy network(device.port());
    const Credentials admin{"admin", "p<\u00e4>&ss"};
    const std::string host = "127.0.0.1:" + std::to_string(network.port());
    network.bringBack();
    {
        CameraSession whole({host, admin}, {});
        const auto failure = kind(whole);
        QVERIFY2(!failure, failure->text.c_str());
    }
    const qint64 questions = network.carried(Side::Question);
    const qint64 answers = network.carried(Side::Answer);
    constexpr int parts = 8;
    for (int part = 0; part < parts; ++part) {
        for (const Side side : {Side::Question, Side::Answer}) {
            const qint64 length = side == Side::Question ? questions : answers;
            // What is asked carries the time of day and a random number, so its length differs a little.
            network.takeAway(manner, length * part / parts, side);
            Transport transport;
            transport.timeout = manner == Manner::Silent ? 200ms : 60000ms;
            QElapsedTimer time;
            time.start();
            CameraSession session({host, admin}, transport);
            const auto failure = kind(session);
            QVERIFY(failure);
            QVERIFY(std::chrono::milliseconds(time.elapsed()) < limit);
            const bool isOffline = failure->refusal == Refusal::Unreachable || failure->refusal == Refusal::TimedOut;
            QVERIFY2(isOffline, failure->text.c_str());
            QCOMPARE(failure->refusal == Refusal::TimedOut, manner == Manner::Silent);
            network.bringBack();
        }
    }
    // The camera has its old picture or the new one, whole, and does all that it is asked for.
    CameraSession later({host, admin}, {});
    const auto values = OnvifImaging(later).read();
    QVERIFY2(values, values.failure().text.c_str());
    const OnvifImaging::Values old = {
        {"brightness", 128}, {"contrast", 100}, {"saturation", 128}, {"sharpness", 128}};
    OnvifImaging::Values changed = old;
    changed["brightness"] = 51;
    changed["contrast"] = 255;
    QVERIFY(*values == old || *values == changed);
    const auto failure = kind(later);
    QVERIFY2(!failure, failure->text.c_str());
}

QTEST_GUILESS_MAIN(tst_OnvifNetwork)
#include "tst_OnvifNetwork.moc"
