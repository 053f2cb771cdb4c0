#include "onvif/Discovery.h"
#include "support/OnvifDevice.h"

#include <QtTest>

#include <chrono>

using namespace ipncsdk::onvif;

/// Searches on the loopback. The stand-in sends what a hostile neighbour might before it answers.
class tst_OnvifDiscovery final : public QObject {
    Q_OBJECT

private slots:
    void found();
    void nobody();
    void off();
};

namespace {

DiscoveryOptions optionsFor(int port, std::chrono::milliseconds round, int rounds) {
    DiscoveryOptions options;
    options.port = static_cast<std::uint16_t>(port);
    options.loopbackOnly = true;
    options.round = round;
    options.rounds = rounds;
    return options;
}

} // namespace

void tst_OnvifDiscovery::found() {
    const OnvifDevice first;
    const OnvifDevice second({}, {"--discovery-port", QString::number(first.searchPort()), "--uuid", "0-SECOND"});
    QCOMPARE(second.searchPort(), first.searchPort());
    const auto cameras = discover(optionsFor(first.searchPort(), std::chrono::seconds(2), 30),
                                  [](const std::vector<FoundCamera>& sofar) { return sofar.size() >= 2; });
    QCOMPARE(cameras.size(), std::size_t{2});
    QCOMPARE(cameras[0].uuid, std::string("0-second"));
    QCOMPARE(cameras[0].url, second.url());
    const FoundCamera expected = {"6f1c2f6e-0000-4000-8000-001122aabbcc",
                                  first.url(),
                                  "127.0.0.1",
                                  "Front \u00e9",
                                  "SI-1",
                                  "00:11:22:aa:bb:cc"};
    QVERIFY(cameras[1] == expected);
}

void tst_OnvifDiscovery::nobody() {
    const OnvifDevice device({"no-relates"});
    const auto cameras = discover(optionsFor(device.searchPort(), std::chrono::milliseconds(300), 1), nullptr);
    QVERIFY(cameras.empty());
}

void tst_OnvifDiscovery::off() {
    QVERIFY(discover(optionsFor(0, std::chrono::hours(1), 2), nullptr).empty());
}

QTEST_GUILESS_MAIN(tst_OnvifDiscovery)
#include "tst_OnvifDiscovery.moc"
