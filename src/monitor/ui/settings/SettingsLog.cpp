#include "monitor/ui/settings/SettingsLog.h"

#include "base/OperationLog.h"
#include "base/SdkGateway.h"

#include <QDateTime>

namespace corvanta::settings {

void logChanges(const AppContext& context, const QStringList& changedKeys) {
    // Rows of the log are Chinese whatever the interface's language is.
    context.operationLog.addOperateLog(context.gateway.phoneId(), QDateTime::currentDateTime(),
                                       QStringLiteral("软件设置"), QStringLiteral("修改软件设置"),
                                       changedKeys.join(QStringLiteral("，")));
}

} // namespace corvanta::settings
