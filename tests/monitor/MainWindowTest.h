#pragma once

#include "app/AppManager.h"
#include "base/ui/MoveWidget.h"
#include "monitor/ui/MonitorMainUI.h"
#include "support/FakeSdk.h"
#include "support/RecordingUi.h"

#include <QModelIndex>
#include <QObject>
#include <QTemporaryDir>

#include <memory>
#include <vector>

class DeviceTree;
class ItemVideo;

/// What the tests of the main window share: a window in its frame over the scripted SDK, signed in.
class MainWindowTest : public QObject {
    Q_OBJECT
protected:
    /// What "ipnclist" answers: {"ipnclist": [...], "group": [...]}.
    virtual const char* deviceList() const = 0;

    /// Makes the window, as a start of the program does; the settings are those of the last one in this test.
    void start();
    /// Ends the program as the operator does.
    void stop();
    /// Hands the list to the program once more.
    void sendList(const char* list);

    DeviceTree& tree() const;
    ItemVideo& tile(int index) const;
    QString message() const;
    QModelIndex treeIndex(const QString& text) const;
    void openByDoubleClick(const QString& name);
    /// What was asked of the SDK, but for the account's picture, which comes when it comes.
    std::vector<FakeSdk::Request> requests() const;
    /// The last of them, as sent.
    QVariantMap lastRequest() const;
    QVariantMap lastOpenRequest() const;
    int lastId() const { return requests().back().id; }
    /// The id of the open-video requests sent for a device, in their order.
    std::vector<int> openRequestsOf(const QString& ipncId) const;
    void report(int id, const char* rest) { sdk_.respond(id, "{\"reqid\":" + std::to_string(id) + "," + rest + "}"); }
    void sendPicture(int id, int width, int height);
    /// Opens a device and lets the SDK say that it runs; its request's id.
    int openAndRun(const QString& ipncId);

    FakeSdk& sdk_ = FakeSdk::instance();
    RecordingUi ui_;
    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<AppManager> manager_;
    std::unique_ptr<MoveWidget> frame_;
    MonitorMainUI* window_ = nullptr;
    std::vector<uchar> picture_;

private slots:
    void initTestCase();
    void init();
    void cleanup();
};
