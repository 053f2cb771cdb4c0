#include "vision/VisionBackend.h"

#include <QCoreApplication>

namespace corvanta::vision {

QString noVisionText() {
    return QCoreApplication::translate("VisionBackend", "缺少图像识别组件，请重新安装程序!");
}

} // namespace corvanta::vision
