#include "map/ui/WebMapLoader.h"

#include "map/ui/MapView.h"
#include "map/ui/WebMapPlugin.h"

#include <QCoreApplication>
#include <QDebug>
#include <QPluginLoader>

namespace corvanta::map {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(WebMapLoader)
};

} // namespace

MapView* makeWebMap(const WebMapOptions& options, QWidget* parent, Text& problem) {
    // Beside the program and nowhere else: no other folder may bring code into it.
    QPluginLoader loader(QCoreApplication::applicationDirPath() + QStringLiteral("/corvanta_webmap"));
    auto* const factory = qobject_cast<WebMapFactory*>(loader.instance());
    if (factory == nullptr) {
        qDebug() << "no online map:" << loader.errorString();
        problem = [] {
            return Texts::tr("当前版本不包含在线地图组件，无法打开在线地图!");
        };
        return nullptr;
    }
    MapView* const view = factory->make(options, parent);
    if (view == nullptr)
        problem = [] {
            return Texts::tr("以管理员身份运行时无法打开在线地图，请以普通用户身份启动程序!");
        };
    return view;
}

} // namespace corvanta::map
