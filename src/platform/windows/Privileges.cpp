#include "platform/Privileges.h"

namespace corvanta::platform {

bool runsAsAdministrator() {
    return false;
}

} // namespace corvanta::platform
