#include "map/ui/WebMapPlugin.h"

#include "map/web/MyWebEngineView.h"
#include "platform/Privileges.h"

#include <QObject>

namespace corvanta::map {

/// What the program finds in the plugin.
class WebMapPlugin final : public QObject, public WebMapFactory {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID CORVANTA_WEB_MAP_FACTORY_IID)
    Q_INTERFACES(corvanta::map::WebMapFactory)
public:
    MapView* make(const WebMapOptions& options, QWidget* parent) override {
        // The browser ends the whole program where it finds itself run by the administrator with its sandbox on, and
        // pages without a sandbox are not for the administrator's rights.
        if (platform::runsAsAdministrator() && !qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX"))
            return nullptr;
        return new MyWebEngineView(options, parent);
    }
};

} // namespace corvanta::map

#include "WebMapPlugin.moc"
