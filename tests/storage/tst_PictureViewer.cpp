#include "storage/StoredFilesTest.h"
#include "storage/ui/PictureView.h"
#include "storage/ui/PictureViewer.h"

#include <QPushButton>

/// The viewer of pictures, reached from the list.
class tst_PictureViewer final : public StoredFilesTest {
    Q_OBJECT
private slots:
    void leafs();
    void fileThatVanished();
};

void tst_PictureViewer::leafs() {
    for (int minute = 0; minute < 4; ++minute)
        add("A", "Capture", QDateTime(QDate::currentDate(), QTime(8, minute * 10)), ".jpg", 0);
    add("A", "LocalRecord", today("08:15:00"), ".avi");
    show(); // newest first: 30, 20, (recording), 10, 0
    answer([](QWidget* dialog) {
        auto* const viewer = qobject_cast<PictureViewer*>(dialog);
        auto& view = *dialog->findChild<PictureView*>();
        const auto hue = [&view] {
            return view.image().isNull() ? -1 : (view.image().pixelColor(5, 5).hsvHue() - 18) / 5;
        };
        QTRY_COMPARE(hue(), 20);
        QVERIFY(dialog->findChild<QLabel*>(QStringLiteral("pictureText"))->text().startsWith("2 / 4"));
        QTest::keyClick(dialog, Qt::Key_Right);
        QTRY_COMPARE(hue(), 10);
        QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("nextPicture")), Qt::LeftButton);
        QTRY_COMPARE(hue(), 0);
        QVERIFY(!dialog->findChild<QPushButton*>(QStringLiteral("nextPicture"))->isEnabled());
        QTest::keyClick(dialog, Qt::Key_Home);
        QTRY_COMPARE(hue(), 30);
        QTest::keyClick(dialog, Qt::Key_Left);
        QCOMPARE(viewer->currentFile(), 4);
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    clickRow(1, Qt::NoModifier, true);
    QVERIFY(answered_);
    QCOMPARE(table().currentIndex().row(), 0); // where the user was at last
    // Several selected: only those.
    clickRow(0);
    clickRow(4, Qt::ControlModifier);
    answer([](QWidget* dialog) {
        QVERIFY(dialog->findChild<QLabel*>(QStringLiteral("pictureText"))->text().startsWith("2 / 2"));
        QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("closePicture")), Qt::LeftButton);
    });
    press("fileOpen");
    QVERIFY(answered_);
}

void tst_PictureViewer::fileThatVanished() {
    const QString path = add("A", "Capture", today("10:00:00"), ".jpg", 0);
    show();
    QVERIFY(QFile::remove(path));
    clickRow(0);
    answer([](QWidget* dialog) {
        QTRY_COMPARE(dialog->findChild<PictureView*>()->accessibleDescription(), QStringLiteral("文件已不存在"));
        static_cast<QDialog*>(dialog)->reject();
    });
    press("fileOpen");
    QVERIFY(answered_);
}

QTEST_MAIN(tst_PictureViewer)
#include "tst_PictureViewer.moc"
