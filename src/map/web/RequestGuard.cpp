#include "map/web/RequestGuard.h"

#include <QDebug>
#include <QUrl>

namespace corvanta::map {

RequestGuard::RequestGuard(std::optional<TileAddress> tiles, QObject* parent)
    : QWebEngineUrlRequestInterceptor(parent)
    , tiles_(std::move(tiles)) {}

bool RequestGuard::isAllowed(const QWebEngineUrlRequestInfo& info) const {
    const QUrl address = info.requestUrl();
    if (address.scheme() == QLatin1String("qrc"))
        return true;
    const bool isPicture = info.resourceType() == QWebEngineUrlRequestInfo::ResourceTypeImage;
    if (address.scheme() == QLatin1String("data"))
        return isPicture;
    return isPicture && info.requestMethod() == "GET" && tiles_ && tiles_->covers(address);
}

void RequestGuard::interceptRequest(QWebEngineUrlRequestInfo& info) {
    if (isAllowed(info))
        return;
    qDebug() << "the map's page may not reach" << info.requestUrl().toDisplayString().left(200);
    info.block(true);
}

} // namespace corvanta::map
