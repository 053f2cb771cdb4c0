#include "video/Placement.h"

#include <QTest>

using namespace corvanta::video;

class tst_Placement : public QObject {
    Q_OBJECT
private slots:
    void place_data();
    void place();
    void settingTexts();
};

void tst_Placement::place_data() {
    QTest::addColumn<bool>("stretch");
    QTest::addColumn<QSize>("tile");
    QTest::addColumn<QSize>("frame");
    QTest::addColumn<QRect>("geometry"); // null: the present one stays
    const auto row = [](const char* name, bool stretch, QSize tile, QSize frame, QRect geometry) {
        QTest::newRow(name) << stretch << tile << frame << geometry;
    };
    row("stretched", true, {402, 302}, {1920, 1080}, {1, 1, 400, 300});
    row("stretched without a picture", true, {402, 302}, {0, 0}, {1, 1, 400, 300});
    row("flat picture", false, {402, 302}, {1920, 1080}, {1, 37, 400, 225});
    row("upright picture", false, {402, 302}, {1080, 1920}, {116, 1, 168, 300});
    row("same ratio fills", false, {402, 302}, {640, 480}, {0, 1, 400, 300});
    row("truncated height", false, {101, 101}, {1920, 1080}, {1, 22, 99, 55});
    row("truncated width", false, {200, 102}, {352, 288}, {38, 1, 122, 100});
    row("smallest tile of 8 x 8", false, {80, 45}, {704, 576}, {13, 1, 52, 43});
    row("extreme ratio", false, {402, 302}, {16384, 2}, {1, 150, 400, 0});
    row("largest picture", false, {7682, 4322}, {16384, 16384}, {1680, 1, 4320, 4320});
    row("no picture", false, {402, 302}, {0, 0}, {});
    row("tile without room", false, {2, 302}, {640, 480}, {});
    row("tile without size", true, {0, 0}, {640, 480}, {});
}

void tst_Placement::place() {
    QFETCH(bool, stretch);
    QFETCH(QSize, tile);
    QFETCH(QSize, frame);
    QFETCH(QRect, geometry);
    const FrameSize size{static_cast<unsigned>(frame.width()), static_cast<unsigned>(frame.height())};
    const auto placed = placeRenderer(stretch ? AspectMode::Stretch : AspectMode::KeepRatio, tile, size);
    QCOMPARE(placed.value_or(QRect()), geometry);
}

void tst_Placement::settingTexts() {
    QCOMPARE(aspectModeFromSetting(QStringLiteral("平铺")), AspectMode::Stretch);
    QCOMPARE(aspectModeFromSetting(QStringLiteral("原始比例")), AspectMode::KeepRatio);
    QCOMPARE(aspectModeFromSetting(QStringLiteral("else")), AspectMode::KeepRatio);
    for (const AspectMode mode : {AspectMode::KeepRatio, AspectMode::Stretch}) {
        QCOMPARE(aspectModeFromSetting(settingText(mode)), mode);
    }
}

QTEST_GUILESS_MAIN(tst_Placement)
#include "tst_Placement.moc"
