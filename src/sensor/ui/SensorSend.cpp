#include "sensor/ui/SensorSend.h"

#include "base/OperationLog.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "manageWidget/ui/ManageSend.h"

#include <QDateTime>

namespace corvanta::sensor {
namespace {
constexpr int LongestDetail = 500; // characters; a row of a log is to be read
} // namespace

void logChange(const AppContext& context, const QString& what, const QString& detail) {
    context.operationLog.addOperateLog(context.gateway.phoneId(), QDateTime::currentDateTime(),
                                       QStringLiteral("传感器设置"), what, detail.left(LongestDetail));
}

void readNow(const AppContext& context, QWidget* dialog, const QString& ipncId, int pid, QAbstractButton* busy,
             std::function<void(const QVariantMap& read)> done) {
    const QString command = QStringLiteral("sensorread");
    manage::send(context, dialog,
                 {.json = requests::deviceRequest(
                      QStringLiteral("读取采集输入"),
                      {{QStringLiteral("ipncid"), ipncId}, {command, QVariantMap{{QStringLiteral("pid"), pid}}}}),
                  .busy = busy,
                  .done = [done = std::move(done), command](const QVariantMap& resp) {
                      done(resp.value(command).toMap());
                  }});
}

QString numberText(double value) {
    return QString::number(value, 'g', 10);
}

} // namespace corvanta::sensor
