#include "Broker.h"
#include "Slave.h"
#include "sensor/MqttDriver.h"

#include <QtTest>

#include <memory>

using namespace ipncsdk;
using namespace ipncsdk::sensor;
using ipncsdk::test::Broker;
using ipncsdk::test::portRecord;

/// The ZigBee driver against mosquitto, with its own clients as the node.
class tst_SensorMqtt final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void valuesComeAndBrokersGo();
    void writing();
    void wrongPassword();
    void paths_data();
    void paths();

private:
    Json record() const;

    std::unique_ptr<Broker> broker_;
};

void tst_SensorMqtt::init() {
    broker_ = std::make_unique<Broker>();
    QVERIFY(broker_->start());
}

Json tst_SensorMqtt::record() const {
    return {{"pid", 1},
            {"type", "ZIGBEE"},
            {"params",
             {{"mode", "mqtt"},
              {"broker", "127.0.0.1:" + std::to_string(broker_->port)},
              {"user", "node"},
              {"password", "secret"},
              {"topic", "home/node"}}},
            {"input", {portRecord(11, {{"key", "climate.temperature"}}), portRecord(12, {{"key", "contact"}})}},
            {"output", {portRecord(21, {{"key", "state.left"}})}}};
}

void tst_SensorMqtt::valuesComeAndBrokersGo() {
    MqttDriver driver(boardOf(record()));
    QCOMPARE(driver.open(), std::string());
    std::vector<RawValue> raw(2);
    QCOMPARE(driver.read(raw), std::string());
    QVERIFY(!raw[0].value && !raw[1].value);
    const auto arrives = [&](std::size_t at) {
        return driver.read(raw).empty() && raw[at].value.has_value();
    };
    broker_->publish("no JSON");
    broker_->publish(R"({"climate":{"temperature":21.5}})");
    // The subscription is confirmed after the connection: what was published before it is not delivered.
    for (int i = 0; i < 100 && !arrives(0); ++i)
        broker_->publish(R"({"climate":{"temperature":21.5}})");
    QCOMPARE(raw[0].value, std::optional<double>(21.5));
    QVERIFY(!raw[1].value);
    driver.read(raw);
    driver.read(raw);
    QVERIFY(!raw[0].fresh);
    broker_->publish(R"({"contact":true})");
    QTRY_VERIFY_WITH_TIMEOUT(arrives(1), 30000);
    QCOMPARE(raw[0].value, std::optional<double>(21.5));
    broker_->stop();
    QTRY_VERIFY_WITH_TIMEOUT(!driver.read(raw).empty(), 30000);
    QVERIFY(broker_->start());
    QTRY_VERIFY_WITH_TIMEOUT(driver.read(raw).empty(), 60000);
    QVERIFY(!raw[0].value);
}

void tst_SensorMqtt::writing() {
    const Board board = boardOf(record());
    MqttDriver driver(board);
    QCOMPARE(driver.open(), std::string());
    QProcess node;
    node.start("mosquitto_sub", {"-h", "127.0.0.1", "-p", QString::number(broker_->port), "-u", "node", "-P",
                                 "secret", "-t", "home/node/set", "-C", "1", "-W", "60"});
    QVERIFY(node.waitForStarted());
    for (int i = 0; i < 100 && node.state() == QProcess::Running; ++i) {
        QCOMPARE(driver.write(board.outputs[0], 1), std::string());
        node.waitForFinished(200);
    }
    QCOMPARE(Json::parse(node.readAll().toStdString()), (Json{{"state", {{"left", 1}}}}));
    broker_->stop();
    QVERIFY(!driver.write(board.outputs[0], 1).empty());
}

void tst_SensorMqtt::wrongPassword() {
    Json wrong = record();
    wrong["params"]["password"] = "guess";
    MqttDriver driver(boardOf(wrong));
    QVERIFY(!driver.open().empty());
}

void tst_SensorMqtt::paths_data() {
    QTest::addColumn<QString>("payload");
    QTest::addColumn<double>("value"); // NaN: none
    QTest::newRow("number") << R"({"a":{"b":3}})" << 3.0;
    QTest::newRow("flag") << R"({"a":{"b":true}})" << 1.0;
    QTest::newRow("on") << R"({"a":{"b":"ON"}})" << 1.0;
    QTest::newRow("off") << R"({"a":{"b":"OFF"}})" << 0.0;
    QTest::newRow("number as text") << R"({"a":{"b":"2.5"}})" << 2.5;
    QTest::newRow("word") << R"({"a":{"b":"warm"}})" << qQNaN();
    QTest::newRow("too short") << R"({"a":1})" << qQNaN();
    QTest::newRow("missing") << R"({"b":1})" << qQNaN();
    QTest::newRow("list") << R"([1])" << qQNaN();
}

void tst_SensorMqtt::paths() {
    QFETCH(QString, payload);
    QFETCH(double, value);
    const auto found = numberAtPath(Json::parse(payload.toStdString()), "a.b");
    QCOMPARE(found, qIsNaN(value) ? std::nullopt : std::make_optional(value));
}

QTEST_GUILESS_MAIN(tst_SensorMqtt)
#include "tst_SensorMqtt.moc"
