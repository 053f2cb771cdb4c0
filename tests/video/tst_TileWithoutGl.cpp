#include "video/Pictures.h"
#include "video/ui/GLYuvWidget.h"
#include "video/ui/ItemVideo.h"

#include <QLabel>
#include <QTest>

/// On a display without OpenGL the program is of use all the same, only without pictures: nothing may fail.
class tst_TileWithoutGl : public QObject {
    Q_OBJECT
public:
    static void initMain() { qputenv("QT_XCB_GL_INTEGRATION", "none"); }
private slots:
    void tileSaysThatItCannotShow();
    void rendererDoesNothing();
};

void tst_TileWithoutGl::tileSaysThatItCannotShow() {
    QVERIFY(!GLYuvWidget::isSupported());
    ItemVideo tile(0);
    tile.resize(402, 302);
    tile.show();
    const pictures::I420 picture = pictures::colourBars(64, 48);
    QVERIFY(tile.showFrame(picture.bytes.data(), 64, 48));
    const auto* line = tile.findChild<QLabel*>(QStringLiteral("tileText"));
    QTRY_VERIFY(line->isVisible());
    QVERIFY(!line->text().isEmpty());
    QVERIFY(!tile.findChild<GLYuvWidget*>());
    tile.setAspectMode(corvanta::video::AspectMode::Stretch);
    tile.resize(200, 100);
    tile.close();
    QVERIFY(!line->isVisible());
}

void tst_TileWithoutGl::rendererDoesNothing() {
    QVERIFY(!GLYuvWidget::isSupported());
    GLYuvWidget widget;
    widget.resize(64, 48);
    widget.show();
    pictures::I420 picture = pictures::colourBars(64, 48);
    widget.slotShowYuv(picture.bytes.data(), 64, 48);
    QCoreApplication::processEvents();
    widget.resize(100, 0);
    widget.clearFrame();
    QCoreApplication::processEvents();
    QVERIFY(!widget.isValid());
}

QTEST_MAIN(tst_TileWithoutGl)
#include "tst_TileWithoutGl.moc"
