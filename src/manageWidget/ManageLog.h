#pragma once

#include <QString>

class OperationLog;

namespace corvanta::manage {

/// Writes a row about devices into the log of operations: what the user did ("删除设备"), to what and how. `user` is
/// the account's number; long details are cut.
void logChange(OperationLog& log, const QString& user, const QString& what, const QString& detail);

} // namespace corvanta::manage
