#pragma once

#include <filesystem>

namespace corvanta::platform {

/// Which process of this user is the first one, decided by the system in a way that a crash cannot leave undone.
///
/// Linux: a locked file. The lock ends with the process that holds it, unlike shared memory and sockets, which stay
/// when a process is killed; who has the lock may therefore remove what is left of them. Windows: nothing is needed,
/// kernel objects end with the process, and every claim is `Undecided`.
class InstanceClaim final {
public:
    enum class Result {
        Ours,      ///< this process is the first; so it stays until this object ends
        Another,   ///< another living process is
        Undecided, ///< the system cannot say
    };

    InstanceClaim() = default;
    ~InstanceClaim();
    InstanceClaim(const InstanceClaim&) = delete;
    InstanceClaim& operator=(const InstanceClaim&) = delete;

    /// Never waits. `lockFile` lies in an existing folder that is this user's alone; it is made, and never removed.
    /// Called once.
    Result claim(const std::filesystem::path& lockFile);

private:
    int descriptor_ = -1; ///< holds the lock; -1 without one
};

} // namespace corvanta::platform
