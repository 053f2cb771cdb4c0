#pragma once

#include "database/LogRows.h"

#include <QString>
#include <QStringList>

#include <array>

/// The vocabulary of the logs.
namespace corvanta::logs {

/// A log as the user knows it. Its position in `kinds()` is the number that the database knows it by.
struct Kind {
    const char* tab;                    ///< UTF-8, to be translated in the context "Logs"
    std::array<const char*, 6> columns; ///< likewise; unused ones at the end are null
};

const std::array<Kind, 4>& kinds();

/// The translated texts; those of a type that does not exist are empty.
QString tabText(int type);
QStringList columnTexts(int type);

/// What a search found: rows below column texts, or what is exported. As many columns as the rows have.
struct Table {
    QStringList header;
    LogRows rows;
};

} // namespace corvanta::logs
