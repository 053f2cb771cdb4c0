#include "monitor/StartPlan.h"

#include "base/Settings.h"

namespace keys = corvanta::keys;

StartPlan StartPlan::fromSettings(const Settings& settings) {
    return {settings.get(keys::ShowSplash).toBool(), settings.get(keys::SplashPicture).toString(),
            settings.get(keys::EnterByItself).toBool()};
}
