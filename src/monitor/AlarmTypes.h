#pragma once

#include <QString>

#include <array>

namespace corvanta {

/// One type of alarm and the keys of its settings.
struct AlarmType {
    QString text;      ///< the type's text, by which alarms name it
    QString switchKey; ///< whether it sounds
    QString soundKey;  ///< path of its sound file
    const char* id;    ///< for object names
};

/// In the order in which the settings show them.
const std::array<AlarmType, 5>& alarmTypes();

} // namespace corvanta
