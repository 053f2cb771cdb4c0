#include "account/AccountTest.h"
#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/InputFields.h"
#include "base/JsonText.h"
#include "base/Settings.h"
#include "database/SqlHelp.h"
#include "sensor/ChartSetup.h"
#include "sensor/ui/ChartPage.h"
#include "sensor/ui/ChartTile.h"
#include "sensor/ui/DatPage.h"
#include "sensor/ui/InputPicker.h"
#include "sensor/ui/SensorPage.h"

#include <QComboBox>
#include <QMenu>
#include <QMimeData>
#include <QStandardItemModel>
#include <QTableView>
#include <QTreeWidget>

using namespace corvanta::sensor;

namespace {

InputRecord makeInput(int pid, const char* device = "d", const char* unit = "V") {
    InputRecord input;
    input.pid = pid;
    input.ipncId = QLatin1String(device);
    input.device = QStringLiteral("<b>设备</b>&") + QLatin1String(device);
    input.group = QStringLiteral("G");
    input.groupId = QStringLiteral("g");
    input.name = QStringLiteral("输入&%1").arg(pid);
    input.unit = QLatin1String(unit);
    return input;
}

QVector<InputRecord> makeInputs(int count) {
    QVector<InputRecord> inputs;
    for (int pid = 1; pid <= count; ++pid)
        inputs += makeInput(pid, pid <= count / 2 ? "d" : "e", pid % 2 == 0 ? "V" : "℃");
    return inputs;
}

QVariantList records(double end, int count) {
    QVariantList list;
    for (int i = 0; i < count; ++i)
        list += QVariantMap{{"time", QString::number(end - count + i, 'f', 0)}, {"value", i % 7}, {"state", 1}};
    return list;
}

} // namespace

/// The modules of data and charts.
class tst_SensorPages : public AccountTest {
    Q_OBJECT

private slots:
    void onlyChangedRowsAreTold();
    void rowsAreFound();
    void theMenuActsOnTheSelection();
    void aChartAsksForWhatItLacks();
    void theMouseAndTheKeyboardMove();
    void unitsHaveAxes();
    void layoutsKeepTheirInputs();
    void hiddenTilesKeepTheirSamples();
    void aDeviceIsDropped();
    void alarmsOfNoInputAreNone();
    void dataFilesAreShown();
    void controlsAreNamed();

private:
    void feed(int pid, double value, double time, int state = 1) {
        InputFields& fields = context().inputFields;
        fields.set(QStringLiteral("value"), pid, value);
        fields.set(QStringLiteral("state"), pid, state);
        fields.set(QStringLiteral("time"), pid, time);
        fields.set(QStringLiteral("latesttime"), pid, qint64(time));
    }
};

void tst_SensorPages::onlyChangedRowsAreTold() {
    SensorTableModel model(context().inputFields);
    model.setInputs(makeInputs(10000));
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    for (const int pid : {5, 6, 7, 900})
        feed(pid, 1.25, 1732233600);
    model.refresh({900, 7, 5, 6, 99999});
    QCOMPARE(changes.size(), 2);
    QCOMPARE(changes[0][0].toModelIndex().row(), 4);
    QCOMPARE(changes[0][1].toModelIndex().row(), 6);
    const auto cell = [&model](int row, int column) {
        return model.index(row, column).data().toString();
    };
    QCOMPARE(cell(4, SensorTableModel::Value), QStringLiteral("1.25"));
    QCOMPARE(cell(4, SensorTableModel::State), QStringLiteral("正常"));
    QCOMPARE(cell(3, SensorTableModel::ReadTime), QString());
    QCOMPARE(cell(4, SensorTableModel::Number), QStringLiteral("5"));
    model.setInputs(makeInputs(10000)); // the same ones keep what views have chosen
    QCOMPARE(resets.size(), 0);
    model.setInputs(makeInputs(9));
    QCOMPARE(resets.size(), 1);
}

void tst_SensorPages::rowsAreFound() {
    SensorPage page(context());
    page.setInputs(makeInputs(20));
    show(page);
    const auto shown = [&page] {
        return page.table().model()->rowCount();
    };
    QCOMPARE(shown(), 20);
    type(page, "sensorSearch", QStringLiteral("&12")); // a text, no pattern
    QCOMPARE(shown(), 1);
    type(page, "sensorSearch", QStringLiteral(".*"));
    QCOMPARE(shown(), 0);
    type(page, "sensorSearch", {});
    auto* const device = find<QComboBox>(page, "sensorDevice");
    device->setCurrentIndex(device->findData(QStringLiteral("e")));
    QCOMPARE(shown(), 10);
    page.setInputs(makeInputs(20)); // a list that comes again
    QCOMPARE(shown(), 10);
    page.setInputs({});
    QVERIFY(!page.table().isVisible());
    // Sorting is by the number, not by its text.
    page.setInputs(makeInputs(20));
    device->setCurrentIndex(0);
    for (const int pid : {9, 10})
        feed(pid, pid, 1732233600);
    page.refresh({9, 10});
    page.table().sortByColumn(SensorTableModel::Value, Qt::DescendingOrder);
    QCOMPARE(page.table().model()->index(0, SensorTableModel::Value).data().toString(), QStringLiteral("10"));
}

void tst_SensorPages::theMenuActsOnTheSelection() {
    SensorPage page(context());
    page.setInputs(makeInputs(5));
    show(page);
    page.table().selectRow(2);
    QSignalSpy thresholds(&page, &SensorPage::sigThresholds);
    QTimer::singleShot(0, &page, [] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu != nullptr);
        menu->setActiveAction(menu->findChild<QAction*>(QStringLiteral("sensorThresholds")));
        QTest::keyClick(menu, Qt::Key_Return);
    });
    emit page.table().customContextMenuRequested(QPoint(10, 10));
    QCOMPARE(thresholds.size(), 1);
    QCOMPARE(thresholds[0][0].toInt(), 3);
    QSignalSpy charts(&page, &SensorPage::sigChart);
    QTest::keyClick(&page.table(), Qt::Key_Return);
    QCOMPARE(charts.size(), 1);
}

void tst_SensorPages::aChartAsksForWhatItLacks() {
    ChartPage page(context(), manager_->storage());
    QVector<SampleQuery> queries;
    connect(&page, &ChartPage::sigQuery, this, [&](const SampleQuery& query) { queries += query; });
    page.resize(600, 300);
    show(page);
    page.setInputs(makeInputs(3));
    page.showInputs({1, 2});
    QCOMPARE(queries.size(), 2);
    QCOMPARE(queries[0].pid, 1);
    const double now = double(QDateTime::currentSecsSinceEpoch());
    page.UpdateSensorInputData(QStringLiteral("9/0//latest"), records(now, 10)); // another chart's
    QVERIFY(page.tile(0)->keptSamples().isEmpty());
    for (const SampleQuery& query : QVector<SampleQuery>(queries))
        page.UpdateSensorInputData(query.key(), records(now, 1000));
    QCOMPARE(page.tile(0)->keptSamples()[1].size(), std::size_t(1000));
    feed(1, 42, now);
    page.refresh({1});
    QCOMPARE(page.tile(0)->keptSamples()[1].back().value, 42.0);
    // A day's view asks for spans of a minute, once it rests.
    queries.clear();
    page.tile(0)->plot().zoom(100, now);
    QTRY_VERIFY(!queries.isEmpty());
    QCOMPARE(queries[0].step, 60);
}

void tst_SensorPages::theMouseAndTheKeyboardMove() {
    const Samples samples{{100, 1, 1, 1}, {200, 2, 2, 2}};
    ChartPlot plot([&samples](int, double) -> const Samples& { return samples; });
    plot.setCurves({{1, QStringLiteral("a"), QStringLiteral("V"), {}}});
    plot.resize(600, 300);
    show(plot);
    plot.setRange(100, 200);
    QSignalSpy moved(&plot, &ChartPlot::sigRangeChanged);
    const QPoint middle = plot.viewport()->rect().center();
    QTest::mousePress(plot.viewport(), Qt::LeftButton, {}, middle);
    QTest::mouseMove(plot.viewport(), middle + QPoint(100, 0));
    QTest::mouseRelease(plot.viewport(), Qt::LeftButton, {}, middle + QPoint(100, 0));
    QVERIFY(plot.from() < 100 && qAbs(plot.span() - 100) < 1e-6);
    const double before = plot.from();
    QTest::keyClick(&plot, Qt::Key_Right);
    QVERIFY(plot.from() > before);
    QWheelEvent wheel(middle, plot.viewport()->mapToGlobal(middle), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(plot.viewport(), &wheel);
    QVERIFY(plot.span() < 100);
    QVERIFY(moved.size() >= 3);
    for (int i = 0; i < 200; ++i) // neither end is left
        plot.zoom(i < 100 ? 0.1 : 10, plot.from());
    QVERIFY(plot.span() <= ChartPlot::LongestSpan && plot.from() >= 0);
}

void tst_SensorPages::unitsHaveAxes() {
    const Samples samples{{100, 1, 1, 1}, {150, 900, 900, 900}, {200, 2, 2, 2}};
    ChartPlot plot([&samples](int, double) -> const Samples& { return samples; });
    plot.setCurves({{1, QStringLiteral("a"), QStringLiteral("V"), {{1, 950.0, std::nullopt}}},
                    {2, QStringLiteral("b"), QStringLiteral("℃"), {}},
                    {3, QStringLiteral("c"), QStringLiteral("V"), {}}});
    plot.resize(600, 300);
    show(plot);
    plot.setRange(100, 200);
    QCOMPARE(plot.chart()->axes(Qt::Vertical).size(), 2);
    plot.setMarks({{150, 1, 2, QStringLiteral("报警")}, {150, 9, 2, QStringLiteral("nobody's")}});
    QTest::mouseMove(plot.viewport(), plot.viewport()->rect().center());
    const QImage picture = plot.grab().toImage();
    QVERIFY(!picture.isNull());
    // The mark is there, in the red of alarms.
    int red = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            red += pixel.red() > 200 && pixel.green() < 90 && pixel.blue() < 90 ? 1 : 0;
        }
    }
    QVERIFY2(red > 20, qPrintable(QString::number(red)));
    plot.setCurves({});
    QVERIFY(plot.chart()->axes(Qt::Vertical).isEmpty());
}

void tst_SensorPages::layoutsKeepTheirInputs() {
    {
        ChartPage page(context(), manager_->storage());
        show(page);
        page.setInputs(makeInputs(4));
        click(page, "chartLayout4");
        page.showInputs({1});
        page.showInputs({2, 3});
    }
    QCOMPARE(context().settings.get(corvanta::keys::ChartZoom).toInt(), 2);
    ChartPage again(context(), manager_->storage());
    show(again);
    again.setInputs(makeInputs(2)); // one of them is gone, for now
    QCOMPARE(again.tile(0)->inputs(), QVector<int>{1});
    QCOMPARE(again.tile(1)->inputs(), QVector<int>{2});
    QVERIFY(again.tile(3) != nullptr && again.tile(4) == nullptr);
    again.setInputs(makeInputs(4));
    QCOMPARE(again.tile(1)->inputs(), (QVector<int>{2, 3}));
}

void tst_SensorPages::hiddenTilesKeepTheirSamples() {
    ChartPage page(context(), manager_->storage());
    QVector<SampleQuery> queries;
    connect(&page, &ChartPage::sigQuery, this, [&](const SampleQuery& query) { queries += query; });
    show(page);
    page.setInputs(makeInputs(4));
    click(page, "chartLayout2");
    page.showInputs({1});
    page.showInputs({2});
    const double now = double(QDateTime::currentSecsSinceEpoch());
    page.UpdateSensorInputData(queries.last().key(), records(now - 5, 50));
    click(page, "chartLayout1");
    QVERIFY(page.tile(1) == nullptr);
    QVERIFY(!context().database.getInputData(1).isEmpty());
    queries.clear();
    click(page, "chartLayout2");
    QCOMPARE(page.tile(1)->inputs(), QVector<int>{2});
    QTRY_VERIFY(!queries.isEmpty());
}

void tst_SensorPages::aDeviceIsDropped() {
    ChartPage page(context(), manager_->storage());
    show(page);
    page.setInputs(makeInputs(6));
    QStandardItemModel tree;
    auto* const item = new QStandardItem(QStringLiteral("device"));
    item->setData(QStringLiteral("d"), Qt::UserRole + 1);
    tree.appendRow(item);
    const std::unique_ptr<QMimeData> data(tree.mimeData({tree.index(0, 0)}));
    QCOMPARE(draggedDevice(*data), QStringLiteral("d"));
    ChartTile* const tile = page.tile(0);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton, {});
    QApplication::sendEvent(tile, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton, {});
    QApplication::sendEvent(tile, &drop);
    QCOMPARE(drop.dropAction(), Qt::CopyAction); // the tree keeps its row
    QCOMPARE(tile->inputs(), (QVector<int>{1, 2, 3}));
    QMimeData other;
    other.setText(QStringLiteral("d"));
    QVERIFY(draggedDevice(other).isEmpty());
    other.setData(QStringLiteral("application/x-qabstractitemmodeldatalist"), "\xff\xff\xff");
    QVERIFY(draggedDevice(other).isEmpty());
}

void tst_SensorPages::alarmsOfNoInputAreNone() {
    ChartPage page(context(), manager_->storage());
    show(page);
    for (const char* message :
         {"{}", R"({"alarm":7})", R"({"alarm":{"datetime":"x","trigger":{"input":1}}})",
          R"({"alarm":{"datetime":"2024-01-01 00:00:00","trigger":{"input":1,"threshold":2,"name":"<b>"}}})"})
        page.onAlarm(corvanta::json::parseObject(std::string(message)));
    QVERIFY(page.isVisible());
}

void tst_SensorPages::dataFilesAreShown() {
    QFile file(dir_->filePath(QStringLiteral("a.dat")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#corvanta-dat 1\n1732233600\t1\t1\n1732233601\t1\t2\n1732233600\t77\t5\n");
    file.close();
    QVERIFY(file.open(QIODevice::ReadOnly));
    ChartTile tile(-1, context().inputFields);
    show(tile);
    int queries = 0;
    connect(&tile, &ChartTile::sigQuery, this, [&queries] { ++queries; });
    tile.showFixed({makeInput(1), makeInput(77)}, *readDatFile(file));
    QVERIFY(tile.plot().from() < 1732233600 && tile.plot().to() > 1732233601);
    QCOMPARE(tile.inputs(), (QVector<int>{1, 77}));
    tile.plot().zoom(1000, tile.plot().from());
    QTest::qWait(0);
    QCOMPARE(queries, 0); // there is nothing more to be had
}

void tst_SensorPages::controlsAreNamed() {
    SensorPage data(context());
    ChartPage charts(context(), manager_->storage());
    charts.setInputs(makeInputs(3));
    charts.showInputs({1, 2});
    InputPicker picker(makeInputs(3), {{1}, 1}, nullptr);
    for (QWidget* const widget :
         {static_cast<QWidget*>(&data), static_cast<QWidget*>(&charts), static_cast<QWidget*>(&picker)})
        checkNames(*widget);
    show(picker);
    auto* const tree = find<QTreeWidget>(picker, "pickerTree");
    QVERIFY(find<QAbstractButton>(picker, "pickerOk")->isEnabled());
    tree->topLevelItem(1)->child(0)->setCheckState(0, Qt::Checked);
    QVERIFY(!find<QAbstractButton>(picker, "pickerOk")->isEnabled()); // one too many
}

QTEST_MAIN(tst_SensorPages)
#include "tst_SensorPages.moc"
