#pragma once

#include <QString>

namespace corvanta {

/// A number of bytes as the user reads it everywhere: "512 B", "1.5 KB", "3.0 MB", in steps of 1,024.
QString sizeText(qint64 bytes);

} // namespace corvanta
