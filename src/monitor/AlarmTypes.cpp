#include "monitor/AlarmTypes.h"

#include "base/Settings.h"

namespace corvanta {

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

} // namespace corvanta
