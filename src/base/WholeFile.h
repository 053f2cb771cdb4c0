#pragma once

#include <QByteArray>
#include <QString>

namespace corvanta {

/// Writes a file of the user's own so that it is the old one or the new one, whatever happens; where its folder
/// refuses new files the existing one is written instead. A missing folder is made. On Windows a file that somebody
/// reads (a virus scanner, an index) cannot be replaced; that is tried again for half a second. Returns why it was
/// not written, empty when it was.
QString writeWholeFile(const QString& path, const QByteArray& content);

} // namespace corvanta
