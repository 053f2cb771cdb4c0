#include "storage/StoredFilesTest.h"
#include "storage/ui/ThumbnailStrip.h"

#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QImage>

namespace storage = corvanta::storage;

/// The timeline of a day, and the small pictures below it.
class tst_DayTimeline final : public StoredFilesTest {
    Q_OBJECT
private slots:
    void showsDays();
    void byKeyboard();
    void byMouse();
    void thumbnails();
};

void tst_DayTimeline::showsDays() {
    add("A", "Capture", today("10:00:00"), ".jpg", 0);
    add("A", "Capture", today("10:00:00").addDays(-2), ".jpg", 0);
    add("B", "LocalRecord", today("10:00:00").addDays(-2), ".avi");
    show();
    part<QComboBox>("fileRange").setCurrentIndex(1);
    search();
    showTimeline();
    QCOMPARE(part<QDateEdit>("fileDay").date(), QDate::currentDate());
    QCOMPARE(timeline().filesOfCurrentRow(), std::vector<int>{2});
    press("previousDay");
    QVERIFY(part<QLabel>("dayEmpty").isVisible());
    QVERIFY(part<QLabel>("dayEmpty")
                .text()
                .contains(QDate::currentDate().addDays(-2).toString(QStringLiteral("yyyy-MM-dd"))));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(part<QDateEdit>("fileDay").date(), QDate::currentDate().addDays(-2));
    QVERIFY(timeline().isVisible());
    QCOMPARE(timeline().filesOfCurrentRow(), std::vector<int>{0});
    QVERIFY(!timeline().place(1).isEmpty());
    QVERIFY(timeline().place(1).top() > timeline().place(0).top());
    QVERIFY(timeline().place(2).isNull());
    part<QDateEdit>("fileDay").setDate(QDate::currentDate());
    QCOMPARE(timeline().filesOfCurrentRow(), std::vector<int>{2});
}

void tst_DayTimeline::byKeyboard() {
    for (const char* const time : {"08:00:00", "09:00:00", "10:00:00"})
        add("A", "Capture", today(time), ".jpg", 0);
    const QString recording = add("B", "LocalRecord", today("09:10:00"), ".avi");
    show();
    showTimeline();
    timeline().setFocus();
    QTest::keyClick(&timeline(), Qt::Key_Home);
    QCOMPARE(timeline().currentFile(), 0);
    QTest::keyClick(&timeline(), Qt::Key_Right);
    QCOMPARE(timeline().currentFile(), 1);
    QVERIFY(timeline().accessibleDescription().contains(QStringLiteral("09:00:00")));
    QTest::keyClick(&timeline(), Qt::Key_Down);
    QCOMPARE(timeline().currentFile(), 2); // the recording, by time among the pictures
    QSignalSpy plays(page_.get(), &StoredFilesPage::sigPlay);
    QTest::keyClick(&timeline(), Qt::Key_Return);
    QCOMPARE(plays.size(), 1);
    QCOMPARE(plays[0][0].value<QVector<storage::FileRecord>>().at(0).path, recording);
    QTest::keyClick(&timeline(), Qt::Key_Up);
    QCOMPARE(timeline().currentFile(), 1);
    QTest::keyClick(&timeline(), Qt::Key_End);
    QCOMPARE(timeline().currentFile(), 3);
    QTest::keyClick(&timeline(), Qt::Key_Right);
    QCOMPARE(timeline().currentFile(), 3);
    // Stretched, the current file stays in view.
    for (int i = 0; i < 12; ++i)
        QTest::keyClick(&timeline(), Qt::Key_Plus);
    QVERIFY(timeline().viewport()->rect().intersects(timeline().place(3)));
    QTest::keyClick(&timeline(), Qt::Key_Home);
    QVERIFY(timeline().viewport()->rect().intersects(timeline().place(0)));
    QVERIFY(!timeline().viewport()->rect().intersects(timeline().place(3)));
    for (int i = 0; i < 12; ++i)
        QTest::keyClick(&timeline(), Qt::Key_Minus);
    QVERIFY(timeline().viewport()->rect().contains(timeline().place(3)));
}

void tst_DayTimeline::byMouse() {
    add("A", "Capture", today("08:00:00"), ".jpg", 0);
    add("A", "LocalRecord", today("09:00:00"), ".avi");
    add("A", "LocalRecord", today("09:05:00"), ".avi");
    const QString last = add("B", "LocalRecord", today("20:00:00"), ".avi");
    show();
    showTimeline();
    QTest::mouseClick(timeline().viewport(), Qt::LeftButton, Qt::NoModifier, timeline().place(0).center());
    QCOMPARE(timeline().currentFile(), 0);
    // A recording is as wide as the time to the next one, ten minutes at most.
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(&timeline(), Qt::Key_Plus);
    QVERIFY(std::abs(timeline().place(2).width() - 2 * timeline().place(1).width()) <= 2);
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(&timeline(), Qt::Key_Minus);
    QSignalSpy plays(page_.get(), &StoredFilesPage::sigPlay);
    const QPoint place = timeline().place(3).center();
    QTest::mouseClick(timeline().viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(timeline().currentFile(), 3);
    QTest::mouseDClick(timeline().viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(plays.size(), 1);
    QCOMPARE(plays[0][0].value<QVector<storage::FileRecord>>().at(0).path, last);
    // The list and the timeline are at the same file.
    auto& strip = page_->timeline().strip();
    QCOMPARE(strip.model()->rowCount(), 1);
    QCOMPARE(strip.selectedFiles(), std::vector<int>{3});
}

void tst_DayTimeline::thumbnails() {
    for (int minute = 0; minute < 20; ++minute)
        add("A", "Capture", QDateTime(QDate::currentDate(), QTime(8, minute)), ".jpg", 0);
    const QString broken = add("A", "Capture", today("07:00:00"), ".jpg", 100);
    const QString vanished = add("A", "Capture", today("07:10:00"), ".jpg", 0);
    show();
    QVERIFY(QFile::remove(vanished));
    showTimeline();
    auto& strip = page_->timeline().strip();
    QCOMPARE(strip.model()->rowCount(), 22);
    QTest::keyClick(&strip, Qt::Key_Home);
    QCOMPARE(timeline().currentFile(), 0);
    const auto pictureOf = [&strip](int row) {
        return strip.model()->index(row, 0).data(Qt::DecorationRole).value<QPixmap>().toImage();
    };
    const QImage empty = pictureOf(21); // not there yet, or not wanted yet
    QTRY_COMPARE((pictureOf(2).pixelColor(20, 20).hsvHue() + 5) / 10, 2);
    QTRY_VERIFY(strip.thumbnails().has(page_->files().at(2).path));
    // Neither of these will ever be there, and both say so.
    QTRY_VERIFY(pictureOf(0) == pictureOf(1) && pictureOf(0) != empty);
    QVERIFY(!strip.thumbnails().has(broken));
    QTest::keyClick(&strip, Qt::Key_End);
    QTRY_VERIFY(strip.thumbnails().has(page_->files().at(21).path));
    QVERIFY(strip.thumbnails().kept() <= Thumbnails::MostKept);
}

QTEST_MAIN(tst_DayTimeline)
#include "tst_DayTimeline.moc"
