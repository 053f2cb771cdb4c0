#include "linkage/LinkageLog.h"

#include "base/OperationLog.h"

#include <QCoreApplication>
#include <QDateTime>

#include <array>

namespace corvanta::linkage {
namespace {

constexpr int LongestDetail = 500; // characters; a row of a log is to be read
/// In the order of the subjects.
constexpr std::array Kinds{QT_TRANSLATE_NOOP("LinkageLog", "联动设置"), QT_TRANSLATE_NOOP("LinkageLog", "通知规则"),
                           QT_TRANSLATE_NOOP("LinkageLog", "短信管理"), QT_TRANSLATE_NOOP("LinkageLog", "报警处理")};

} // namespace

void logChange(OperationLog& log, const QString& user, LogSubject subject, const QString& what,
               const QString& detail) {
    log.addOperateLog(user, QDateTime::currentDateTime(),
                      QCoreApplication::translate("LinkageLog", Kinds[static_cast<std::size_t>(subject)]), what,
                      detail.left(LongestDetail));
}

} // namespace corvanta::linkage
