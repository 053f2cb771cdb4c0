#pragma once

#include <QString>

class AppEvents;
class SdkGateway;

/// Asks the SDK for its lists; the answer comes as a message of its own. The mode "刷新" empties the tree first.
/// GUI thread.
namespace corvanta {

inline const QString RefreshMode = QStringLiteral("刷新");

void refreshDeviceList(SdkGateway& gateway, AppEvents& events, const QString& mode);
void refreshLocalList(SdkGateway& gateway, AppEvents& events, const QString& mode);

} // namespace corvanta
