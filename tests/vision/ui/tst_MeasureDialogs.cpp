#include "sensor/ui/SensorDialog.h"
#include "support/PaintedSpot.h"
#include "vision/ui/LaserSetDialog.h"
#include "vision/ui/MeasureTest.h"
#include "vision/ui/PictureView.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTreeWidget>

using namespace corvanta::vision;

/// The dialog in which a camera that measures laser spots is set up, and who comes to it and to the one for codes.
class tst_MeasureDialogs final : public MeasureTest {
    Q_OBJECT

private slots:
    void aLaserCameraIsSetUp();
    void aLaserPlateHasFourPoints();
    void administratorsSetUp_data();
    void administratorsSetUp();
    void controlsAreNamed();

private:
    /// A red spot with a white core on a plate.
    static QImage spotAt(QPointF centre) {
        paintedSpot::Light light{centre, 11.8, 500};
        light.colour = {1, 0.44, 0.44};
        return paintedSpot::paint({Picture, 60, {}, 0, 0, 0, 1, {light}});
    }
};

void tst_MeasureDialogs::aLaserCameraIsSetUp() {
    begin();
    QWidget window;
    LaserSetDialog dialog(context(), QStringLiteral("a"), &window);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("激光光斑测距配置"));
    showLive(dialog);
    capture(dialog, "referenceTake", wall());
    auto* const state = find<QLabel>(dialog, "spotState");
    QTRY_VERIFY(state->text().contains(QStringLiteral("参考图")));
    capture(dialog, "spotFind", spotAt({200, 150}));
    QTRY_VERIFY2(state->text().contains(QStringLiteral("中心 (200.")), qPrintable(state->text()));
    type(dialog, "spotSmallest", QStringLiteral("100"));
    find<QComboBox>(dialog, "spotColour")->setCurrentIndex(1); // the same picture is looked at again
    QVERIFY(!state->text().contains(QStringLiteral("已找到")));
    type(dialog, "spotSmallest", QStringLiteral("x"));
    QVERIFY(!saved(dialog).contains(QStringLiteral("成功")));
    type(dialog, "spotSmallest", QStringLiteral("3"));
    QVERIFY(saved(dialog).contains(QStringLiteral("比例")));
    turnTo(dialog, 1);
    type(dialog, "scaleValue", QStringLiteral("0.5"));
    QCOMPARE(saved(dialog), QStringLiteral("请先确定光斑初始位置!"));
    turnTo(dialog, 2);
    capture(dialog, "initialSet", wall());
    QCOMPARE(tip(), QStringLiteral("初始值确定失败!"));
    capture(dialog, "initialSet", spotAt({200, 150}));
    QCOMPARE(tip(), QStringLiteral("初始值确定成功!"));
    QVERIFY(qAbs(cell(dialog, 0, 1).toDouble() - 100) < 0.1);
    capture(dialog, "positionMeasure", spotAt({220, 150}));
    QTRY_VERIFY(qAbs(cell(dialog, 0, 3).toDouble() - 10) < 0.1);
    QCOMPARE(saved(dialog), QStringLiteral("保存成功!"));
    const QVariantMap info = stored("Laserinfo");
    QCOMPARE(info["scale"].toString(), QString("0.5"));
    QCOMPARE(info["colour"].toString(), QString("red"));
    QCOMPARE(info["inintDataList"].toMap()["laser_inint_x"].toString(), cell(dialog, 0, 1));
    QCOMPARE(info["input"].toList().value(0).toMap()["type"].toString(), QString("laser_x"));
    QCOMPARE(info["reference"].toString(), QString("workspaces/measuring/a/laserpic/reference.png"));
    QCOMPARE(QImage(dir_->filePath(info["reference"].toString())).size(), Picture);
    turnTo(dialog, 1);
    type(dialog, "scaleValue", QStringLiteral("0.25")); // the initial position was measured with another
    QCOMPARE(saved(dialog), QStringLiteral("请先确定光斑初始位置!"));
}

void tst_MeasureDialogs::aLaserPlateHasFourPoints() {
    begin();
    LaserSetDialog dialog(context(), QStringLiteral("a"), nullptr);
    showLive(dialog);
    turnTo(dialog, 1);
    find<QComboBox>(dialog, "scaleMode")->setCurrentIndex(1);
    QVERIFY(saved(dialog).contains(QStringLiteral("四个标定点")));
    capture(dialog, "scaleCapture", spotAt({320, 240}));
    auto* const view = find<PictureView>(dialog, "capturedPicture");
    QTRY_COMPARE(view->picture().size(), Picture);
    auto* const table = find<QTableWidget>(dialog, "scalePoints");
    const QVector<QPoint> corners{{100, 100}, {500, 100}, {500, 400}, {100, 400}};
    const double zoom = qMin(view->width() / 640.0, view->height() / 480.0);
    const QPointF origin((view->width() - 640 * zoom) / 2, (view->height() - 480 * zoom) / 2);
    for (int point = 0; point < corners.size(); ++point) {
        QTest::mouseClick(view, Qt::LeftButton, {}, (origin + QPointF(corners[point]) * zoom).toPoint());
        QVERIFY(qAbs(table->item(point, 0)->text().toDouble() - corners[point].x()) <= 1 / zoom);
        for (int axis = 0; axis < 2; ++axis) { // what was clicked is corrected by hand
            const int pixel = axis == 0 ? corners[point].x() : corners[point].y();
            table->item(point, axis)->setText(QString::number(pixel));
            table->item(point, 2 + axis)->setText(QString::number(pixel / 10.0));
        }
    }
    turnTo(dialog, 2);
    QTest::mouseClick(view, Qt::LeftButton, {}, view->rect().center()); // the points are not being chosen now
    QCOMPARE(table->item(0, 0)->text(), QString("100"));
    capture(dialog, "initialSet", spotAt({320, 240}));
    QCOMPARE(tip(), QStringLiteral("初始值确定成功!"));
    QVERIFY2(qAbs(cell(dialog, 0, 1).toDouble() - 32) < 0.1, qPrintable(cell(dialog, 0, 1)));
    QVERIFY(qAbs(cell(dialog, 1, 1).toDouble() - 24) < 0.1);
    QCOMPARE(saved(dialog), QStringLiteral("保存成功!"));
    QCOMPARE(stored("Laserinfo")["mode"].toString(), QString("points"));
    QCOMPARE(stored("Laserinfo")["points"].toList().value(2).toMap()["x"].toString(), QString("50"));
    table->item(3, 2)->setText(QStringLiteral("?"));
    QVERIFY(!saved(dialog).contains(QStringLiteral("成功")));
}

void tst_MeasureDialogs::administratorsSetUp_data() {
    QTest::addColumn<QByteArray>("authority");
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("isShown");
    QTest::addColumn<QString>("opened");
    QTest::newRow("code") << QByteArray("true") << 0 << true << QStringLiteral("QRcodeInputsetDialog");
    QTest::newRow("laser") << QByteArray("true") << 1 << true << QStringLiteral("LaserSetDialog");
    QTest::newRow("other board") << QByteArray("true") << 2 << false << QString();
    QTest::newRow("no administrator") << QByteArray("false") << 0 << true << QString();
}

void tst_MeasureDialogs::administratorsSetUp() {
    QFETCH(QByteArray, authority);
    QFETCH(int, row);
    QFETCH(bool, isShown);
    QFETCH(QString, opened);
    begin("{}", authority);
    corvanta::sensor::SensorDialog dialog(context(), QStringLiteral("a"), nullptr);
    show(dialog);
    auto* const list = find<QTreeWidget>(dialog, "boardList");
    list->setCurrentItem(list->topLevelItem(row));
    auto* const button = find<QPushButton>(dialog, "boardMeasure");
    QCOMPARE(button->isVisible(), isShown);
    QCOMPARE(isShown && button->isEnabled(), !opened.isEmpty());
    if (opened.isEmpty())
        return;
    click(dialog, "boardMeasure");
    QTRY_VERIFY(QApplication::activeModalWidget() != nullptr);
    QCOMPARE(QApplication::activeModalWidget()->objectName(), opened);
    QApplication::activeModalWidget()->close();
}

void tst_MeasureDialogs::controlsAreNamed() {
    begin();
    QWidget window;
    window.resize(680, 384);
    LaserSetDialog dialog(context(), QStringLiteral("a"), &window);
    checkForm(dialog);
}

QTEST_MAIN(tst_MeasureDialogs)
#include "tst_MeasureDialogs.moc"
