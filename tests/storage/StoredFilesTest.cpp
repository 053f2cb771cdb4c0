#include "storage/StoredFilesTest.h"

#include "base/ui/Style.h"
#include "storage/RecordingStorage.h"
#include "storage/ui/CheckListBox.h"

#include <QApplication>
#include <QHeaderView>
#include <QImage>
#include <QListView>
#include <QTabBar>
#include <QTimer>

#include <ipncsdk/ZELIPNCSDK.h>

namespace keys = corvanta::keys;

void StoredFilesTest::initTestCase() {
    corvanta::applyStyle();
}

void StoredFilesTest::init() {
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

void StoredFilesTest::cleanup() {
    page_.reset();
    manager_.reset();
}

QString StoredFilesTest::add(const QString& id, const char* kind, const QDateTime& time, const char* rest,
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

void StoredFilesTest::show() {
    QSignalSpy results(page_.get(), &StoredFilesPage::sigResult);
    page_->show();
    QVERIFY(QTest::qWaitForWindowExposed(page_.get()));
    activate();
    QTRY_COMPARE(results.size(), 1);
}

void StoredFilesTest::activate() {
    QTRY_VERIFY(takeKeys(*page_));
}

bool StoredFilesTest::takeKeys(QWidget& window) {
    // Without a window manager a wish may be lost when windows come and go, so it is said again.
    if (!window.isActiveWindow())
        window.activateWindow();
    return window.isActiveWindow();
}

void StoredFilesTest::search() {
    QSignalSpy results(page_.get(), &StoredFilesPage::sigResult);
    press("fileSearch");
    QTRY_COMPARE(results.size(), 1);
}

void StoredFilesTest::tick(const char* name, const QString& text) {
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

QStringList StoredFilesTest::column(int number) const {
    QStringList result;
    for (int row = 0; row < table().model()->rowCount(); ++row)
        result += table().model()->index(row, number).data().toString();
    return result;
}

void StoredFilesTest::clickRow(int row, Qt::KeyboardModifiers modifiers, bool isDouble) {
    const QPoint place = table().visualRect(table().model()->index(row, 0)).center();
    QTest::mouseClick(table().viewport(), Qt::LeftButton, modifiers, place);
    if (isDouble)
        QTest::mouseDClick(table().viewport(), Qt::LeftButton, modifiers, place);
}

void StoredFilesTest::clickHeader(int column) {
    QHeaderView& header = *table().horizontalHeader();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(header.sectionViewportPosition(column) + 20, header.height() / 2));
}

void StoredFilesTest::answer(std::function<void(QWidget*)> act) {
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

void StoredFilesTest::showTimeline() {
    auto& tabs = part<QTabBar>("fileTabs");
    QTest::mouseClick(&tabs, Qt::LeftButton, Qt::NoModifier, tabs.tabRect(1).center());
    QTRY_VERIFY(page_->timeline().isVisible());
}

void StoredFilesTest::press(const char* name) {
    auto& button = part<QAbstractButton>(name);
    QVERIFY2(button.isVisible() && button.isEnabled(), name);
    QTest::mouseClick(&button, Qt::LeftButton);
}
