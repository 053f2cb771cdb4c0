#include "vision/opencv/OpenCvBackend.h"

#include <QObject>

namespace corvanta::vision::opencv {

/// What the program finds in the plugin.
class VisionPlugin final : public QObject, public OpenCvBackend {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID CORVANTA_VISION_BACKEND_IID)
    Q_INTERFACES(corvanta::vision::VisionBackend)
};

} // namespace corvanta::vision::opencv

#include "VisionPlugin.moc"
