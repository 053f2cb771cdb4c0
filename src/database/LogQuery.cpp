#include "database/LogQuery.h"

#include <QDateTime>
#include <QVariant>

#include <algorithm>
#include <charconv>

namespace {

// The form in which the database driver stores a QDateTime in local time: "yyyy-MM-ddThh:mm:ss.zzz".
constexpr int StoredLength = 23;
constexpr int HourLength = 13;
constexpr int ShownLength = 19;
constexpr int BetweenDateAndTime = 10;

bool isDigit(QChar unit, char upTo = '9') {
    return unit >= QLatin1Char('0') && unit <= QLatin1Char(upTo);
}

/// Whether the part of a stored text behind its hour is ":mm:ss.zzz".
bool endsLikeStored(QStringView text) {
    const QChar* const at = text.data() + HourLength;
    return at[0] == QLatin1Char(':') && isDigit(at[1], '5') && isDigit(at[2]) && at[3] == QLatin1Char(':') &&
           isDigit(at[4], '5') && isDigit(at[5]) && at[6] == QLatin1Char('.') && isDigit(at[7]) && isDigit(at[8]) &&
           isDigit(at[9]);
}

/// The text that a value holds; null if it holds none.
const QString* heldText(const QVariant& value) {
    return value.userType() == QMetaType::QString ? static_cast<const QString*>(value.constData()) : nullptr;
}

} // namespace

LogQuery::LogQuery(const QSqlQuery& query, LogLayout layout)
    : query_(query)
    , layout_(std::move(layout))
    , row_(static_cast<std::size_t>(layout_.columns))
    , texts_(static_cast<std::size_t>(layout_.columns)) {
    for (int column = 0; column < layout_.columns; ++column)
        isDateTime_.push_back(layout_.dateTimes.contains(column));
}

bool LogQuery::fetch(LogRows& rows, int atMost) {
    // This runs millions of times: texts are taken where they lie.
    for (int count = 0; count < atMost; ++count) {
        if (!query_.next()) {
            query_.finish();
            return false;
        }
        for (std::size_t column = 0; column < row_.size(); ++column) {
            Cell& cell = row_[column];
            cell.value = query_.value(static_cast<int>(column));
            texts_[column] = isDateTime_[column] ? dateTimeOf(cell) : textOf(cell);
        }
        rows.append(texts_);
    }
    return true;
}

QStringView LogQuery::textOf(Cell& cell) const {
    if (const QString* const text = heldText(cell.value))
        return *text;
    if (cell.value.userType() == QMetaType::LongLong) { // ids
        std::array<char, 20> digits;
        char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), cell.value.toLongLong()).ptr;
        std::copy(digits.data(), end, cell.buffer.begin());
        return {cell.buffer.data(), end - digits.data()};
    }
    cell.converted = cell.value.toString();
    return cell.converted;
}

QStringView LogQuery::dateTimeOf(Cell& cell) {
    // The standard conversion takes longer than everything else of a row. Within an hour of which it has shown that
    // it changes nothing (as it would where a clock change skips the hour), the stored text is taken as it is.
    const QString* const text = heldText(cell.value);
    const bool isStored = text != nullptr && text->size() == StoredLength && endsLikeStored(*text);
    const QStringView hour = isStored ? QStringView(*text).left(HourLength) : QStringView();
    if (isStored) {
        std::copy_n(text->utf16(), ShownLength, cell.buffer.begin());
        cell.buffer[BetweenDateAndTime] = u' ';
    }
    const QStringView unchanged(cell.buffer.data(), ShownLength);
    if (isStored && std::equal(knownHour_.begin(), knownHour_.end(), hour.utf16()))
        return unchanged;
    cell.converted = cell.value.toDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    if (isStored && unchanged == cell.converted)
        std::copy_n(hour.utf16(), HourLength, knownHour_.begin());
    return cell.converted;
}
