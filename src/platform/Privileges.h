#pragma once

namespace corvanta::platform {

/// Whether the process has the rights of the superuser (Linux). Windows: false; there they change nothing that this
/// is asked for.
bool runsAsAdministrator();

} // namespace corvanta::platform
