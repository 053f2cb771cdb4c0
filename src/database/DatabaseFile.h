#pragma once

#include <QString>

/// The database as a file, while nobody has it open.
namespace corvanta::database {

/// Whether `file` can not be a database of ours any more: not of the format, cut short, or its first page is none.
/// Reads the first page's header only. A file that is missing, empty or unreadable is not damaged, and one with a
/// rollback journal beside it is left to the database engine, which repairs it from there.
bool looksDamaged(const QString& file);

/// Renames a damaged database, and what belongs to it, to a name with the time. One debug line says what came of it.
bool setAside(const QString& file);

} // namespace corvanta::database
