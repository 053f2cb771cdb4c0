#include "database/LogQuery.h"

#include <QDateTime>
#include <QVariant>

#include <algorithm>

namespace {

// The form in which the database driver stores a QDateTime in local time: "yyyy-MM-ddThh:mm:ss.zzz".
constexpr int StoredLength = 23;
constexpr int HourLength = 13;
constexpr int ShownLength = 19;

bool isDigit(QChar unit, char upTo = '9') {
    return unit >= QLatin1Char('0') && unit <= QLatin1Char(upTo);
}

/// Whether the part of a stored text behind its hour is ":mm:ss.zzz".
bool endsLikeStored(const QString& text) {
    const QChar* const at = text.constData() + HourLength;
    return at[0] == QLatin1Char(':') && isDigit(at[1], '5') && isDigit(at[2]) && at[3] == QLatin1Char(':') &&
           isDigit(at[4], '5') && isDigit(at[5]) && at[6] == QLatin1Char('.') && isDigit(at[7]) && isDigit(at[8]) &&
           isDigit(at[9]);
}

} // namespace

LogQuery::LogQuery(QSqlQuery query, LogLayout layout)
    : query_(std::move(query))
    , layout_(std::move(layout))
    , texts_(static_cast<std::size_t>(layout_.columns))
    , cells_(static_cast<std::size_t>(layout_.columns)) {}

bool LogQuery::fetch(LogRows& rows, int atMost) {
    for (int count = 0; count < atMost; ++count) {
        if (!query_.next()) {
            query_.finish();
            return false;
        }
        for (int column = 0; column < layout_.columns; ++column) {
            QString& text = texts_[static_cast<std::size_t>(column)];
            const QVariant value = query_.value(column);
            if (layout_.dateTimes.contains(column))
                convertDateTime(value, text);
            else
                text = value.toString();
            cells_[static_cast<std::size_t>(column)] = text;
        }
        rows.append(cells_);
    }
    return true;
}

void LogQuery::convertDateTime(const QVariant& value, QString& text) {
    // The standard conversion takes longer than everything else of a row. Within an hour of which it has shown that
    // it changes nothing (as it would where a clock change skips the hour), the stored text is taken as it is.
    text = value.toString();
    const bool isStored = text.size() == StoredLength && endsLikeStored(text);
    const QString stored = text;
    if (isStored && stored.startsWith(knownHour_) && !knownHour_.isEmpty()) {
        text.truncate(ShownLength);
        text[10] = QLatin1Char(' ');
        return;
    }
    text = value.toDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    QString unchanged = stored.left(ShownLength);
    if (isStored && unchanged.size() == ShownLength) {
        unchanged[10] = QLatin1Char(' ');
        knownHour_ = unchanged == text ? stored.left(HourLength) : QString();
    }
}
