#include "base/ListRefresh.h"

#include "base/AppEvents.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"

namespace corvanta {

void refreshDeviceList(SdkGateway& gateway, AppEvents& events, const QString& mode) {
    if (mode == RefreshMode)
        emit events.sig_updateList(QVariantList(), QVariantMap());
    gateway.setConfig(requests::directCommand(QStringLiteral("请求刷新列表")));
}

void refreshLocalList(SdkGateway& gateway, AppEvents& events, const QString& mode) {
    if (mode == RefreshMode)
        emit events.sig_freshlocal(QVariantMap());
    gateway.setConfig(requests::directCommand(QStringLiteral("请求刷新本地列表")));
}

} // namespace corvanta
