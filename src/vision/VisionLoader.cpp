#include "vision/VisionBackend.h"

#include <QCoreApplication>
#include <QDebug>
#include <QPluginLoader>

// Alone in its file: a program with a backend built in defines the function itself, and then takes nothing of this.
namespace corvanta::vision {

const VisionBackend* visionBackend() {
    static const VisionBackend* const backend = []() -> const VisionBackend* {
        // Beside the program and nowhere else: no other folder may bring code into it.
        QPluginLoader loader(QCoreApplication::applicationDirPath() + QStringLiteral("/corvanta_vision_opencv"));
        const auto* const loaded = qobject_cast<VisionBackend*>(loader.instance());
        if (loaded == nullptr)
            qDebug() << "nothing can be measured with cameras:" << loader.errorString();
        return loaded;
    }();
    return backend;
}

} // namespace corvanta::vision
