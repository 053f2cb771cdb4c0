#include "vision/opencv/OpenCvBackend.h"

// For programs that measure all the time and have no plugin beside them.
namespace corvanta::vision {

const VisionBackend* visionBackend() {
    static const opencv::OpenCvBackend backend;
    return &backend;
}

} // namespace corvanta::vision
