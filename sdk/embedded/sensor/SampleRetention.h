#pragma once

namespace ipncsdk::sensor {

/// How long samples are kept.
struct SampleRetention {
    int rawDays = 7;      ///< as they were read
    int minuteDays = 365; ///< as means of minutes
};

} // namespace ipncsdk::sensor
