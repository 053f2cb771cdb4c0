#pragma once

#include "base/JsonText.h"

namespace ipncsdk::sensor {

/// Boards to begin with: [{"name", "type", "board"}...], without pids.
Json boardTemplates();

} // namespace ipncsdk::sensor
