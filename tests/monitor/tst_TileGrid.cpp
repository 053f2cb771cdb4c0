#include "base/DeviceModel.h"
#include "base/JsonText.h"
#include "monitor/DeviceIndexRule.h"
#include "monitor/Layouts.h"
#include "monitor/TileGrid.h"

#include <QtTest>

class tst_TileGrid final : public QObject {
    Q_OBJECT
private slots:
    void layoutsShowTheFirstTiles();
    void sizesThatDoNotFit_data();
    void sizesThatDoNotFit();
    void zoomShowsOneAlone();
    void refusals_data();
    void refusals();
};

void tst_TileGrid::layoutsShowTheFirstTiles() {
    int before = 0;
    for (const corvanta::Layout& layout : corvanta::layouts()) {
        QCOMPARE(layout.rows * layout.columns, layout.tiles);
        QVERIFY(layout.tiles > before);
        before = layout.tiles;
        TileGrid grid(8, 8);
        QVERIFY(grid.setLayout(layout.rows, layout.columns));
        for (int index = -2; index < 70; ++index)
            QCOMPARE(grid.isIndexShown(index), index >= 0 && index < layout.tiles);
    }
}

void tst_TileGrid::sizesThatDoNotFit_data() {
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::newRow("too many rows") << 9 << 1;
    QTest::newRow("too many columns") << 1 << 9;
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("negative") << -3 << -3;
    QTest::newRow("product overflows") << 65536 << 65536;
}

void tst_TileGrid::sizesThatDoNotFit() {
    QFETCH(int, rows);
    QFETCH(int, columns);
    TileGrid grid(8, 8);
    grid.setLayout(3, 3);
    grid.setZoom(5);
    QVERIFY(!grid.setLayout(rows, columns));
    QCOMPARE(grid.rows(), 3);
    QCOMPARE(grid.columns(), 3);
    QCOMPARE(grid.zoomIndex(), -1); // the zoom is left all the same
}

void tst_TileGrid::zoomShowsOneAlone() {
    TileGrid grid(8, 8);
    grid.setLayout(2, 2);
    grid.setZoom(63); // also a tile that the layout does not show
    QVERIFY(grid.isIndexShown(63));
    QVERIFY(!grid.isIndexShown(0));
    grid.setZoom(1000);
    QVERIFY(!grid.isIndexShown(0));
    grid.setLayout(2, 2);
    QVERIFY(grid.isIndexShown(0));
}

void tst_TileGrid::refusals_data() {
    QTest::addColumn<int>("zoom");
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("text");
    const QString other = QStringLiteral("请确认设备[%1]在左侧设备树中的索引小于64,或将设备[%1]所在组设为默认组");
    QTest::newRow("shown") << -1 << "a" << QString();
    QTest::newRow("in the default group") << -1 << "e"
                                          << "请确认设备[e]在默认组[门 %1 %2]中的索引小于64";
    QTest::newRow("elsewhere") << -1 << "o%2" << other.arg(QStringLiteral("o%2"));
    QTest::newRow("unknown") << -1 << "gone" << other.arg(QStringLiteral("gone"));
    QTest::newRow("zoomed on another") << 1 << "a"
                                       << "请确认设备[a]在默认组[门 %1 %2]中的索引小于64";
    QTest::newRow("zoomed on it") << 1 << "b" << QString();
}

void tst_TileGrid::refusals() {
    QFETCH(int, zoom);
    QFETCH(QString, device);
    QFETCH(QString, text);
    // Names that look like places of a format must come out as they are.
    const DeviceModel devices = DeviceModel::fromDocument(corvanta::json::parseObject(
        R"({"ipnclist":[{"ipncid":"a"},{"ipncid":"b"},{"ipncid":"c"},{"ipncid":"d"},{"ipncid":"e"},{"ipncid":"o%2"}],
            "group":[{"id":"g","name":"门 %1 %2","ipnclist":["a","b","c","d","e"]},{"id":"h","ipnclist":["o%2"]}]})"));
    TileGrid grid(8, 8);
    grid.setLayout(2, 2);
    grid.setZoom(zoom);
    QCOMPARE(corvanta::refusalToOpen(grid, devices, device), text);
}

QTEST_GUILESS_MAIN(tst_TileGrid)
#include "tst_TileGrid.moc"
