#pragma once

#include "base/JsonText.h"
#include "sensor/SampleFile.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace ipncsdk::sensor {

/// Which samples are wanted. Times are milliseconds since 1970; both ends are included.
struct SampleQuery {
    std::vector<int> inputs;
    std::optional<std::int64_t> begin; ///< the oldest, when `oldest`; nothing: the last ones up to `end`
    std::optional<std::int64_t> end;   ///< nothing: the newest
    bool forward = false;              ///< the first ones from `begin` on, else the last ones
    std::size_t most = 10000;          ///< records of one input
    std::int64_t step = 0;             ///< seconds of a bucket; 0: the records as they are
};

inline constexpr std::size_t mostInputsAsked = 2000;
inline constexpr std::size_t mostRecords = 100000; ///< of one input

/// Reads the keys of a request; nothing when one of them makes no sense.
std::optional<SampleQuery> sampleQuery(const Json& request);

/// A sample, or a bucket of them.
struct Sample {
    std::int64_t time = 0; ///< of a bucket: its begin
    double value = 0;      ///< of a bucket: the mean
    bool normal = true;
    double low = 0;
    double high = 0;
    std::int64_t count = 1; ///< readings that it stands for
};

struct SampleRange {
    std::vector<Sample> samples; ///< in time's order
    bool more = false;           ///< there are further ones in the range
    std::int64_t next = 0;       ///< where the next part begins, when read forward
    std::int64_t rows = 0;       ///< rows of the file that were looked at
};

/// The samples of one input, of those asked for.
SampleRange readRange(SampleFile& file, int pid, const SampleQuery& query);

/// How many rows a query has to look at.
std::int64_t countRows(SampleFile& file, int pid, const SampleQuery& query);

/// The record of the response.
Json recordOf(const Sample& sample, bool bucket);

/// "1732233600.25": seconds with as many digits as are needed.
std::string epochText(std::int64_t milliseconds);

} // namespace ipncsdk::sensor
