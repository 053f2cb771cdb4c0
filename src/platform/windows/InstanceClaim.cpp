#include "platform/InstanceClaim.h"

namespace corvanta::platform {

InstanceClaim::~InstanceClaim() = default;

InstanceClaim::Result InstanceClaim::claim(const std::filesystem::path& /*lockFile*/) {
    return Result::Undecided;
}

} // namespace corvanta::platform
