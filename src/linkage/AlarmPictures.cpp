#include "linkage/AlarmPictures.h"

#include "base/DataTree.h"
#include "linkage/AlarmInbox.h"
#include "storage/StoredFiles.h"

#include <QDebug>
#include <QFileInfo>

#include <algorithm>

namespace corvanta::linkage {
namespace {

constexpr int SecondsBefore = 1;
constexpr int SecondsAfter = 15; // until the picture is there

/// Where a file of this name lies; empty when it lies nowhere. The name comes from outside.
QString find(const QString& name, const OpenAlarm& alarm, const QStringList& drives) {
    const auto time = storage::timeFromName(name);
    const auto component = dataTree::pathComponent(name);
    if (!time || !component || !name.endsWith(QLatin1String(".jpg"))) {
        qDebug() << "no name of a picture" << name.left(100);
        return {};
    }
    const QString day = time->toString(dataTree::DayFormat);
    for (const QString& drive : drives) {
        const auto folder = dataTree::folder(drive, dataTree::Image, alarm.ipncId, day);
        if (folder && QFileInfo(*folder + *component).isFile())
            return *folder + *component;
    }
    return {};
}

} // namespace

QStringList picturesOf(const OpenAlarm& alarm, const QStringList& drives) {
    QStringList result;
    for (auto it = alarm.images.rbegin(); it != alarm.images.rend(); ++it) {
        const QString path = it->endsWith(QLatin1String(".avi")) ? QString() : find(*it, alarm, drives);
        if (!path.isEmpty() && !result.contains(path))
            result += path;
    }
    const QDateTime time = QDateTime::fromString(alarm.lastTime, QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    if (!result.isEmpty() || !alarm.hasImages || !time.isValid())
        return result;
    storage::FileQuery query;
    query.start = time.addSecs(-SecondsBefore);
    query.end = time.addSecs(SecondsAfter);
    query.kinds = QStringList{dataTree::Image};
    query.devices = QStringList{alarm.ipncId};
    storage::SearchProgress progress;
    for (const storage::FileRecord& file : storage::searchFiles(drives, query, progress)) {
        if (file.isPicture())
            result.prepend(file.path);
    }
    return result;
}

} // namespace corvanta::linkage
