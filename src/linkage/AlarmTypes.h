#pragma once

#include <QString>

#include <array>

namespace corvanta {

/// One type of alarm and the keys of its settings.
struct AlarmType {
    QString text;      ///< the type's text, by which alarms name it; stored, so the same in every language
    QString switchKey; ///< whether it sounds
    QString soundKey;  ///< path of its sound file
    const char* id;    ///< for object names

    /// The text as people read it, in the language that is spoken now.
    QString shownText() const;
};

/// In the order in which the settings show them.
const std::array<AlarmType, 5>& alarmTypes();

/// What devices report: alarms of a linkage plan by its level, and all others.
enum class AlarmLevel { Other, One, Two, Three };

/// The type of what devices report.
const AlarmType& alarmTypeOf(AlarmLevel level);
/// The type that has this text, of those that devices report; null for every other text.
const AlarmType* reportedAlarmType(const QString& text);
/// The level that a plan's alarm names. A number that is no level counts as the first, never as "other": plans of
/// older devices name none, and their alarms are sounded and logged as those of the first level.
AlarmLevel alarmLevelOf(int threshold);

} // namespace corvanta
