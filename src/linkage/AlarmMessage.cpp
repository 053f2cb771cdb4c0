#include "linkage/AlarmMessage.h"

namespace corvanta::linkage {

AlarmMessage AlarmMessage::fromMap(const QVariantMap& message) {
    const auto textIn = [](const QVariantMap& map, const char* key) {
        const auto it = map.find(QLatin1String(key));
        return it == map.end() ? std::nullopt : std::optional(it->toString());
    };
    const QVariantMap alarm = message.value(QStringLiteral("alarm")).toMap();
    AlarmMessage result;
    result.ipncId = textIn(alarm, "ipncid").value_or(QString());
    result.dateTime = textIn(alarm, "datetime").value_or(QString());
    result.content = textIn(message, "content").value_or(QString());
    const auto trigger = alarm.find(QStringLiteral("trigger"));
    if (trigger != alarm.end()) {
        result.trigger = trigger->toMap();
        result.level = alarmLevelOf(result.trigger->value(QStringLiteral("threshold")).toInt());
        result.saveLog = textIn(*result.trigger, "savelog");
    }
    const auto images = alarm.find(QStringLiteral("images"));
    result.hasImages = images != alarm.end();
    if (result.hasImages && images->type() == QVariant::List)
        result.images = images->toStringList();
    result.videoPath = textIn(alarm, "videopath");
    return result;
}

} // namespace corvanta::linkage
