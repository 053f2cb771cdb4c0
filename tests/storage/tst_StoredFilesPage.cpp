#include "storage/RecordingStorage.h"
#include "storage/StoredFilesTest.h"
#include "storage/ui/CheckListBox.h"
#include "storage/ui/DriveBars.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDesktopServices>
#include <QHeaderView>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QToolButton>
#include <QUrl>

namespace keys = corvanta::keys;
namespace storage = corvanta::storage;

/// Takes what would be shown by the desktop.
class UrlTaker final : public QObject {
    Q_OBJECT
public:
    UrlTaker() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "take"); }
    ~UrlTaker() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    QList<QUrl> taken;
public slots:
    void take(const QUrl& url) { taken += url; }
};

/// Searching by choices, what the page does with the files, and how it fits.
class tst_StoredFilesPage final : public StoredFilesTest {
    Q_OBJECT
private slots:
    void firstVisitShowsToday();
    void nothingFound();
    void choices_data();
    void choices();
    void devicesToChooseFrom();
    void searchIsCancelled();
    void changedChoiceDropsTheSearch();
    void destroyedWhileSearching();
    void showsInFolder();
    void handsRecordingsOut();
    void menuByKeyboard();
    void drives();
    void everyControlHasNames();
    void fitsTheSmallestWindow();
};

void tst_StoredFilesPage::firstVisitShowsToday() {
    add("A", "Capture", today("08:00:00"), ".jpg", 2048);
    add("二", "LocalRecord", today("23:59:59"), ".avi", 5);
    add("A", "Capture", today("08:00:00").addDays(-1), ".jpg");
    show();
    const QString day = QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd "));
    QCOMPARE(column(FileTableModel::TimeColumn), (QStringList{day + "23:59:59", day + "08:00:00"}));
    QCOMPARE(column(FileTableModel::DeviceColumn), (QStringList{"二", "大门"}));
    QCOMPARE(column(FileTableModel::KindColumn), (QStringList{"本地录像", "抓拍"}));
    QCOMPARE(column(FileTableModel::SizeColumn), (QStringList{"5 B", "2.0 KB"}));
    QVERIFY(info().startsWith(QStringLiteral("共 2 个文件")));
    // Coming back does not search again.
    QSignalSpy results(page_.get(), &StoredFilesPage::sigResult);
    page_->hide();
    page_->show();
    QVERIFY(!page_->isSearching());
    QCOMPARE(results.size(), 0);
}

void tst_StoredFilesPage::nothingFound() {
    show();
    auto& empty = part<QLabel>("filesEmpty");
    QVERIFY(empty.isVisible());
    QVERIFY(empty.text().contains(QStringLiteral("更改")));
    for (const char* const name : {"fileOpen", "fileDelete", "fileCopy", "fileFolder"})
        QVERIFY2(!part<QToolButton>(name).isEnabled(), name);
}

void tst_StoredFilesPage::choices_data() {
    QTest::addColumn<int>("range"); ///< of its list
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("found");
    QTest::newRow("today") << 0 << ""
                           << "" << 3;
    QTest::newRow("a week") << 1 << ""
                            << "" << 4;
    QTest::newRow("a month") << 2 << ""
                             << "" << 5;
    QTest::newRow("own range, to the second") << 3 << ""
                                              << "" << 1;
    QTest::newRow("device") << 2 << "大门（A）"
                            << "" << 3;
    QTest::newRow("device of the disk") << 2 << "C"
                                        << "" << 1;
    QTest::newRow("kind") << 2 << ""
                          << "设备录像" << 1;
    QTest::newRow("kind that is not there") << 2 << "C"
                                            << "抓拍" << 0;
}

void tst_StoredFilesPage::choices() {
    QFETCH(int, range);
    QFETCH(QString, device);
    QFETCH(QString, kind);
    QFETCH(int, found);
    add("A", "Capture", today("10:00:00"), ".jpg");
    add("A", "Image", today("10:00:01"), ".jpg");
    add("C", "DeviceRecord", today("10:00:02"), ".mp4");
    add("A", "LocalRecord", today("10:00:00").addDays(-6), ".avi");
    add("B", "LocalRecord", today("10:00:00").addDays(-29), ".avi");
    add("B", "LocalRecord", today("10:00:00").addDays(-30), ".avi");
    show();
    part<QComboBox>("fileRange").setCurrentIndex(range);
    QCOMPARE(part<QDateTimeEdit>("startTime").isVisible(), range == 3);
    part<QDateTimeEdit>("startTime").setDateTime(today("10:00:01"));
    part<QDateTimeEdit>("endTime").setDateTime(today("10:00:01"));
    if (!device.isEmpty())
        tick("fileDevices", device);
    if (!kind.isEmpty())
        tick("fileKinds", kind);
    search();
    QCOMPARE(page_->files().count(), found);
    QCOMPARE(column(0).size(), found);
}

void tst_StoredFilesPage::devicesToChooseFrom() {
    add("A", "Capture", today("10:00:00"), ".jpg");
    add("Z 1", "Capture", today("10:00:00"), ".jpg");
    show();
    auto& box = part<CheckListBox>("fileDevices");
    auto* const list = box.findChild<QListView*>(QStringLiteral("fileDevicesList"));
    const auto texts = [list] {
        QStringList result;
        for (int row = 0; row < list->model()->rowCount(); ++row)
            result += list->model()->index(row, 0).data().toString();
        return result;
    };
    QTRY_COMPARE(texts(), (QStringList{"全部设备", "大门（A）", "走廊 2（B）", "Z 1"}));
    // By keyboard; "all" takes the ticks away again.
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Space);
    QTRY_VERIFY(list->isVisible());
    for (const auto key : {Qt::Key_Down, Qt::Key_Space, Qt::Key_Down, Qt::Key_Space})
        QTest::keyClick(list, key);
    QCOMPARE(box.chosen(), (QStringList{"A", "B"}));
    QVERIFY(box.accessibleName().contains(QStringLiteral("2 项")));
    // A device that is new does not take the ticks away.
    emit manager_->sig_updateList();
    QCOMPARE(box.chosen(), (QStringList{"A", "B"}));
    QTest::keyClick(list, Qt::Key_Home);
    QTest::keyClick(list, Qt::Key_Space);
    QCOMPARE(box.chosen(), QStringList());
    QTest::keyClick(list, Qt::Key_Return);
    QVERIFY(!list->isVisible());
    QVERIFY(!page_->isSearching());
}

void tst_StoredFilesPage::searchIsCancelled() {
    for (int i = 0; i < 300; ++i)
        add(QString::number(i), "Capture", today("10:00:00"), ".jpg");
    show();
    QSignalSpy results(page_.get(), &StoredFilesPage::sigResult);
    page_->search();
    press("filesCancel");
    QTRY_COMPARE(results.size(), 1);
    QVERIFY(info().startsWith(QStringLiteral("已取消，共 ")));
    QVERIFY(page_->files().count() <= 300);
    QCOMPARE(column(0).size(), page_->files().count());
}

void tst_StoredFilesPage::changedChoiceDropsTheSearch() {
    add("A", "Capture", today("10:00:00"), ".jpg");
    show();
    QSignalSpy results(page_.get(), &StoredFilesPage::sigResult);
    page_->search();
    QVERIFY(page_->isSearching());
    part<QComboBox>("fileRange").setCurrentIndex(2);
    QVERIFY(!page_->isSearching());
    QCOMPARE(results.size(), 1);
    QVERIFY(info().contains(QStringLiteral("条件已更改")));
    search();
    QCOMPARE(column(0).size(), 1);
}

void tst_StoredFilesPage::destroyedWhileSearching() {
    for (int i = 0; i < 300; ++i)
        add(QString::number(i), "Capture", today("10:00:00"), ".jpg");
    page_->search();
    page_->search();
    page_.reset();
}

void tst_StoredFilesPage::showsInFolder() {
    const QString path = add("A", "Capture", today("10:00:00"), ".jpg");
    show();
    UrlTaker desktop;
    clickRow(0);
    QTest::keyClick(&table(), Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(desktop.taken, QList<QUrl>{QUrl::fromLocalFile(QFileInfo(path).path())});
    QVERIFY(QDir(drive_).removeRecursively());
    press("fileFolder");
    QCOMPARE(desktop.taken.size(), 1);
    QVERIFY(info().contains(QStringLiteral("文件夹已不存在")));
}

void tst_StoredFilesPage::handsRecordingsOut() {
    const QString gone = add("A", "LocalRecord", today("10:00:00"), ".avi");
    const QString kept = add("B", "DeviceRecord", today("11:00:00"), ".mp4");
    add("B", "Capture", today("12:00:00"), ".jpg");
    show();
    QSignalSpy plays(page_.get(), &StoredFilesPage::sigPlay);
    clickRow(2, Qt::NoModifier, true);
    QCOMPARE(plays.size(), 1);
    QCOMPARE(plays[0][0].value<QVector<storage::FileRecord>>().at(0).path, gone);
    QVERIFY(QFile::remove(gone));
    QTest::keyClick(&table(), Qt::Key_Return);
    QCOMPARE(plays.size(), 1);
    QVERIFY(info().contains(QStringLiteral("文件已不存在")));
    table().selectAll();
    table().selectionModel()->setCurrentIndex(table().model()->index(1, 0), QItemSelectionModel::NoUpdate);
    QTest::keyClick(&table(), Qt::Key_Enter);
    QCOMPARE(plays.size(), 2); // of the three those that can be played
    const auto files = plays[1][0].value<QVector<storage::FileRecord>>();
    QCOMPARE(files.size(), 1);
    QCOMPARE(files[0].path, kept);
}

void tst_StoredFilesPage::menuByKeyboard() {
    const QString path = add("A", "Capture", today("10:00:00"), ".jpg");
    show();
    clickRow(0);
    QTimer::singleShot(0, this, [] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu != nullptr);
        for (const auto key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return})
            QTest::keyClick(menu, key);
    });
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(10, 10), table().mapToGlobal(QPoint(10, 10)));
    QCoreApplication::sendEvent(table().viewport(), &event);
    QCOMPARE(QApplication::clipboard()->text(), path);
}

void tst_StoredFilesPage::drives() {
    const QString away = QStringLiteral("/no/such/disk/");
    manager_->context().settings.set(keys::Drives, QStringList{drive_, away});
    show();
    const auto bars = page_->findChildren<DriveBar*>();
    QCOMPARE(bars.size(), 2);
    QVERIFY(bars[0]->accessibleName().contains(QStringLiteral("可用")));
    QVERIFY(bars[0]->toolTip().contains(QStringLiteral("128.0")));
    QVERIFY(bars[1]->accessibleName().contains(QStringLiteral("不可用")));
    manager_->context().settings.set(keys::Drives, QStringList{drive_});
    page_->findChild<DriveBars*>()->refresh();
    QCOMPARE(page_->findChildren<DriveBar*>().size(), 1);
    QVERIFY(QDir(drive_).removeRecursively());
    page_->findChild<DriveBars*>()->refresh();
    QVERIFY(page_->findChild<DriveBar*>()->accessibleName().contains(QStringLiteral("不可用")));
}

void tst_StoredFilesPage::everyControlHasNames() {
    show();
    const auto widgets = page_->findChildren<QWidget*>();
    for (QWidget* const widget : widgets) {
        const bool isControl = qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) ||
                               qobject_cast<QAbstractSpinBox*>(widget) || qobject_cast<QAbstractItemView*>(widget) ||
                               qobject_cast<QTabBar*>(widget) || qobject_cast<DayTimeline*>(widget);
        const bool isInner = widget->objectName().startsWith(QStringLiteral("qt_")) ||
                             qobject_cast<QHeaderView*>(widget) || qobject_cast<QTabBar*>(widget->parentWidget()) ||
                             widget->inherits("QTableCornerButton") || widget->inherits("QComboBoxListView");
        if (!isControl || isInner)
            continue;
        QVERIFY2(!widget->objectName().isEmpty(), widget->metaObject()->className());
        QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
    }
}

// Beside the device tree in the smallest window this is what is left.
void tst_StoredFilesPage::fitsTheSmallestWindow() {
    for (int second = 10; second < 60; ++second)
        add("A", "Capture", today("10:00:00").addSecs(second), ".jpg", 0);
    page_->resize(456, 300);
    show();
    part<QComboBox>("fileRange").setCurrentIndex(3);
    showTimeline();
    QCOMPARE(page_->size(), QSize(456, 300));
    for (const char* const name : {"fileDevices", "fileKinds", "fileRange", "fileSearch", "startTime",
                                   "endTimeCalendar", "fileTabs", "previousDay", "fileDay", "nextDay", "fileOpen",
                                   "fileFolder", "fileCopy", "fileDelete", "fileThumbnails"}) {
        const auto& widget = part<QWidget>(name);
        const QRect place(widget.mapTo(page_.get(), QPoint()), widget.size());
        QVERIFY2(page_->rect().contains(place), name);
        QVERIFY2(widget.width() >= std::min(widget.minimumSizeHint().width(), 64), name);
    }
    QVERIFY(timeline().viewport()->height() >= 24 + 28);
    part<QTabBar>("fileTabs").setCurrentIndex(0);
    QVERIFY(table().viewport()->height() > 3 * 28);
}

QTEST_MAIN(tst_StoredFilesPage)
#include "tst_StoredFilesPage.moc"
