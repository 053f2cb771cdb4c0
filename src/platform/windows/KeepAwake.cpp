#include "platform/KeepAwake.h"

#include <windows.h>

namespace corvanta::platform {

class KeepAwake::Impl {
public:
    bool active = SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED | ES_DISPLAY_REQUIRED) != 0;
};

KeepAwake::KeepAwake()
    : impl_(std::make_unique<Impl>()) {}

KeepAwake::~KeepAwake() {
    if (impl_->active) {
        SetThreadExecutionState(ES_CONTINUOUS);
    }
}

bool KeepAwake::active() const {
    return impl_->active;
}

std::string KeepAwake::description() const {
    return impl_->active ? "system and display are kept awake" : "SetThreadExecutionState failed";
}

} // namespace corvanta::platform
