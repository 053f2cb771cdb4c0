#include "platform/linux/LocalTimeTable.h"

#include <cstdint>

namespace corvanta::platform {

namespace {

constexpr std::time_t day = 86400; // seconds

long offsetAt(std::time_t time) {
    std::tm local{};
    return localtime_r(&time, &local) == nullptr ? 0 : local.tm_gmtoff;
}

/// The first second after `before` that has not its offset; one exists until `after`.
std::time_t findChange(std::time_t before, std::time_t after) {
    const long offset = offsetAt(before);
    while (after - before > 1) {
        const std::time_t middle = before + (after - before) / 2;
        (offsetAt(middle) == offset ? before : after) = middle;
    }
    return after;
}

/// Writes the last `digits` decimal digits of `number`, with leading zeros.
char* writeNumber(char* at, std::int64_t number, int digits) {
    for (int i = digits - 1; i >= 0; --i) {
        at[i] = static_cast<char>('0' + number % 10);
        number /= 10;
    }
    return at + digits;
}

struct Date {
    std::int64_t year = 0;
    std::int64_t month = 0;
    std::int64_t day = 0;
};

/// The Gregorian date `days` after 1970-01-01. Counts from the first of March of year 0 in eras of 400 years, which
/// all have 146097 days, so that a leap day is the last of its year (H. Hinnant, chrono-compatible low-level date
/// algorithms, civil_from_days).
Date dateOf(std::int64_t days) {
    days += 719468;
    const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
    const std::int64_t dayOfEra = days - era * 146097;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t marchMonth = (5 * dayOfYear + 2) / 153;
    Date date;
    date.day = dayOfYear - (153 * marchMonth + 2) / 5 + 1;
    date.month = marchMonth < 10 ? marchMonth + 3 : marchMonth - 9;
    date.year = yearOfEra + era * 400 + (date.month <= 2 ? 1 : 0);
    return date;
}

} // namespace

void LocalTimeTable::prepare(std::time_t now) {
    tzset();
    count_ = 0;
    periods_[count_++] = {now, offsetAt(now)};
    for (std::time_t time = now; time < now + 731 * day && count_ < periods_.size(); time += day) {
        if (offsetAt(time + day) != offsetAt(time)) {
            const std::time_t change = findChange(time, time + day);
            periods_[count_++] = {change, offsetAt(change)};
        }
    }
}

void LocalTimeTable::writeFileName(std::time_t time, std::array<char, nameSize>& name) const {
    long offset = 0;
    for (std::size_t i = 0; i < count_; ++i) {
        if (i == 0 || periods_[i].start <= time) {
            offset = periods_[i].offset;
        }
    }
    const std::int64_t local = static_cast<std::int64_t>(time) + offset;
    const Date date = dateOf(local / day);
    const std::int64_t seconds = local % day;

    char* at = writeNumber(name.data(), date.year, 4);
    *at++ = '_';
    at = writeNumber(at, date.month, 2);
    *at++ = '_';
    at = writeNumber(at, date.day, 2);
    *at++ = '_';
    at = writeNumber(at, seconds / 3600, 2);
    at = writeNumber(at, seconds / 60 % 60, 2);
    at = writeNumber(at, seconds % 60, 2);
    for (const char character : {'.', 'D', 'M', 'P', '\0'}) {
        *at++ = character;
    }
}

} // namespace corvanta::platform
