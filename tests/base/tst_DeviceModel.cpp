#include "base/DeviceModel.h"
#include "base/JsonText.h"
#include "support/MessageLog.h"

#include <QtTest>

class tst_DeviceModel final : public QObject {
    Q_OBJECT
private slots:
    void recordsAreReadWhole();
    void subDevicesInBothPlaces_data();
    void subDevicesInBothPlaces();
    void faultyRecords_data();
    void faultyRecords();
    void groupsAndTiles();
    void defaultGroupComesFirst();
    void administrators_data();
    void administrators();

private:
    static DeviceModel model(const char* json, const QString& defaultGroup = {}) {
        return DeviceModel::fromDocument(corvanta::json::parseObject(json), defaultGroup);
    }
};

void tst_DeviceModel::recordsAreReadWhole() {
    const DeviceModel devices =
        model(R"({"ipnclist":[{"ipncid":"c","name":"n","nickname":"","type":"video","online":1,
        "future":{"a":1},"info":{"QRinfo":{"size":50}},"linkages":[{"id":3}],
        "interfaces":[{"pid":"12","input":[{"pid":1},{"pid":2}],"output":[{"pid":9}],"name":"RS485"}]}],"group":[]})");
    const DeviceRecord& device = *devices.device(QStringLiteral("c"));
    QCOMPARE(device.displayName(), QStringLiteral("n"));
    QVERIFY(device.isVideo() && device.isOnline() && !device.isAdmin);
    QCOMPARE(device.qrInfo.value(QStringLiteral("size")).toInt(), 50);
    QCOMPARE(device.linkages.size(), 1);
    QCOMPARE(device.interfaces.size(), 1);
    QCOMPARE(device.interfaceIndex.constFirst().pid, 12);
    QCOMPARE(device.interfaceIndex.constFirst().inputs, (QList<int>{1, 2}));
    QCOMPARE(device.interfaceIndex.constFirst().outputs, (QList<int>{9}));
    QVERIFY(device.record.contains(QStringLiteral("future")));
    QVERIFY(!device.record.contains(QStringLiteral("linkages")));
    QVERIFY(!device.record.contains(QStringLiteral("interfaces")));
}

void tst_DeviceModel::subDevicesInBothPlaces_data() {
    QTest::addColumn<QByteArray>("record");
    QTest::newRow("below extend") << QByteArray(
        R"({"ipncid":"c","extend":{"sublist":[{"pid":5,"input":[{"pid":6}]}]}})");
    QTest::newRow("beside it") << QByteArray(R"({"ipncid":"c","sublist":[{"pid":5,"input":[{"pid":6}]}]})");
}

void tst_DeviceModel::subDevicesInBothPlaces() {
    QFETCH(QByteArray, record);
    const DeviceModel devices = model(("{\"ipnclist\":[" + record + "]}").constData());
    const auto index = devices.device(QStringLiteral("c"))->subDeviceIndex;
    QCOMPARE(index.size(), 1);
    QCOMPARE(index.constFirst().pid, 5);
    QCOMPARE(index.constFirst().inputs, QList<int>{6});
}

void tst_DeviceModel::faultyRecords_data() {
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QStringList>("left");
    QTest::addColumn<int>("lines");
    QTest::newRow("empty") << QByteArray("{}") << QStringList() << 0;
    QTest::newRow("lists of other types") << QByteArray(R"({"ipnclist":{"a":1},"group":"x"})") << QStringList() << 0;
    QTest::newRow("no id") << QByteArray(R"({"ipnclist":[{"name":"x"},{"ipncid":"b"}]})") << QStringList{"b"} << 1;
    QTest::newRow("no objects") << QByteArray(R"({"ipnclist":[1,"x",null,{"ipncid":"b"}]})") << QStringList{"b"} << 3;
    QTest::newRow("twice") << QByteArray(R"({"ipnclist":[{"ipncid":"b"},{"ipncid":"b"}]})") << QStringList{"b"} << 1;
    QTest::newRow("path") << QByteArray(R"({"ipnclist":[{"ipncid":"../b"}]})") << QStringList{"../b"} << 1;
    QTest::newRow("members that are gone")
        << QByteArray(R"({"ipnclist":[{"ipncid":"b"}],"group":[{"id":"g","ipnclist":["x","b","b"]}]})")
        << QStringList{"b"} << 0;
}

void tst_DeviceModel::faultyRecords() {
    QFETCH(QByteArray, document);
    QFETCH(QStringList, left);
    QFETCH(int, lines);
    const MessageLog log;
    const DeviceModel devices = model(document.constData());
    QCOMPARE(devices.ipncIds(), left);
    QCOMPARE(log.lines().size(), lines);
    if (!left.isEmpty())
        QCOMPARE(devices.device(left.constFirst())->tileIndex, 0);
}

void tst_DeviceModel::groupsAndTiles() {
    const DeviceModel devices = model(R"({"ipnclist":[{"ipncid":"a"},{"ipncid":"b","groupid":"g2"},{"ipncid":"c"},
        {"ipncid":"d","groupid":"g1"}],"group":[{"id":"g1","name":"1","ipnclist":["c"]},{"id":"g2","ipnclist":["c"]}]})");
    // Listed first, then those that name the group; a device is in one group only.
    QCOMPARE(devices.members(devices.groups().at(0)), (QStringList{"c", "d"}));
    QCOMPARE(devices.members(devices.groups().at(1)), (QStringList{"b"}));
    QCOMPARE(devices.ungrouped(), (QStringList{"a"}));
    QStringList byTile;
    for (int tile = 0; tile < 4; ++tile)
        byTile += devices.deviceOfTile(tile).value_or(QStringLiteral("-"));
    QCOMPARE(byTile, (QStringList{"c", "d", "b", "a"}));
    QVERIFY(!devices.deviceOfTile(4));
}

void tst_DeviceModel::defaultGroupComesFirst() {
    const char* document =
        R"({"ipnclist":[{"ipncid":"a"},{"ipncid":"b"}],"group":[{"id":"g1","ipnclist":["a"]},{"id":"g2","ipnclist":["b"]}]})";
    QCOMPARE(model(document).defaultGroup()->id, QStringLiteral("g1"));
    QCOMPARE(*model(document, QStringLiteral("g2")).deviceOfTile(0), QStringLiteral("b"));
    QCOMPARE(*model(document, QStringLiteral("gone")).deviceOfTile(0), QStringLiteral("a"));
    QVERIFY(model("{}").defaultGroup() == nullptr);
}

void tst_DeviceModel::administrators_data() {
    QTest::addColumn<QByteArray>("authority");
    QTest::addColumn<bool>("admin");
    QTest::newRow("flag") << QByteArray(R"({"admin":true})") << true;
    QTest::newRow("number") << QByteArray(R"({"admin":1})") << true;
    QTest::newRow("not set") << QByteArray(R"({"admin":false,"video":true})") << false;
    QTest::newRow("text") << QByteArray(R"("admin")") << false;
}

void tst_DeviceModel::administrators() {
    QFETCH(QByteArray, authority);
    QFETCH(bool, admin);
    const DeviceModel devices =
        model(("{\"ipnclist\":[{\"ipncid\":\"c\",\"type\":\"video\",\"authority\":" + authority + "}]}").constData());
    QCOMPARE(devices.device(QStringLiteral("c"))->isAdmin, admin);
}

QTEST_GUILESS_MAIN(tst_DeviceModel)
#include "tst_DeviceModel.moc"
