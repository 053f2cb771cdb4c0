#include "video/AvMessage.h"
#include "video/Pictures.h"
#include "video/ui/GLYuvWidget.h"
#include "video/ui/ItemVideo.h"
#include "video/ui/TileMenu.h"

#include <QContextMenuEvent>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <thread>
#include <vector>

using corvanta::video::AspectMode;
using corvanta::video::openedText;

namespace {

bool give(ItemVideo& tile, const pictures::I420& picture) {
    return tile.showFrame(picture.bytes.data(), static_cast<uint>(picture.width), static_cast<uint>(picture.height));
}

QLabel* textLine(const ItemVideo& tile) {
    return tile.findChild<QLabel*>(QStringLiteral("tileText"));
}

GLYuvWidget* renderer(const ItemVideo& tile) {
    return tile.findChild<GLYuvWidget*>();
}

/// A shown tile without a window manager's frame.
struct ShownTile {
    explicit ShownTile(QSize size = {402, 302}) {
        tile.setWindowFlag(Qt::FramelessWindowHint);
        tile.resize(size);
        tile.show();
    }
    bool isReady() { return QTest::qWaitForWindowExposed(&tile); }
    ItemVideo tile{5};
};

QStringList textsOf(const QMenu& menu) {
    QStringList texts;
    for (const QAction* action : menu.actions()) {
        texts << action->text();
        if (action->menu() != nullptr) {
            texts += textsOf(*action->menu());
        }
    }
    return texts;
}

} // namespace

class tst_ItemVideo : public QObject {
    Q_OBJECT
private slots:
    void pictureIsPlacedAndShown();
    void hiddenTileTakesNothing();
    void manyPicturesWakeOnce();
    void closeShowsTheEmptyTile();
    void textFitsEveryTile_data();
    void textFitsEveryTile();
    void shortLivedTextAndStall();
    void selectionAndKeys();
    void menuEntries();
    void menuActions();
    void picturesFromManyThreads();
};

void tst_ItemVideo::pictureIsPlacedAndShown() {
    ShownTile shown;
    QVERIFY(shown.isReady());
    QVERIFY(!renderer(shown.tile)); // nothing is made before it is needed
    pictures::I420 wide = pictures::colourBars(192, 108);
    QVERIFY(give(shown.tile, wide));
    QTRY_COMPARE(shown.tile.frameSize().width, 192U);
    QCOMPARE(renderer(shown.tile)->geometry(), QRect(1, 37, 400, 225));
    const QImage wanted = pictures::converted(wide, QSize(400, 225));
    QVERIFY(pictures::largestDifference(renderer(shown.tile)->grabFramebuffer(), wanted) <= 3);

    shown.tile.setAspectMode(AspectMode::Stretch);
    QCOMPARE(renderer(shown.tile)->geometry(), QRect(1, 1, 400, 300));
    shown.tile.setAspectMode(AspectMode::KeepRatio);
    shown.tile.resize(202, 302);
    QCOMPARE(renderer(shown.tile)->geometry(), QRect(1, 94, 200, 112));
    QVERIFY(give(shown.tile, pictures::colourBars(108, 192)));
    QTRY_COMPARE(renderer(shown.tile)->geometry(), QRect(16, 1, 168, 300));
}

void tst_ItemVideo::hiddenTileTakesNothing() {
    QWidget window;
    window.resize(300, 200);
    ItemVideo tile(0, &window);
    const pictures::I420 picture = pictures::colourBars(64, 48);
    QVERIFY(!give(tile, picture));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(give(tile, picture));
    tile.hide();
    QVERIFY(!give(tile, picture));
    tile.show();
    QVERIFY(give(tile, picture));
    window.hide();
    QVERIFY(!give(tile, picture));
}

void tst_ItemVideo::manyPicturesWakeOnce() {
    ShownTile shown;
    QVERIFY(shown.isReady());
    QSignalSpy wakes(&shown.tile, &ItemVideo::sigPictureWaiting);
    QList<int> firstBytes;
    connect(&shown.tile, &ItemVideo::sigYuv, this,
            [&](const uchar* picture, uint, uint) { firstBytes << picture[0]; });
    pictures::I420 picture = pictures::colourBars(64, 48);
    for (int i = 1; i <= 100; ++i) {
        picture.bytes[0] = static_cast<std::uint8_t>(i);
        QVERIFY(give(shown.tile, picture));
    }
    QTRY_COMPARE(firstBytes, QList<int>{100});
    QCOMPARE(wakes.count(), 1);
    QCOMPARE(shown.tile.counters().received, 100U);
    QCOMPARE(shown.tile.counters().overwritten, 99U);
    picture.bytes[0] = 101;
    QVERIFY(give(shown.tile, picture));
    QTRY_COMPARE(firstBytes, (QList<int>{100, 101}));
    QCOMPARE(wakes.count(), 1); // the beat goes on and looks
    QTRY_COMPARE(shown.tile.counters().painted, 2U);
}

void tst_ItemVideo::closeShowsTheEmptyTile() {
    ShownTile shown;
    QVERIFY(shown.isReady());
    shown.tile.attachStream(42, {{QStringLiteral("DeviceId"), QStringLiteral("cam")}});
    QVERIFY(give(shown.tile, pictures::colourBars(64, 48)));
    QTRY_VERIFY(renderer(shown.tile) && renderer(shown.tile)->isVisible());
    QCOMPARE(shown.tile.requestId(), 42);
    shown.tile.setText(QStringLiteral("打开失败(2)"));

    QVERIFY(give(shown.tile, pictures::colourBars(64, 48))); // on its way while the tile is closed
    shown.tile.close();
    QCoreApplication::processEvents();
    QCOMPARE(shown.tile.requestId(), 0);
    QVERIFY(shown.tile.streamParameters().isEmpty());
    QCOMPARE(shown.tile.frameSize().width, 0U);
    QCOMPARE(renderer(shown.tile)->frameSize().width, 0U);
    QVERIFY(!renderer(shown.tile)->isVisible());
    QCOMPARE(shown.tile.text(), QStringLiteral("打开失败(2)"));
    QCOMPARE(QColor(shown.tile.grab().toImage().pixel(300, 250)), QColor(174, 174, 174));

    QVERIFY(give(shown.tile, pictures::colourBars(64, 48)));
    QTRY_VERIFY(renderer(shown.tile)->isVisible());
}

void tst_ItemVideo::textFitsEveryTile_data() {
    QTest::addColumn<QSize>("tile");
    QTest::newRow("large") << QSize(800, 600);
    QTest::newRow("quarter") << QSize(240, 135);
    QTest::newRow("smallest of 8 x 8") << QSize(80, 45);
    QTest::newRow("hardly any") << QSize(20, 14);
    QTest::newRow("none") << QSize(3, 3);
}

void tst_ItemVideo::textFitsEveryTile() {
    QFETCH(QSize, tile);
    ShownTile shown(tile);
    QVERIFY(shown.isReady());
    shown.tile.setText(QStringLiteral("正在建立视频连接..."));
    const QLabel* line = textLine(shown.tile);
    QCOMPARE(line->text(), QStringLiteral("正在建立视频连接..."));
    QCOMPARE(line->isVisible(), tile.height() > 10);
    QVERIFY(!line->isVisible() || shown.tile.rect().contains(line->geometry()));
    QVERIFY(tile.width() < 800 || line->font().pointSize() == 16);
    shown.tile.setText({});
    QVERIFY(!line->isVisible());
}

void tst_ItemVideo::shortLivedTextAndStall() {
    ShownTile shown;
    QVERIFY(shown.isReady());
    const QLabel* line = textLine(shown.tile);
    shown.tile.attachStream(42, {});
    shown.tile.setText(openedText());
    QVERIFY(line->isVisible());
    for (int second = 0; second < 3; ++second) {
        shown.tile.OnTimeOut();
    }
    QVERIFY(!line->isVisible());
    QCOMPARE(shown.tile.text(), openedText());
    shown.tile.OnTimeOut();
    shown.tile.OnTimeOut();
    QCOMPARE(line->text(), QStringLiteral("等待画面"));
    QVERIFY(line->isVisible());

    QVERIFY(give(shown.tile, pictures::colourBars(64, 48)));
    QTRY_VERIFY(!line->isVisible());
    for (int second = 0; second < 5; ++second) {
        shown.tile.OnTimeOut();
    }
    QVERIFY(line->isVisible());
    QCOMPARE(line->text(), QStringLiteral("画面停顿"));
    QVERIFY(give(shown.tile, pictures::colourBars(64, 48)));
    QTRY_VERIFY(!line->isVisible());

    shown.tile.setText(QStringLiteral("打开失败(2)"));
    for (int second = 0; second < 20; ++second) {
        shown.tile.OnTimeOut();
    }
    QVERIFY(line->isVisible()); // a failure stays to be read
}

void tst_ItemVideo::selectionAndKeys() {
    ShownTile shown;
    QVERIFY(shown.isReady());
    QSignalSpy focus(&shown.tile, &ItemVideo::sig_setfocus);
    QSignalSpy twice(&shown.tile, &ItemVideo::sigDoubleClick);
    QVERIFY(give(shown.tile, pictures::colourBars(400, 300)));
    QTRY_VERIFY(renderer(shown.tile));
    shown.tile.setText(QStringLiteral("打开失败(2)"));
    // The renderer and the text line lie over the whole tile and must let every click through.
    QTest::mouseClick(shown.tile.windowHandle(), Qt::LeftButton, {}, QPoint(200, 150));
    QTRY_COMPARE(focus.count(), 1);
    QCOMPARE(focus.first().first().toInt(), 5);
    QTest::mouseDClick(shown.tile.windowHandle(), Qt::LeftButton, {}, QPoint(200, 150));
    QTRY_COMPARE(twice.count(), 1);
    focus.clear();
    QTest::mouseClick(shown.tile.windowHandle(), Qt::MiddleButton, {}, QPoint(200, 150));
    QTest::keyClick(&shown.tile, Qt::Key_Space);
    QCOMPARE(twice.count(), 2);
    QCOMPARE(focus.count(), 0);
    QSignalSpy open(&shown.tile, &ItemVideo::sigOpenWanted);
    QSignalSpy stop(&shown.tile, &ItemVideo::sigStopWanted);
    QTest::keyClick(&shown.tile, Qt::Key_Return);
    QTest::keyClick(&shown.tile, Qt::Key_Delete);
    QCOMPARE(open.count(), 1);
    QCOMPARE(stop.count(), 1);

    shown.tile.close();
    shown.tile.setText({});
    shown.tile.setSelected(true);
    const QImage selected = shown.tile.grab().toImage();
    QCOMPARE(QColor(selected.pixel(0, 150)), QColor(0, 153, 255));
    QCOMPARE(QColor(selected.pixel(200, 150)), QColor(174, 174, 174));
    shown.tile.setSelected(false);
    QCOMPARE(QColor(shown.tile.grab().toImage().pixel(0, 150)), QColor(121, 121, 121));
}

void tst_ItemVideo::menuEntries() {
    ItemVideo tile(0);
    const QStringList wanted{
        QStringLiteral("打开视频"),    QStringLiteral("开始录像"), QStringLiteral("开启音频"),
        QStringLiteral("开启对讲"),    QStringLiteral("抓拍照片"), QStringLiteral("云台设置"),
        QStringLiteral("画面比例"),    QStringLiteral("平铺"),     QStringLiteral("保持原始比例"),
        QStringLiteral("退出全屏"),    QStringLiteral("停   止"),  QStringLiteral("轮屏图片预览"),
        QStringLiteral("轮屏视频通道")};
    QCOMPARE(textsOf(tile.menu()), wanted);
    tile.menu().setActionRunning(TileAction::Record, true);
    tile.menu().setActionRunning(TileAction::Listen, true);
    tile.menu().setActionRunning(TileAction::Talk, true);
    QCOMPARE(textsOf(tile.menu()).mid(1, 3),
             (QStringList{QStringLiteral("停止录像"), QStringLiteral("关闭音频"), QStringLiteral("关闭对讲")}));
    tile.menu().setActionRunning(TileAction::Record, false);
    tile.menu().setActionRunning(TileAction::Listen, false);
    tile.menu().setActionRunning(TileAction::Talk, false);
    QCOMPARE(textsOf(tile.menu()), wanted);
}

void tst_ItemVideo::menuActions() {
    ShownTile shown;
    QVERIFY(shown.isReady());
    QSignalSpy chosen(&shown.tile, &ItemVideo::sigMenuAction);
    const auto trigger = [&](const char* name) {
        shown.tile.menu().findChild<QAction*>(QLatin1String(name))->trigger();
    };
    QVERIFY(shown.tile.menu().findChild<QAction*>(QStringLiteral("tileKeepRatio"))->isChecked());
    trigger("tileStretch");
    QCOMPARE(shown.tile.aspectMode(), AspectMode::Stretch);
    trigger("tileKeepRatio");
    QCOMPARE(shown.tile.aspectMode(), AspectMode::KeepRatio);
    QCOMPARE(chosen.count(), 0);
    const auto* record = shown.tile.menu().findChild<QAction*>(QStringLiteral("tileRecord"));
    QVERIFY(!record->isEnabled()); // until the owner of recording enables it
    shown.tile.menu().setActionEnabled(TileAction::Record, true);
    QVERIFY(record->isEnabled());
    for (const char* name : {"tileOpen", "tileStop", "tileLeaveFullScreen", "tileRecord"}) {
        trigger(name);
    }
    QCOMPARE(chosen.count(), 4);
    QCOMPARE(chosen[1][0].toInt(), 5);
    QCOMPARE(chosen[1][1].value<TileAction>(), TileAction::Stop);
    QAction stranger(QStringLiteral("打开视频"));
    shown.tile.onPopMenuTriggered(&stranger);
    QCOMPARE(chosen.count(), 4);

    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, QPoint(1, 1));
    QCoreApplication::sendEvent(&shown.tile, &byKey);
    QTRY_VERIFY(shown.tile.menu().isVisible());
    shown.tile.menu().hide();
}

void tst_ItemVideo::picturesFromManyThreads() {
    ShownTile shown({320, 240});
    QVERIFY(shown.isReady());
    bool whole = true;
    int seen = 0;
    connect(&shown.tile, &ItemVideo::sigYuv, this, [&](const uchar* picture, uint width, uint height) {
        const std::size_t count = std::size_t{width} * height * 3 / 2;
        whole = whole && std::all_of(picture, picture + count, [&](uchar byte) { return byte == picture[0]; });
        ++seen;
    });
    std::vector<std::jthread> streams;
    streams.reserve(4);
    for (int id = 0; id < 4; ++id) {
        streams.emplace_back([&tile = shown.tile, id](const std::stop_token& stop) {
            pictures::I420 flat(id % 2 == 0 ? 160 : 192, 120);
            for (std::uint8_t value = 0; !stop.stop_requested(); ++value) {
                std::fill(flat.bytes.begin(), flat.bytes.end(), value);
                give(tile, flat);
            }
        });
    }
    for (int round = 0; round < 60; ++round) {
        const int before = seen;
        QTRY_VERIFY_WITH_TIMEOUT(seen > before, 60000);
        switch (round % 4) {
        case 0:
            shown.tile.resize(300 + round, 200 + round);
            break;
        case 1:
            shown.tile.close();
            break;
        case 2:
            shown.tile.hide();
            shown.tile.show();
            break;
        default:
            shown.tile.setAspectMode(round % 8 == 3 ? AspectMode::Stretch : AspectMode::KeepRatio);
        }
    }
    streams.clear(); // stops and joins them
    QVERIFY(whole);
    // No wake-up was lost: a last picture still arrives.
    QCoreApplication::processEvents();
    QVERIFY(give(shown.tile, pictures::colourBars(64, 48)));
    disconnect(&shown.tile, &ItemVideo::sigYuv, this, nullptr);
    QTRY_COMPARE(shown.tile.frameSize().width, 64U);
}

QTEST_MAIN(tst_ItemVideo)
#include "tst_ItemVideo.moc"
