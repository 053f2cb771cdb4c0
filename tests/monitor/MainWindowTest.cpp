#include "monitor/MainWindowTest.h"

#include "base/JsonText.h"
#include "base/ui/Style.h"
#include "monitor/ui/DevicePanel.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "video/ui/ItemVideo.h"

#include <QLabel>
#include <QtTest>

void MainWindowTest::initTestCase() {
    corvanta::applyStyle();
}

void MainWindowTest::init() {
    sdk_.reset();
    sdk_.setDocument(R"({"type":"phoneid"})", R"({"phoneid":"13800138000"})");
    dir_ = std::make_unique<QTemporaryDir>();
    start();
    if (!QTest::currentTestFailed())
        window_->grid().setLayout(2, 2, false);
}

void MainWindowTest::cleanup() {
    frame_.reset();
    manager_.reset();
}

void MainWindowTest::start() {
    manager_ = std::make_unique<AppManager>(AppPaths(dir_->path()), ui_, *ipncsdk::ZELIPNCSDK::GetInstance());
    frame_ = std::make_unique<MoveWidget>();
    window_ = new MonitorMainUI(manager_->context(), manager_->storage());
    frame_->setContent(window_, QSize(MonitorMainUI::SmallestWidth, MonitorMainUI::SmallestHeight), QString());
    window_->placeFrame();
    frame_->show();
    QVERIFY(QTest::qWaitForWindowExposed(frame_.get()));
    sendList(deviceList());
    QTRY_VERIFY(!tree().isEmpty());
}

void MainWindowTest::stop() {
    window_->closeWithoutAsking();
    frame_.reset();
    manager_.reset();
}

void MainWindowTest::sendList(const char* list) {
    sdk_.setDocument(R"({"type":"ipnclist"})", list);
    sdk_.sendToClient(R"({"type":"freshlist"})");
}

DeviceTree& MainWindowTest::tree() const {
    return window_->devicePanel().tree();
}

ItemVideo& MainWindowTest::tile(int index) const {
    return *window_->grid().tile(index);
}

QString MainWindowTest::message() const {
    return window_->findChild<QLabel*>(QStringLiteral("messageLabel"))->text();
}

QModelIndex MainWindowTest::treeIndex(const QString& text) const {
    for (int group = 0; group < tree().model()->rowCount(); ++group) {
        const QModelIndex parent = tree().model()->index(group, 0);
        if (parent.data().toString().startsWith(text + QStringLiteral("  ")))
            return parent;
        for (int row = 0; row < tree().model()->rowCount(parent); ++row) {
            const QModelIndex index = tree().model()->index(row, 0, parent);
            if (index.data().toString() == text)
                return index;
        }
    }
    return {};
}

void MainWindowTest::openByDoubleClick(const QString& name) {
    const QPoint place = tree().visualRect(treeIndex(name)).center();
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(tree().viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

std::vector<FakeSdk::Request> MainWindowTest::requests() const {
    std::vector<FakeSdk::Request> result;
    for (const FakeSdk::Request& request : sdk_.requests()) {
        const QVariantMap asked = corvanta::json::parseObject(request.json).value(QStringLiteral("urlreq")).toMap();
        if (asked.value(QStringLiteral("reqtype")) != QStringLiteral("downhead"))
            result.push_back(request);
    }
    return result;
}

QVariantMap MainWindowTest::lastRequest() const {
    return corvanta::json::parseObject(requests().back().json);
}

QVariantMap MainWindowTest::lastOpenRequest() const {
    return lastRequest().value(QStringLiteral("avreq")).toMap();
}

std::vector<int> MainWindowTest::openRequestsOf(const QString& ipncId) const {
    std::vector<int> result;
    for (const FakeSdk::Request& request : requests()) {
        const QVariantMap wanted = corvanta::json::parseObject(request.json).value(QStringLiteral("avreq")).toMap();
        if (wanted.value(QStringLiteral("ipncid")).toString() == ipncId)
            result.push_back(request.id);
    }
    return result;
}

void MainWindowTest::sendPicture(int id, int width, int height) {
    picture_.assign(static_cast<std::size_t>(width * height * 3 / 2), 128);
    report(id, ("\"type\":\"decodevideodata\",\"data\":" +
                std::to_string(reinterpret_cast<std::intptr_t>(picture_.data())) + ",\"w\":" + std::to_string(width) +
                ",\"h\":" + std::to_string(height))
                   .c_str());
}

int MainWindowTest::openAndRun(const QString& ipncId) {
    const int index = manager_->context().devices.device(ipncId)->tileIndex;
    if (!window_->grid().isIndexShown(index))
        window_->grid().setLayout(3, 3, false);
    window_->live().open(ipncId);
    const int id = lastId();
    report(id, R"("type":"avopen","contype":"LOOP","avparam":{"framerate":25,"weidth":64,"height":36,"hd":false})");
    [this, index, id] {
        QTRY_COMPARE(tile(index).requestId(), id);
    }();
    return id;
}
