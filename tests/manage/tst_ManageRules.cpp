#include "base/DeviceModel.h"
#include "manageWidget/AddressChecks.h"
#include "manageWidget/DeviceParameters.h"
#include "manageWidget/DeviceTable.h"
#include "manageWidget/NewDevice.h"
#include "manageWidget/PtzCaps.h"
#include "manageWidget/SdFiles.h"
#include "support/OtherLanguage.h"

#include <QSet>
#include <QtTest>

namespace manage = corvanta::manage;

class tst_ManageRules : public QObject {
    Q_OBJECT

private slots:
    void wiredAddresses_data();
    void wiredAddresses();
    void wifi_data();
    void wifi();
    void rtsp_data();
    void rtsp();
    void cameraServices_data();
    void cameraServices();
    void parameters_data();
    void parameters();
    void onlyChangesAreWritten();
    void ptzLists();
    void fileNames_data();
    void fileNames();
    void placesInTheTable_data();
    void placesInTheTable();
};

void tst_ManageRules::wiredAddresses_data() {
    QTest::addColumn<QStringList>("address"); // ip, mask, gateway, dns
    QTest::addColumn<bool>("good");
    const auto row = [](const char* name, const char* address, bool good) {
        QTest::newRow(name) << QString::fromUtf8(address).split(QLatin1Char(' ')) << good;
    };
    row("usual", "192.168.1.20 255.255.255.0 192.168.1.1 8.8.8.8", true);
    row("no dns", "192.168.1.20 255.255.255.0 192.168.1.1 ", true);
    row("small net", "10.0.0.5 255.255.255.252 10.0.0.6 ", true);
    row("gateway elsewhere", "192.168.1.20 255.255.255.0 192.168.2.1 ", false);
    row("gateway is itself", "192.168.1.20 255.255.255.0 192.168.1.20 ", false);
    row("mask with a hole", "192.168.1.20 255.0.255.0 192.168.1.1 ", false);
    row("mask of nothing", "192.168.1.20 0.0.0.0 192.168.1.1 ", false);
    row("mask of all", "192.168.1.20 255.255.255.255 192.168.1.20 ", false);
    row("the net itself", "192.168.1.0 255.255.255.0 192.168.1.1 ", false);
    row("broadcast", "192.168.1.255 255.255.255.0 192.168.1.1 ", false);
    row("multicast", "239.0.0.9 255.255.255.0 239.0.0.1 ", false);
    row("loopback", "127.0.0.9 255.255.255.0 127.0.0.1 ", false);
    row("leading zero", "192.168.01.20 255.255.255.0 192.168.1.1 ", false);
    row("too large", "192.168.1.256 255.255.255.0 192.168.1.1 ", false);
    row("sign", "192.168.1.+2 255.255.255.0 192.168.1.1 ", false);
    row("three numbers", "192.168.20 255.255.255.0 192.168.1.1 ", false);
    row("wide digits", "１９２.168.1.2 255.255.255.0 192.168.1.1 ", false);
    row("dns is a name", "192.168.1.20 255.255.255.0 192.168.1.1 dns.example", false);
}

void tst_ManageRules::wiredAddresses() {
    QFETCH(QStringList, address);
    const manage::WiredAddress wired{false, address[0], address[1], address[2], address[3]};
    QTEST(!manage::checkWired(wired).has_value(), "good");
    QVERIFY(!manage::checkWired({true, address[0], {}, {}, {}}));
}

void tst_ManageRules::wifi_data() {
    QTest::addColumn<QString>("ssid");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("security");
    QTest::addColumn<bool>("good");
    const auto row = [](const char* name, const QString& ssid, const QString& password, const char* security,
                        bool good) {
        QTest::newRow(name) << ssid << password << QString(security) << good;
    };
    row("usual", "home", "12345678", "wpa2", true);
    row("32 bytes", QString(32, 'x'), QString(63, 'p'), "wpa3", true);
    row("33 bytes", QString(33, 'x'), "12345678", "wpa2", false);
    row("11 signs of three bytes", QString(11, QChar(0x4e2d)), "12345678", "wpa2", false);
    row("no name", "", "12345678", "wpa2", false);
    row("short", "home", "1234567", "wpa2", false);
    row("long", "home", QString(64, 'p'), "wpa2", false);
    row("open", "home", "", "open", true);
    row("open with a password", "home", "12345678", "open", false);
    row("line break", "ho\nme", "12345678", "wpa2", false);
}

void tst_ManageRules::wifi() {
    QFETCH(QString, ssid);
    QFETCH(QString, password);
    QFETCH(QString, security);
    QTEST(!manage::checkWifi(ssid, password, security).has_value(), "good");
}

void tst_ManageRules::rtsp_data() {
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("good");
    QTest::newRow("usual") << "rtsp://192.0.2.7:554/main?channel=1" << true;
    QTest::newRow("with a user") << "rtsp://u:p@camera/main" << true;
    QTest::newRow("IPv6") << "rtsp://[2001:db8::1]/main" << true;
    for (const char* const bad :
         {"", "rtsp://", "http://192.0.2.7/main", "192.0.2.7", "rtsp://host:0/main", "rtsp://host:70000/main",
          "rtsp://ho st/main", "rtsp://host/a\nb", "file:///etc/passwd"})
        QTest::newRow(bad) << QString(bad) << false;
    QTest::newRow("very long") << "rtsp://host/" + QString(10000, 'a') << false;
}

void tst_ManageRules::rtsp() {
    QFETCH(QString, address);
    QTEST(!manage::checkRtsp(QStringLiteral("x"), address).has_value(), "good");
}

void tst_ManageRules::cameraServices_data() {
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("good");
    for (const char* const fine :
         {"192.0.2.7", "camera:8080", "http://192.0.2.7/onvif/device_service", "https://camera"})
        QTest::newRow(fine) << QString(fine) << true;
    for (const char* const bad : {"", "rtsp://192.0.2.7", "a b", "javascript://x", "host:99999"})
        QTest::newRow(bad) << QString(bad) << false;
}

void tst_ManageRules::cameraServices() {
    QFETCH(QString, address);
    QTEST(!manage::checkCameraService(address).has_value(), "good");
}

void tst_ManageRules::parameters_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("good");
    const auto row = [](const char* name, const QVariant& value, bool good) {
        QTest::addRow("%s %s", name, qPrintable(value.toString().left(12))) << QString(name) << value << good;
    };
    row("bitrate1", 64, true);
    row("bitrate1", 63, false);
    row("bitrate1", "16384", true);
    row("bitrate1", 16385, false);
    row("bitrate1", "12a", false);
    row("bitrate1", QVariant(), false);
    row("mirror", true, true);
    row("mirror", 0, true);
    row("mirror", 2, false);
    row("logoposition1", 3, true);
    row("logoposition1", 4, false);
    row("detailinfo1", QString(64, QChar(0x4e2d)), true);
    row("detailinfo1", QString(65, 'x'), false);
    row("detailinfo1", QString::fromUtf8("😀").repeated(64), true);
    row("detailinfo1", "a\nb", false);
    row("detailinfo1", "<b>\"'&", true);
    row("ftpport", 0, false);
    row("ftppwd", "********", true);
}

void tst_ManageRules::parameters() {
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    const manage::Parameter* const parameter = manage::parameter(name);
    QVERIFY(parameter != nullptr);
    const auto problem = manage::problem(*parameter, value);
    QTEST(!problem.has_value(), "good");
    if (problem)
        QVERIFY2(problem->contains(parameter->labelText()) && !problem->contains(QLatin1Char('%')),
                 qPrintable(*problem));
}

void tst_ManageRules::onlyChangesAreWritten() {
    const QVariantMap before{{"mirror", 1}, {"bitrate1", 2048}, {"detailinfo1", "a"}};
    QCOMPARE(manage::changed(before, {{"mirror", true}, {"bitrate1", "2048"}, {"detailinfo1", "a"}}), QVariantMap());
    const QVariantMap changes = manage::changed(before, {{"mirror", 0}, {"bitrate1", 2048}, {"ftppwd", "secret"}});
    QCOMPARE(changes, (QVariantMap{{"mirror", 0}, {"ftppwd", "secret"}}));
    const QString row = manage::describe(changes);
    QVERIFY(!row.contains("secret"));
    {
        const OtherLanguage other; // rows of the log stay as they are
        QCOMPARE(manage::describe(changes), row);
    }
    QSet<QString> names;
    for (const manage::Parameter& one : manage::parameters()) {
        names.insert(one.key());
        if (one.kind == manage::ParameterKind::Choice)
            QCOMPARE(one.choiceTexts().size(), one.most + 1);
    }
    QCOMPARE(names.size(), static_cast<int>(manage::parameters().size()));
}

void tst_ManageRules::ptzLists() {
    QVERIFY(!manage::PtzCaps::fromValue({}).any());
    QCOMPARE(manage::PtzCaps::fromValue(QVariantMap{{"zoom", true}, {"presets", 9999}}).presets, 64);
    const QVariantList presets{QVariantMap{{"index", 0}},
                               QVariantMap{{"index", 3}, {"name", "a"}},
                               QVariantMap{{"index", 3}, {"name", "b"}},
                               QVariantMap{{"index", 65}},
                               7,
                               QVariant()};
    const auto list = manage::PtzPreset::listFrom(presets);
    QCOMPARE(list.size(), 1);
    QCOMPARE(list[0].name, QString("a"));
    const QVariantMap cruise{
        {"index", 2}, {"name", "round"}, {"points", QVariantList{QVariantMap{{"preset", 3}, {"seconds", 5}}}}};
    QCOMPARE(manage::PtzCruise::listFrom(QVariantList{cruise}).value(0).toMap(), cruise);
}

void tst_ManageRules::fileNames_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("usual") << "20260101.avi"
                           << "20260101.avi";
    for (const char* const bad : {"../../.bashrc", "C:\\x.avi", "a/b", "", "CON", "a\nb"})
        QTest::newRow(bad) << QString(bad) << "cam-20260101080000.avi";
}

void tst_ManageRules::fileNames() {
    QFETCH(QString, name);
    const QVariantMap record{{"name", name}, {"path", "/p"}, {"kind", "video"}, {"time", "2026-01-01 08:00:00"}};
    const auto files = manage::SdFile::listFrom(QVariantList{record, QVariantMap{{"name", "no path"}}, 3});
    QCOMPARE(files.size(), 1);
    QTEST(manage::localName(files[0], QStringLiteral("cam")), "expected");
}

void tst_ManageRules::placesInTheTable_data() {
    QTest::addColumn<int>("before");
    QTest::addColumn<QString>("moved");
    QTest::addColumn<QString>("place");
    QTest::newRow("to the top") << 0 << "b"
                                << "1:0";
    QTest::newRow("behind the first") << 1 << "c"
                                      << "1:1";
    QTest::newRow("down in its group") << 2 << "a"
                                       << "1:1";
    QTest::newRow("to the end of the first group") << 2 << "c"
                                                   << "1:2";
    QTest::newRow("into the second group") << 3 << "a"
                                           << "2:1";
    QTest::newRow("behind all") << 99 << "b"
                                << "2:1";
}

void tst_ManageRules::placesInTheTable() {
    const auto device = [](const char* id, const char* group) {
        return QVariantMap{{"ipncid", id}, {"groupid", group}};
    };
    const QVariantMap document{
        {"ipnclist", QVariantList{device("a", "1"), device("b", "1"), device("c", "2")}},
        {"group", QVariantList{QVariantMap{{"id", "1"}, {"name", "x"}, {"ipnclist", QStringList{"a", "b"}}},
                               QVariantMap{{"id", "2"}, {"name", "y"}, {"ipnclist", QStringList{"c"}}}}}};
    DeviceTable table;
    table.setDevices(DeviceModel::fromDocument(document));
    QFETCH(int, before);
    QFETCH(QString, moved);
    const DeviceTable::Place place = table.placeBefore(before, moved);
    QTEST(place.groupId + QLatin1Char(':') + QString::number(place.index), "place");
}

QTEST_GUILESS_MAIN(tst_ManageRules)
#include "tst_ManageRules.moc"
