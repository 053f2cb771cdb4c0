#include "video/Pictures.h"
#include "video/ui/GLYuvWidget.h"

#include <QTest>
#include <QVBoxLayout>

namespace {

/// Levels that may differ: the textures hold 8 bits, and the driver interpolates with as many.
constexpr int tolerance = 3;

void show(GLYuvWidget& widget, pictures::I420& picture) {
    widget.slotShowYuv(picture.bytes.data(), static_cast<uint>(picture.width), static_cast<uint>(picture.height));
}

bool isBlack(const QImage& image) {
    QImage black(image.size(), QImage::Format_RGB32);
    black.fill(Qt::black);
    return pictures::largestDifference(image, black) == 0;
}

} // namespace

class tst_GLYuvWidget : public QObject {
    Q_OBJECT
private slots:
    void colours_data();
    void colours();
    void nothingBeforeTheFirstPicture();
    void sizeChange();
    void scaled();
    void refusedPictureLeavesThePresentOne();
    void survivesAnotherWindow();
};

void tst_GLYuvWidget::colours_data() {
    QTest::addColumn<QSize>("size");
    QTest::newRow("640 x 480") << QSize(640, 480);
    QTest::newRow("halves are odd") << QSize(642, 362);
    QTest::newRow("half is even, no multiple of 4") << QSize(644, 360);
    QTest::newRow("tiny") << QSize(34, 18);
}

void tst_GLYuvWidget::colours() {
    QFETCH(QSize, size);
    GLYuvWidget widget;
    widget.setWindowFlag(Qt::FramelessWindowHint);
    widget.resize(size);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    pictures::I420 picture = pictures::colourBars(size.width(), size.height());
    show(widget, picture);
    // What is painted is the widget's own copy.
    pictures::I420 sent = picture;
    std::fill(picture.bytes.begin(), picture.bytes.end(), std::uint8_t{0});
    const QImage shown = widget.grabFramebuffer();
    QVERIFY2(pictures::largestDifference(shown, pictures::converted(sent, size)) <= tolerance,
             qPrintable(QString::number(pictures::largestDifference(shown, pictures::converted(sent, size)))));
    // Bright below, as the luma grows from the top.
    QVERIFY(qGray(shown.pixel(1, size.height() - 2)) > qGray(shown.pixel(1, 1)) + 80);
}

void tst_GLYuvWidget::nothingBeforeTheFirstPicture() {
    GLYuvWidget widget;
    widget.resize(200, 100);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QVERIFY(isBlack(widget.grabFramebuffer()));
    pictures::I420 picture = pictures::colourBars(64, 48);
    show(widget, picture);
    QVERIFY(!isBlack(widget.grabFramebuffer()));
    widget.clearFrame();
    QVERIFY(isBlack(widget.grabFramebuffer()));
    QCOMPARE(widget.frameSize().width, 0U);
}

void tst_GLYuvWidget::sizeChange() {
    GLYuvWidget widget;
    widget.resize(320, 240);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    for (const QSize size : {QSize(320, 240), QSize(160, 120), QSize(640, 480), QSize(2, 2), QSize(320, 240)}) {
        pictures::I420 picture = pictures::colourBars(size.width(), size.height());
        show(widget, picture);
        QCOMPARE(widget.frameSize().width, static_cast<unsigned>(size.width()));
        QVERIFY(pictures::largestDifference(widget.grabFramebuffer(), pictures::converted(picture, widget.size())) <=
                tolerance);
    }
}

void tst_GLYuvWidget::scaled() {
    GLYuvWidget widget;
    widget.resize(300, 200);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    pictures::I420 picture = pictures::colourBars(176, 144);
    show(widget, picture);
    for (const QSize size : {QSize(300, 200), QSize(123, 77), QSize(500, 333)}) {
        widget.resize(size);
        QVERIFY(pictures::largestDifference(widget.grabFramebuffer(), pictures::converted(picture, size)) <=
                tolerance);
    }
    widget.resize(300, 0); // no fault in the driver, no division by nothing
    widget.resize(300, 200);
    QVERIFY(!isBlack(widget.grabFramebuffer()));
}

void tst_GLYuvWidget::refusedPictureLeavesThePresentOne() {
    GLYuvWidget widget;
    widget.resize(64, 48);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    pictures::I420 picture = pictures::colourBars(64, 48);
    show(widget, picture);
    const QImage before = widget.grabFramebuffer();
    widget.slotShowYuv(nullptr, 64, 48);
    widget.slotShowYuv(picture.bytes.data(), 0, 48);
    widget.slotShowYuv(picture.bytes.data(), 63, 48);
    widget.slotShowYuv(picture.bytes.data(), 64, 0xFFFFFFFE);
    QCOMPARE(widget.frameSize().width, 64U);
    QCOMPARE(widget.grabFramebuffer(), before);
}

void tst_GLYuvWidget::survivesAnotherWindow() {
    QWidget first;
    QWidget second;
    first.resize(200, 150);
    second.resize(200, 150);
    auto* widget = new GLYuvWidget(&first);
    widget->setGeometry(0, 0, 176, 144);
    first.show();
    second.show();
    QVERIFY(QTest::qWaitForWindowExposed(&first));
    QVERIFY(QTest::qWaitForWindowExposed(&second));
    pictures::I420 picture = pictures::colourBars(176, 144);
    show(*widget, picture);
    const QImage wanted = pictures::converted(picture, widget->size());
    QVERIFY(pictures::largestDifference(widget->grabFramebuffer(), wanted) <= tolerance);
    widget->setParent(&second); // its GL context is another one from here
    widget->show();
    QVERIFY(pictures::largestDifference(widget->grabFramebuffer(), wanted) <= tolerance);
}

QTEST_MAIN(tst_GLYuvWidget)
#include "tst_GLYuvWidget.moc"
