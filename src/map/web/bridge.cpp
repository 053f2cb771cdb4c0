#include "map/web/bridge.h"

namespace corvanta::map {

bridge::bridge(QObject* parent)
    : QObject(parent) {
    setObjectName(QStringLiteral("bridge"));
}

} // namespace corvanta::map
