#pragma once

#include "database/LogRows.h"

#include <QSet>
#include <QSqlQuery>
#include <QVariant>

#include <array>
#include <vector>

/// What is read of a log's table.
struct LogLayout {
    int columns = 0;     ///< how many, from the first on
    QSet<int> dateTimes; ///< positions of those that hold date-times
};

/// A question to a log whose answer is read piece by piece, so that whoever reads it can do other things in between.
/// GUI thread; destroyed before the database.
class LogQuery final {
public:
    /// A query that has been executed, or a failed one, which has no rows.
    LogQuery(const QSqlQuery& query, LogLayout layout);

    /// Rows without a row, made for what this query yields.
    LogRows emptyRows() const { return LogRows(layout_.columns); }

    /// Adds up to `atMost` further rows; false when there are no more.
    bool fetch(LogRows& rows, int atMost);

private:
    /// The texts of one cell's value, wherever they come to lie.
    struct Cell {
        QVariant value;
        QString converted; ///< for values that are no texts
        std::array<char16_t, 20> buffer;
    };

    QStringView textOf(Cell& cell) const;
    QStringView dateTimeOf(Cell& cell);

    QSqlQuery query_;
    LogLayout layout_;
    std::vector<Cell> row_;
    std::vector<bool> isDateTime_; ///< by column
    std::vector<QStringView> texts_;
    std::array<char16_t, 13>
        knownHour_{}; ///< "yyyy-MM-ddThh" of stored texts that need no conversion, see dateTimeOf
};
