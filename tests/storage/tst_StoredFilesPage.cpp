#include "app/AppManager.h"
#include "base/DataTree.h"
#include "base/JsonText.h"
#include "base/ui/Style.h"
#include "platform/RawFile.h"
#include "storage/RecordingStorage.h"
#include "storage/ui/CheckListBox.h"
#include "storage/ui/DayTimeline.h"
#include "storage/ui/DriveBars.h"
#include "storage/ui/FileTableView.h"
#include "storage/ui/PictureView.h"
#include "storage/ui/PictureViewer.h"
#include "storage/ui/StoredFilesPage.h"
#include "storage/ui/ThumbnailStrip.h"
#include "storage/ui/TimelinePane.h"
#include "support/FakeSdk.h"
#include "support/RecordingUi.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QClipboard>
#include <QDateEdit>
#include <QDesktopServices>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTabBar>
#include <QTemporaryDir>
#include <QToolButton>
#include <QUrl>
#include <QtTest>

#include <filesystem>

namespace keys = corvanta::keys;
namespace storage = corvanta::storage;
using corvanta::platform::RawFile;

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

/// The page of stored files over a real data tree, driven as an operator does.
class tst_StoredFilesPage final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { qApp->setStyleSheet(corvanta::loadStyle()); }
    void init();
    void cleanup();
    void firstVisitShowsToday();
    void nothingFound();
    void choices_data();
    void choices();
    void devicesToChooseFrom();
    void searchShowsProgress();
    void searchIsCancelled();
    void changedChoiceDropsTheSearch();
    void destroyedWhileSearching();
    void sorts_data();
    void sorts();
    void widthsAreRemembered();
    void deletes_data();
    void deletes();
    void deletesWhatVanished();
    void oneThatIsWrittenStays();
    void hostileNames();
    void copiesPaths();
    void showsInFolder();
    void handsRecordingsOut();
    void menuByKeyboard();
    void manyRows();
    void timelineShowsDays();
    void timelineByKeyboard();
    void timelineByMouse();
    void thumbnails();
    void viewerLeafs();
    void viewerOfWhatVanished();
    void viewerZooms();
    void drives();
    void everyControlHasNames();
    void fitsTheSmallestWindow();

private:
    static QDateTime today(const char* time) {
        return QDateTime(QDate::currentDate(), QTime::fromString(QLatin1String(time), QStringLiteral("hh:mm:ss")));
    }
    QString folder(const QString& id, const char* kind, const QDateTime& time) const {
        return QStringLiteral("%1ZEL/%2/%3/%4/")
            .arg(drive_, id, QLatin1String(kind), time.toString(QStringLiteral("yyyy-MM-dd")));
    }
    /// Writes a stored file, a picture where it is one; its path.
    QString add(const QString& id, const char* kind, const QDateTime& time, const char* rest, int bytes = 10) const;
    void show();
    void search();
    /// The page has the keys, as it has again by itself where a window manager is.
    void activate();
    static bool takeKeys(QWidget& window);
    template <typename T>
    T& part(const char* name) const {
        return *page_->findChild<T*>(QLatin1String(name));
    }
    void press(const char* name) {
        auto& button = part<QAbstractButton>(name);
        QVERIFY2(button.isVisible() && button.isEnabled(), name);
        QTest::mouseClick(&button, Qt::LeftButton);
    }
    /// Ticks an entry of a list of choices, by mouse.
    void tick(const char* name, const QString& text);
    QStringList column(int number) const;
    FileTableView& table() const { return page_->table(); }
    DayTimeline& timeline() const { return page_->timeline().timeline(); }
    void clickRow(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier, bool isDouble = false);
    void clickHeader(int column);
    QString info() const { return part<QLabel>("filesInfo").text(); }
    /// Deals with the next modal window.
    void answer(std::function<void(QWidget*)> act);
    void showTimeline();

    FakeSdk& sdk_ = FakeSdk::instance();
    RecordingUi ui_;
    std::unique_ptr<QTemporaryDir> dir_;
    QString drive_;
    std::unique_ptr<AppManager> manager_;
    std::unique_ptr<StoredFilesPage> page_;
    bool answered_ = false;
};

void tst_StoredFilesPage::init() {
    sdk_.reset();
    dir_ = std::make_unique<QTemporaryDir>();
    drive_ = dir_->filePath(QStringLiteral("disk/"));
    {
        const AppPaths paths(dir_->path());
        Settings settings(paths.settingsFile());
        settings.load();
        settings.set(keys::DriveFolders, QStringList{drive_});
        settings.save();
    }
    sdk_.setDocument(R"({"type":"phoneid"})", R"({"phoneid":"13800138000"})");
    sdk_.setDocument(R"({"type":"ipnclist"})", R"({"ipnclist":[
        {"ipncid":"A","type":"video","nickname":"大门","online":true,"groupid":"1"},
        {"ipncid":"B","type":"video","nickname":"走廊 2","online":true,"groupid":"1"}],
        "group":[{"id":"1","name":"一组","ipncs":["A","B"]}]})");
    manager_ = std::make_unique<AppManager>(AppPaths(dir_->path()), ui_, *ipncsdk::ZELIPNCSDK::GetInstance());
    sdk_.sendToClient(R"({"type":"freshlist"})");
    QTRY_COMPARE(manager_->context().devices.ipncIds().size(), 2);
    page_ = std::make_unique<StoredFilesPage>(manager_->context(), manager_->storage());
    page_->resize(900, 560);
}

void tst_StoredFilesPage::cleanup() {
    page_.reset();
    manager_.reset();
}

QString tst_StoredFilesPage::add(const QString& id, const char* kind, const QDateTime& time, const char* rest,
                                 int bytes) const {
    const QString path =
        folder(id, kind, time) + time.toString(QStringLiteral("yyyyMMddhhmmss")) + QString::fromUtf8(rest);
    bool isWritten = QDir().mkpath(QFileInfo(path).path());
    if (bytes == 0) { // a real picture, its colour by its time
        QImage image(320, 180, QImage::Format_RGB32);
        image.fill(QColor::fromHsv(20 + 5 * time.time().minute(), 200, 200));
        isWritten = isWritten && image.save(path, "JPG");
    } else {
        QFile file(path);
        isWritten = isWritten && file.open(QIODevice::WriteOnly) && file.write(QByteArray(bytes, 'x')) == bytes;
    }
    QTest::qVerify(isWritten, "written", qPrintable(path), __FILE__, __LINE__);
    return path;
}

void tst_StoredFilesPage::show() {
    QSignalSpy results(page_.get(), &StoredFilesPage::sigResult);
    page_->show();
    QVERIFY(QTest::qWaitForWindowExposed(page_.get()));
    activate();
    QTRY_COMPARE(results.size(), 1);
}

void tst_StoredFilesPage::activate() {
    QTRY_VERIFY(takeKeys(*page_));
}

bool tst_StoredFilesPage::takeKeys(QWidget& window) {
    // Without a window manager a wish may be lost when windows come and go, so it is said again.
    if (!window.isActiveWindow())
        window.activateWindow();
    return window.isActiveWindow();
}

void tst_StoredFilesPage::search() {
    QSignalSpy results(page_.get(), &StoredFilesPage::sigResult);
    press("fileSearch");
    QTRY_COMPARE(results.size(), 1);
}

void tst_StoredFilesPage::tick(const char* name, const QString& text) {
    auto& box = part<CheckListBox>(name);
    QTest::mouseClick(&box, Qt::LeftButton);
    auto* const list = QApplication::activePopupWidget()->findChild<QListView*>();
    for (int row = 0; row < list->model()->rowCount(); ++row) {
        const QModelIndex index = list->model()->index(row, 0);
        if (index.data().toString() == text) {
            list->scrollTo(index);
            QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, list->visualRect(index).center());
            QTest::keyClick(list, Qt::Key_Escape);
            QTRY_VERIFY(QApplication::activePopupWidget() == nullptr);
            return;
        }
    }
    QFAIL(qPrintable(text));
}

QStringList tst_StoredFilesPage::column(int number) const {
    QStringList result;
    for (int row = 0; row < table().model()->rowCount(); ++row)
        result += table().model()->index(row, number).data().toString();
    return result;
}

void tst_StoredFilesPage::clickRow(int row, Qt::KeyboardModifiers modifiers, bool isDouble) {
    const QPoint place = table().visualRect(table().model()->index(row, 0)).center();
    QTest::mouseClick(table().viewport(), Qt::LeftButton, modifiers, place);
    if (isDouble)
        QTest::mouseDClick(table().viewport(), Qt::LeftButton, modifiers, place);
}

void tst_StoredFilesPage::clickHeader(int column) {
    QHeaderView& header = *table().horizontalHeader();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(header.sectionViewportPosition(column) + 20, header.height() / 2));
}

void tst_StoredFilesPage::answer(std::function<void(QWidget*)> act) {
    answered_ = false;
    auto* const timer = new QTimer(page_.get());
    connect(timer, &QTimer::timeout, this, [this, timer, act = std::move(act)] {
        QWidget* const modal = QApplication::activeModalWidget();
        const QWidget* const focused = QApplication::focusWidget();
        if (modal == nullptr || !takeKeys(*modal) || focused == nullptr || !modal->isAncestorOf(focused))
            return;
        timer->stop();
        timer->deleteLater();
        answered_ = true;
        act(modal);
    });
    timer->start(5);
}

void tst_StoredFilesPage::showTimeline() {
    auto& tabs = part<QTabBar>("fileTabs");
    QTest::mouseClick(&tabs, Qt::LeftButton, Qt::NoModifier, tabs.tabRect(1).center());
    QTRY_VERIFY(page_->timeline().isVisible());
}

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

void tst_StoredFilesPage::searchShowsProgress() {
    show();
    page_->search();
    QVERIFY(part<QProgressBar>("filesProgress").isVisible());
    QVERIFY(part<QPushButton>("filesCancel").isVisible());
    QVERIFY(info().contains(QStringLiteral("文件夹")));
    QCOMPARE(part<QPushButton>("fileSearch").text(), QStringLiteral("停止"));
    QTRY_VERIFY(!page_->isSearching());
    QVERIFY(!part<QProgressBar>("filesProgress").isVisible());
    QCOMPARE(part<QPushButton>("fileSearch").text(), QStringLiteral("查找"));
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

void tst_StoredFilesPage::sorts_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<QStringList>("first"); ///< the files' sizes as they come after one click
    QTest::newRow("time") << int(FileTableModel::TimeColumn) << QStringList{"1 B", "30 B", "2 B"};
    QTest::newRow("device") << int(FileTableModel::DeviceColumn) << QStringList{"30 B", "1 B", "2 B"};
    QTest::newRow("kind") << int(FileTableModel::KindColumn) << QStringList{"2 B", "1 B", "30 B"};
    QTest::newRow("size") << int(FileTableModel::SizeColumn) << QStringList{"1 B", "2 B", "30 B"};
}

void tst_StoredFilesPage::sorts() {
    QFETCH(int, column);
    QFETCH(QStringList, first);
    add("B", "Image", today("10:00:00"), ".jpg", 1);
    add("A", "LocalRecord", today("11:00:00"), ".avi", 30);
    add("走", "Capture", today("12:00:00"), ".jpg", 2);
    show();
    clickRow(1);
    const QString current = table().currentIndex().data().toString();
    clickHeader(column);
    if (column == FileTableModel::DeviceColumn)
        QCOMPARE(this->column(column), (QStringList{"大门", "走", "走廊 2"}));
    else
        QCOMPARE(this->column(FileTableModel::SizeColumn), first);
    // Who had chosen a file still has it.
    QCOMPARE(table().model()->index(table().currentIndex().row(), 0).data().toString(), current);
    const QStringList ascending = this->column(FileTableModel::SizeColumn);
    clickHeader(column);
    QStringList descending = this->column(FileTableModel::SizeColumn);
    std::reverse(descending.begin(), descending.end());
    QCOMPARE(descending, ascending);
}

void tst_StoredFilesPage::widthsAreRemembered() {
    add("A", "Capture", today("10:00:00"), ".jpg");
    show();
    table().horizontalHeader()->resizeSection(FileTableModel::NameColumn, 333);
    page_ = std::make_unique<StoredFilesPage>(manager_->context(), manager_->storage());
    QCOMPARE(table().columnWidth(FileTableModel::NameColumn), 333);
}

void tst_StoredFilesPage::deletes_data() {
    QTest::addColumn<bool>("yes");
    QTest::addColumn<bool>("byKey");
    QTest::addColumn<int>("rows");
    QTest::newRow("one, agreed") << true << false << 1;
    QTest::newRow("one, not agreed") << false << true << 1;
    QTest::newRow("two, agreed") << true << true << 2;
    QTest::newRow("two, not agreed") << false << false << 2;
}

void tst_StoredFilesPage::deletes() {
    QFETCH(bool, yes);
    QFETCH(bool, byKey);
    QFETCH(int, rows);
    QStringList paths;
    for (const char* const time : {"10:00:00", "11:00:00", "12:00:00"})
        paths.prepend(add("A", "Capture", today(time), ".jpg"));
    show();
    clickRow(0);
    if (rows == 2)
        clickRow(1, Qt::ControlModifier);
    QString question;
    answer([&question, yes](QWidget* dialog) {
        question = dialog->findChild<QLabel*>(QStringLiteral("tipText"))->text();
        if (yes)
            dialog->findChild<QAbstractButton*>(QStringLiteral("tipOk"))->click();
        else
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); // the answer that harms nothing
    });
    if (byKey)
        QTest::keyClick(&table(), Qt::Key_Delete);
    else
        press("fileDelete");
    QVERIFY(answered_);
    QVERIFY(question.contains(rows == 1 ? QFileInfo(paths[0]).fileName() : QStringLiteral("2 个文件")));
    QTRY_COMPARE(column(0).size(), yes ? 3 - rows : 3);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(QFileInfo::exists(paths[i]), !yes || i >= rows);
    QVERIFY(!part<QProgressBar>("filesProgress").isVisible());
    if (yes)
        QVERIFY(info().contains(QStringLiteral("已删除 %1").arg(rows)));
}

void tst_StoredFilesPage::deletesWhatVanished() {
    const QString path = add("A", "Capture", today("10:00:00"), ".jpg");
    show();
    clickRow(0);
    QVERIFY(QFile::remove(path));
    answer([](QWidget* dialog) { dialog->findChild<QAbstractButton*>(QStringLiteral("tipOk"))->click(); });
    press("fileDelete");
    QTRY_COMPARE(column(0).size(), 0);
    QVERIFY(part<QLabel>("filesEmpty").isVisible());
}

void tst_StoredFilesPage::oneThatIsWrittenStays() {
    const QString path = add("A", "LocalRecord", today("10:00:00"), ".avi");
    add("A", "LocalRecord", today("11:00:00"), ".avi");
    const auto writer = RawFile::open(std::filesystem::path(path.toStdU16String()), RawFile::Access::Update);
    QVERIFY(writer != nullptr);
    show();
    table().selectAll();
    QString said;
    answer([this, &said](QWidget* dialog) {
        answer([&said](QWidget* tip) {
            said = tip->findChild<QLabel*>(QStringLiteral("tipText"))->text();
            static_cast<QDialog*>(tip)->accept();
        });
        dialog->findChild<QAbstractButton*>(QStringLiteral("tipOk"))->click();
    });
    press("fileDelete");
    QTRY_VERIFY(!said.isEmpty());
    QVERIFY(said.contains(QStringLiteral("正在写入")));
    QVERIFY(QFileInfo::exists(path));
    QCOMPARE(column(0).size(), 1);
}

void tst_StoredFilesPage::hostileNames() {
    const QString id = QStringLiteral("<img src=x> %1 %2");
    const QString path = add(id, "Capture", today("10:00:00"), "<b>%1\n\u202Egnp.exe.jpg", 0);
    show();
    const QString name = column(FileTableModel::NameColumn).value(0);
    QVERIFY(name.contains(QStringLiteral("<b>%1")));
    QVERIFY(!name.contains('\n') && !name.contains(QChar(0x202e)));
    QCOMPARE(column(FileTableModel::DeviceColumn), QStringList{id});
    const auto tip = table().model()->index(0, FileTableModel::NameColumn).data(Qt::ToolTipRole).toString();
    QVERIFY(!tip.contains(QStringLiteral("<b>%1")) && tip.contains(QStringLiteral("&lt;b&gt;")));
    clickRow(0);
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), path);
    answer([](QWidget* dialog) {
        const auto& text = *dialog->findChild<QLabel*>(QStringLiteral("pictureText"));
        QCOMPARE(text.textFormat(), Qt::PlainText);
        QVERIFY(text.text().contains(QStringLiteral("<img src=x> %1 %2")));
        static_cast<QDialog*>(dialog)->reject();
    });
    QTest::keyClick(&table(), Qt::Key_Return);
    QVERIFY(answered_);
    activate();
    answer([](QWidget* dialog) {
        QVERIFY(!dialog->findChild<QLabel*>(QStringLiteral("tipText"))->text().contains("%1\n\u202E"));
        dialog->findChild<QAbstractButton*>(QStringLiteral("tipOk"))->click();
    });
    QTest::keyClick(&table(), Qt::Key_Delete);
    QTRY_VERIFY(!QFileInfo::exists(path));
}

void tst_StoredFilesPage::copiesPaths() {
    const QString one = add("A", "Capture", today("10:00:00"), ".jpg");
    const QString two = add("A", "Capture", today("11:00:00"), ".jpg");
    show();
    table().setFocus();
    QTest::keyClick(&table(), Qt::Key_A, Qt::ControlModifier);
    press("fileCopy");
    QCOMPARE(QApplication::clipboard()->text(), two + '\n' + one);
    QVERIFY(info().contains(QStringLiteral("2")));
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

void tst_StoredFilesPage::manyRows() {
    constexpr int Rows = 200000;
    std::vector<storage::FileRecord> records;
    const QDateTime begin(QDate(2024, 3, 5), QTime(0, 0));
    for (int i = 0; i < Rows; ++i) {
        storage::FileRecord record;
        record.time = begin.addSecs((i * 7919LL) % Rows);
        record.name = record.time.toString(QStringLiteral("yyyyMMddhhmmss")) + QStringLiteral(".jpg");
        record.path = QStringLiteral("/d/") + record.name;
        record.size = (i * 104729LL) % 1000003;
        record.kind = corvanta::dataTree::kindsByDay()[i % 2];
        record.ipncid = QString::number(i % 64);
        records.push_back(record);
    }
    FileTableView view([](const QString& id) { return id; });
    view.resize(600, 400);
    view.show(std::make_shared<const storage::FoundFiles>(std::move(records)));
    QCOMPARE(view.model()->rowCount(), Rows);
    for (int column = 0; column < FileTableModel::ColumnCount; ++column) {
        for (const auto order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
            view.sortByColumn(column, order);
            QCOMPARE(view.model()->rowCount(), Rows);
            std::vector<bool> seen(Rows, false);
            for (int row = 0; row < Rows; ++row)
                seen[std::size_t(view.files().fileOf(row))] = true;
            QVERIFY(std::all_of(seen.begin(), seen.end(), [](bool is) { return is; }));
            QCOMPARE(view.files().rowOf(view.files().fileOf(12345)), 12345);
        }
    }
    view.selectAll();
    QCOMPARE(view.selectedFiles().size(), std::size_t(Rows));
}

void tst_StoredFilesPage::timelineShowsDays() {
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

void tst_StoredFilesPage::timelineByKeyboard() {
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

void tst_StoredFilesPage::timelineByMouse() {
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

void tst_StoredFilesPage::thumbnails() {
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

void tst_StoredFilesPage::viewerLeafs() {
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

void tst_StoredFilesPage::viewerOfWhatVanished() {
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

void tst_StoredFilesPage::viewerZooms() {
    PictureView view;
    view.resize(160, 160);
    view.show(QImage(320, 180, QImage::Format_RGB32), QString());
    QVERIFY(view.fits());
    QCOMPARE(view.factor(), 0.5);
    view.showOriginal();
    QCOMPARE(view.factor(), 1.0);
    for (int i = 0; i < 100; ++i)
        view.zoom(1.25);
    QCOMPARE(view.factor(), 16.0);
    for (int i = 0; i < 100; ++i)
        view.zoom(0.8);
    QCOMPARE(view.factor(), 1.0 / 16);
    QTest::mouseDClick(&view, Qt::LeftButton);
    QVERIFY(view.fits());
    view.resize(640, 640); // never larger than it is
    QCOMPARE(view.factor(), 1.0);
    view.show(QImage(), QStringLiteral("x"));
    view.zoom(2);
    QVERIFY(view.fits());
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
