#pragma once

#include <QString>

class OperationLog;

namespace corvanta::linkage {

/// Parts of the program whose changes stand in the log of operations.
enum class LogSubject { Plans, Rules, TextMessages, Alarms };

/// Writes one row: what the user did ("删除联动策略"), and to what. `user` is the account's number; long details are
/// cut.
void logChange(OperationLog& log, const QString& user, LogSubject subject, const QString& what,
               const QString& detail);

} // namespace corvanta::linkage
