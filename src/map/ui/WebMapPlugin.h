#pragma once

#include <QString>
#include <QtPlugin>

class QWidget;

namespace corvanta::map {

class MapView;

struct WebMapOptions {
    QString tileServer; ///< template of addresses with {z}, {x} and {y}; empty: the map that is built in
    QString dataFolder; ///< an existing folder of the account's, should the view need one; ends with a slash
};

/// What the plugin `corvanta_webmap` offers: it is loaded when the first online map is opened, so that the program
/// does not carry a browser where nobody looks at one.
class WebMapFactory {
public:
    WebMapFactory() = default;
    WebMapFactory(const WebMapFactory&) = delete;
    WebMapFactory& operator=(const WebMapFactory&) = delete;
    virtual ~WebMapFactory() = default;

    /// A view that `parent` owns; null where the program has the administrator's rights, since the browser's sandbox
    /// does not work there. GUI thread.
    virtual MapView* make(const WebMapOptions& options, QWidget* parent) = 0;
};

} // namespace corvanta::map

#define CORVANTA_WEB_MAP_FACTORY_IID "corvanta.WebMapFactory/1"
Q_DECLARE_INTERFACE(corvanta::map::WebMapFactory, CORVANTA_WEB_MAP_FACTORY_IID)
