#include "linkage/AlarmTypes.h"

#include "base/Settings.h"

#include <QCoreApplication>

namespace corvanta {

namespace {

/// For the translators' tool: the types' texts.
[[maybe_unused]] constexpr std::array texts = {
    QT_TRANSLATE_NOOP("AlarmTypes", "设备异常报警"), QT_TRANSLATE_NOOP("AlarmTypes", "一级阈值报警"),
    QT_TRANSLATE_NOOP("AlarmTypes", "二级阈值报警"), QT_TRANSLATE_NOOP("AlarmTypes", "三级阈值报警"),
    QT_TRANSLATE_NOOP("AlarmTypes", "其他报警")};

} // namespace

QString AlarmType::shownText() const {
    return QCoreApplication::translate("AlarmTypes", text.toUtf8().constData());
}

const std::array<AlarmType, 5>& alarmTypes() {
    // The key of a sound is the type's text itself.
    static const std::array<AlarmType, 5> Table{{
        {keys::SoundDeviceFault, keys::AlarmDeviceFault, keys::SoundDeviceFault, "DeviceFault"},
        {keys::SoundLevel1, keys::AlarmLevel1, keys::SoundLevel1, "Level1"},
        {keys::SoundLevel2, keys::AlarmLevel2, keys::SoundLevel2, "Level2"},
        {keys::SoundLevel3, keys::AlarmLevel3, keys::SoundLevel3, "Level3"},
        {keys::SoundOther, keys::AlarmOther, keys::SoundOther, "Other"},
    }};
    return Table;
}

const AlarmType& alarmTypeOf(AlarmLevel level) {
    const std::array<AlarmType, 5>& types = alarmTypes();
    switch (level) {
    case AlarmLevel::One:
        return types[1];
    case AlarmLevel::Two:
        return types[2];
    case AlarmLevel::Three:
        return types[3];
    case AlarmLevel::Other:
        break;
    }
    return types[4];
}

const AlarmType* reportedAlarmType(const QString& text) {
    for (const AlarmLevel level : {AlarmLevel::Other, AlarmLevel::One, AlarmLevel::Two, AlarmLevel::Three}) {
        const AlarmType& type = alarmTypeOf(level);
        if (type.text == text)
            return &type;
    }
    return nullptr;
}

AlarmLevel alarmLevelOf(int threshold) {
    switch (threshold) {
    case 2:
        return AlarmLevel::Two;
    case 3:
        return AlarmLevel::Three;
    default:
        return AlarmLevel::One;
    }
}

} // namespace corvanta
