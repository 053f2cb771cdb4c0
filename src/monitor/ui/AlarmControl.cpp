#include "monitor/ui/AlarmControl.h"

#include "base/DataTree.h"
#include "linkage/AlarmInbox.h"
#include "linkage/ui/AlarmCenterPage.h"
#include "monitor/Archive.h"
#include "storage/RecordingStorage.h"
#include "storage/SearchDiskThread.h"

namespace dataTree = corvanta::dataTree;
using corvanta::linkage::AlarmInbox;

namespace {
// A recording is named after its begin and is an hour long at most when it is packed as usual.
constexpr int SearchSeconds = 2 * 60 * 60;
constexpr int BeforeAlarm = 5; // s; what led to it is seen
} // namespace

AlarmControl::AlarmControl(const AppContext& context, RecordingStorage& storage, QObject* parent)
    : QObject(parent)
    , context_(context)
    , storage_(storage) {
    connect(&context_.alarms, &AlarmInbox::sigChanged, this, [this] { emit sigCount(context_.alarms.count()); });
}

AlarmControl::~AlarmControl() = default;

AlarmCenterPage* AlarmControl::makePage(QWidget* parent) {
    auto* const page = new AlarmCenterPage(context_, storage_, parent);
    connect(page, &AlarmCenterPage::sigLive, this, &AlarmControl::sigLive);
    connect(page, &AlarmCenterPage::sigPlayback, this, &AlarmControl::play);
    return page;
}

void AlarmControl::play(const QString& ipncId, const QDateTime& time) {
    corvanta::storage::FileQuery query;
    query.start = time.addSecs(-SearchSeconds);
    query.end = time.addSecs(SearchSeconds);
    query.kinds = QStringList{dataTree::LocalRecord, dataTree::DeviceRecord};
    query.devices = QStringList{ipncId};
    search_ = std::make_unique<SearchDiskThread>(storage_.searchedDrives(), query);
    connect(search_.get(), &SearchDiskThread::sigResult, this, [this, time] { onFound(time); });
    search_->start();
}

void AlarmControl::onFound(const QDateTime& time) {
    QVector<corvanta::storage::FileRecord> files;
    for (corvanta::storage::FileRecord& file : search_->takeResult())
        files += std::move(file);
    const auto cameras = corvanta::archive::camerasOf(files, context_.devices);
    if (cameras.isEmpty())
        emit sigMessage(tr("没有该时间的录像"));
    else
        emit sigPlayback(cameras, time.addSecs(-BeforeAlarm));
}
