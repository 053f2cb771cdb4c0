#include "sensor/SampleQuery.h"

#include "base/LocalTime.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace ipncsdk::sensor {

namespace {

constexpr std::int64_t second = 1000;
constexpr std::int64_t longestStep = std::int64_t{366} * 86400;
constexpr double latestTime = 4e11; ///< seconds; far enough, and milliseconds still fit

/// "yyyy-MM-dd hh:mm:ss" in local time.
std::optional<std::int64_t> timeOfDate(const std::string& text) {
    std::tm local{};
    char rest = 0;
    if (std::sscanf(text.c_str(), "%4d-%2d-%2d %2d:%2d:%2d%c", &local.tm_year, &local.tm_mon, &local.tm_mday,
                    &local.tm_hour, &local.tm_min, &local.tm_sec, &rest) != 6)
        return std::nullopt;
    const bool real = local.tm_year >= 1970 && local.tm_mon >= 1 && local.tm_mon <= 12 && local.tm_mday >= 1 &&
                      local.tm_mday <= 31 && local.tm_hour >= 0 && local.tm_hour < 24 && local.tm_min >= 0 &&
                      local.tm_min < 60 && local.tm_sec >= 0 && local.tm_sec <= 60;
    if (!real)
        return std::nullopt;
    local.tm_year -= 1900;
    local.tm_mon -= 1;
    local.tm_isdst = -1;
    const std::int64_t time = secondsOf(local);
    return time < 0 ? std::nullopt : std::make_optional(time * second);
}

std::optional<double> numberOfText(const std::string& text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::make_optional(value) : std::nullopt;
}

/// A time as requests have it; nothing when it is none.
std::optional<std::int64_t> timeOf(const Json& value) {
    std::optional<double> seconds;
    if (value.is_number())
        seconds = value.get<double>();
    else if (value.is_string())
        seconds = numberOfText(value.get<std::string>());
    if (seconds)
        return std::isfinite(*seconds) && std::abs(*seconds) < latestTime
                   ? std::make_optional(static_cast<std::int64_t>(std::llround(*seconds * 1000)))
                   : std::nullopt;
    return value.is_string() ? timeOfDate(value.get<std::string>()) : std::nullopt;
}

/// A key that is not there, or says nothing.
bool isOpen(const Json* value) {
    return value == nullptr || (value->is_string() && value->get_ref<const std::string&>().empty());
}

/// A whole number that may be written as text; `usual` when it is missing, nothing when it is none or out of range.
std::optional<std::int64_t> wholeOf(const Json* value, std::int64_t usual, std::int64_t least, std::int64_t most) {
    if (isOpen(value))
        return usual;
    auto number = integerOf(*value);
    if (value->is_string()) {
        const auto real = numberOfText(value->get<std::string>());
        number = real && std::floor(*real) == *real && std::abs(*real) < 1e15
                     ? std::make_optional(static_cast<std::int64_t>(*real))
                     : std::nullopt;
    }
    return number && *number >= least ? std::make_optional(std::min(*number, most)) : std::nullopt;
}

bool readInputs(const Json& request, SampleQuery& query) {
    const Json* const inputs = memberAt(request, "inputid");
    if (inputs == nullptr || !inputs->is_array() || inputs->size() > mostInputsAsked)
        return false;
    for (const Json& input : *inputs) {
        const auto pid = integerOf(input);
        if (!pid)
            return false;
        // A number that no pid can have is that of an input which is not there.
        query.inputs.push_back(*pid > 0 && *pid <= std::numeric_limits<int>::max() ? static_cast<int>(*pid) : 0);
    }
    return true;
}

/// Where a bucket begins and ends that holds a time.
struct Bucket {
    std::int64_t begin = 0;
    std::int64_t end = 0;
};

Bucket bucketOf(std::int64_t time, std::int64_t step) {
    constexpr std::int64_t hour = 3600;
    constexpr std::int64_t day = 86400;
    const std::int64_t length = step * second;
    if (step == hour || step == day) {
        std::tm local = localTimeOf(time / second);
        const std::int64_t intoHour = (local.tm_min * 60 + local.tm_sec) * second + time % second;
        if (step == hour)
            return {time - intoHour, time - intoHour + length};
        local.tm_hour = local.tm_min = local.tm_sec = 0;
        local.tm_isdst = -1;
        const std::int64_t begin = secondsOf(local) * second;
        ++local.tm_mday;
        local.tm_isdst = -1;
        return {begin, secondsOf(local) * second};
    }
    const std::int64_t begin = time - ((time % length) + length) % length;
    return {begin, begin + length};
}

constexpr auto rowsOfRange = "select time, value, state, value, value, 1 from samples"
                             " where pid = ?1 and time between ?2 and ?3"
                             " union all select time, mean, 1, low, high, count from minutes"
                             " where pid = ?1 and time between ?2 and ?3 order by 1";
constexpr auto rowsOfRangeBackwards = "select time, value, state, value, value, 1 from samples"
                                      " where pid = ?1 and time between ?2 and ?3"
                                      " union all select time, mean, 1, low, high, count from minutes"
                                      " where pid = ?1 and time between ?2 and ?3 order by 1 desc";

Sample sampleAt(const SampleFile::Statement& row) {
    return {row.whole(0), row.real(1), row.whole(2) != 0, row.real(3), row.real(4), row.whole(5)};
}

/// Collects rows into what was asked for, until there is enough.
class Collector {
public:
    explicit Collector(const SampleQuery& query)
        : query_(query) {}

    /// False when the row does not fit any more.
    bool take(const Sample& row) {
        if (query_.step == 0)
            return begin(row);
        if (!row.normal)
            return true;
        if (row.time >= bucket_.begin && row.time < bucket_.end && !range.samples.empty()) {
            add(row);
            return true;
        }
        const Bucket bucket = bucketOf(row.time, query_.step);
        if (!begin(row))
            return false;
        bucket_ = bucket;
        sum_ = row.value * static_cast<double>(row.count);
        range.samples.back().time = bucket.begin;
        return true;
    }

    /// Where the part behind what was collected begins.
    [[nodiscard]] std::int64_t end() const { return query_.step == 0 ? range.samples.back().time + 1 : bucket_.end; }

    SampleRange range;

private:
    bool begin(const Sample& row) {
        range.more = range.samples.size() >= query_.most;
        if (!range.more)
            range.samples.push_back(row);
        return !range.more;
    }
    void add(const Sample& row) {
        Sample& sample = range.samples.back();
        sample.count += row.count;
        sample.low = std::min(sample.low, row.low);
        sample.high = std::max(sample.high, row.high);
        sum_ += row.value * static_cast<double>(row.count);
        sample.value = sum_ / static_cast<double>(sample.count);
    }

    const SampleQuery& query_;
    Bucket bucket_;
    double sum_ = 0;
};

void bindRange(SampleFile::Statement& statement, int pid, const SampleQuery& query) {
    statement.bind(std::int64_t{pid})
        .bind(query.begin.value_or(std::numeric_limits<std::int64_t>::min()))
        .bind(query.end.value_or(std::numeric_limits<std::int64_t>::max()));
}

} // namespace

std::optional<SampleQuery> sampleQuery(const Json& request) {
    SampleQuery query;
    if (!readInputs(request, query))
        return std::nullopt;
    const Json* const begin = memberAt(request, "begin");
    const Json* const end = memberAt(request, "end");
    if (!isOpen(begin)) {
        query.forward = true;
        if (*begin != "oldest" && !(query.begin = timeOf(*begin)))
            return std::nullopt;
    }
    if (!isOpen(end) && *end != "latest" && !(query.end = timeOf(*end)))
        return std::nullopt;
    const auto most = wholeOf(memberAt(request, "max"), 10000, 1, static_cast<std::int64_t>(mostRecords));
    const auto step = wholeOf(memberAt(request, "step"), 0, 0, longestStep);
    if (!most || !step)
        return std::nullopt;
    query.most = static_cast<std::size_t>(*most);
    query.step = *step;
    return query;
}

SampleRange readRange(SampleFile& file, int pid, const SampleQuery& query) {
    SampleFile::Statement statement(file, query.forward ? rowsOfRange : rowsOfRangeBackwards);
    bindRange(statement, pid, query);
    Collector collector(query);
    std::int64_t rows = 0;
    while (statement.step() && collector.take(sampleAt(statement)))
        ++rows;
    collector.range.rows = rows;
    if (!collector.range.samples.empty())
        collector.range.next = collector.end();
    SampleRange range = std::move(collector.range);
    if (!query.forward)
        std::reverse(range.samples.begin(), range.samples.end());
    return range;
}

std::int64_t countRows(SampleFile& file, int pid, const SampleQuery& query) {
    SampleFile::Statement statement(file,
                                    "select (select count(*) from samples where pid = ?1 and time between ?2 and ?3)"
                                    " + (select count(*) from minutes where pid = ?1 and time between ?2 and ?3)");
    bindRange(statement, pid, query);
    return statement.step() ? statement.whole(0) : 0;
}

std::string epochText(std::int64_t milliseconds) {
    std::string text = std::to_string(milliseconds / second);
    if (milliseconds < 0 || milliseconds % second == 0)
        return text;
    std::string fraction = std::to_string(second + milliseconds % second).substr(1);
    fraction.erase(fraction.find_last_not_of('0') + 1);
    return text + '.' + fraction;
}

Json recordOf(const Sample& sample, bool bucket) {
    Json record = {{"time", epochText(sample.time)}, {"value", sample.value}};
    if (!bucket) {
        record["state"] = sample.normal ? 1 : 0;
        return record;
    }
    record["min"] = sample.low;
    record["max"] = sample.high;
    record["count"] = sample.count;
    return record;
}

} // namespace ipncsdk::sensor
