#include "manageWidget/ManageLog.h"

#include "base/OperationLog.h"

#include <QDateTime>

namespace corvanta::manage {
namespace {
constexpr int LongestDetail = 500; // characters; a row of a log is to be read
} // namespace

void logChange(OperationLog& log, const QString& user, const QString& what, const QString& detail) {
    log.addOperateLog(user, QDateTime::currentDateTime(), QStringLiteral("设备管理"), what,
                      detail.left(LongestDetail));
}

} // namespace corvanta::manage
