#include "monitor/ui/settings/SettingsLog.h"

#include "base/OperationLog.h"
#include "base/SdkGateway.h"

#include <QCoreApplication>
#include <QDateTime>

namespace corvanta::settings {

void logChanges(const AppContext& context, const QStringList& changedKeys) {
    const auto translated = [](const char* text) {
        return QCoreApplication::translate("SettingsLog", text);
    };
    context.operationLog.addOperateLog(context.gateway.phoneId(), QDateTime::currentDateTime(),
                                       translated(QT_TRANSLATE_NOOP("SettingsLog", "软件设置")),
                                       translated(QT_TRANSLATE_NOOP("SettingsLog", "修改软件设置")),
                                       changedKeys.join(translated(QT_TRANSLATE_NOOP("SettingsLog", "，"))));
}

} // namespace corvanta::settings
