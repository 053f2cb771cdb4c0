#include "platform/InstanceClaim.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace corvanta::platform {

InstanceClaim::~InstanceClaim() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

InstanceClaim::Result InstanceClaim::claim(const std::filesystem::path& lockFile) {
    // Closed on exec: a program that this one starts must not keep the lock beyond this one's life.
    const int descriptor = open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor < 0) {
        return Result::Undecided;
    }
    int result = 0;
    do {
        result = flock(descriptor, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result == 0) {
        descriptor_ = descriptor;
        return Result::Ours;
    }
    const bool isHeld = errno == EWOULDBLOCK;
    close(descriptor);
    return isHeld ? Result::Another : Result::Undecided;
}

} // namespace corvanta::platform
