#include "linkage/AlarmHandler.h"

#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/JsonText.h"
#include "database/SqlHelp.h"
#include "linkage/AlarmInbox.h"

#include <QDebug>

#include <utility>

namespace corvanta::linkage {

AlarmHandler::AlarmHandler(Parts parts)
    : parts_(std::move(parts)) {}

void AlarmHandler::handle(const QVariantMap& message) const {
    const AlarmMessage alarm = AlarmMessage::fromMap(message);
    if (alarm.trigger) {
        emit parts_.events.sig_triggerAlarm(*alarm.trigger);
        if (alarm.saveLog) {
            qDebug() << "trigger savelog" << alarm.ipncId << *alarm.saveLog;
            emit parts_.events.sig_DownDatFile(alarm.ipncId, *alarm.saveLog);
        }
    }
    if (alarm.hasImages)
        emit parts_.events.sig_deal(QStringLiteral("更新设备预览"), alarm.ipncId);

    const DeviceRecord* const device = parts_.devices.device(alarm.ipncId);
    const QString name = device == nullptr ? alarm.ipncId : device->displayName();
    const QString& type = alarmTypeOf(alarm.level).text;
    // A row costs a write of the disk. Those of a flood share one; each is written in its turn all the same.
    parts_.database.writeTogether();
    parts_.database.addFireLog(name, alarm.dateTime, type, alarm.content,
                               QString::fromStdString(json::toText(message)));
    parts_.playSound(type);
    emit parts_.events.sig_MessageBar(alarm.dateTime + QLatin1Char(' ') + alarm.content);
    if (alarm.videoPath) {
        if (video_)
            video_(*alarm.videoPath);
        else
            qDebug() << "nobody looks at the video of an alarm" << *alarm.videoPath;
    }
    parts_.inbox.add(alarm, name);
}

} // namespace corvanta::linkage
