#pragma once

#include "logs/LogKinds.h"

#include <functional>

class QIODevice;

namespace corvanta::logs {

/// Writes a table as text, UTF-8: the header, then the rows; cells parted by " , ", every line ended with ",\n".
/// `goOn` is asked now and then with the number of rows written so far; false ends it. False when it was ended or
/// writing failed.
bool writeText(const Table& table, QIODevice& device, const std::function<bool(int rows)>& goOn);

} // namespace corvanta::logs
