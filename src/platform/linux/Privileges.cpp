#include "platform/Privileges.h"

#include <unistd.h>

namespace corvanta::platform {

bool runsAsAdministrator() {
    return geteuid() == 0;
}

} // namespace corvanta::platform
