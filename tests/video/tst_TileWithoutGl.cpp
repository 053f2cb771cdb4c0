#include "video/Pictures.h"
#include "video/ui/GLYuvWidget.h"
#include "video/ui/ItemVideo.h"

#include <QLabel>
#include <QTest>

/// Run on a platform without OpenGL: the program is of use without pictures, so nothing may fail.
class tst_TileWithoutGl : public QObject {
    Q_OBJECT
private slots:
    void tileSaysThatItCannotShow();
    void rendererDoesNothing();
};

void tst_TileWithoutGl::tileSaysThatItCannotShow() {
    if (GLYuvWidget::isSupported()) {
        QSKIP("this platform has OpenGL");
    }
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
    if (GLYuvWidget::isSupported()) {
        QSKIP("this platform has OpenGL");
    }
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
