#include "linkage/LinkageLog.h"

#include "base/OperationLog.h"

#include <QDateTime>

#include <array>

namespace corvanta::linkage {
namespace {

constexpr int LongestDetail = 500; // characters; a row of a log is to be read
/// In the order of the subjects; rows of the log are Chinese whatever the interface's language is.
constexpr std::array Kinds{"联动设置", "通知规则", "短信管理", "报警处理"};

} // namespace

void logChange(OperationLog& log, const QString& user, LogSubject subject, const QString& what,
               const QString& detail) {
    log.addOperateLog(user, QDateTime::currentDateTime(), QString::fromUtf8(Kinds[static_cast<std::size_t>(subject)]),
                      what, detail.left(LongestDetail));
}

} // namespace corvanta::linkage
