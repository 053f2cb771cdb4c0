#pragma once

#include "map/web/TileAddress.h"

#include <QWebEngineUrlRequestInterceptor>

#include <optional>

namespace corvanta::map {

/// Lets the map's page reach its own files and, where one is set, pictures of the tile server; nothing else, also not
/// by a redirect.
class RequestGuard final : public QWebEngineUrlRequestInterceptor {
    Q_OBJECT
public:
    explicit RequestGuard(std::optional<TileAddress> tiles, QObject* parent = nullptr);

    void interceptRequest(QWebEngineUrlRequestInfo& info) override;

private:
    bool isAllowed(const QWebEngineUrlRequestInfo& info) const;

    const std::optional<TileAddress> tiles_;
};

} // namespace corvanta::map
