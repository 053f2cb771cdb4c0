#pragma once

#include <QVariantList>

#include <optional>
#include <vector>

namespace corvanta::sensor {

/// A value at a moment, or what a span of time was put together to.
struct Sample {
    double time = 0;  ///< epoch, s; of a span its begin
    double value = 0; ///< of a span the mean
    double low = 0;   ///< of a single value that value itself, as is `high`
    double high = 0;
    bool isNormal = true; ///< communication worked
};
/// In time's order, each moment once.
using Samples = std::vector<Sample>;

/// A finite number, or a text that is one; nothing for everything else.
std::optional<double> readNumber(const QVariant& value);

/// A moment, epoch in seconds with or without a fraction, as a number or a text; nothing when it is none, lies before
/// 1970 or more than a day in the future, which no clock of a service may be off.
std::optional<double> readTime(const QVariant& value);

/// A record of the service; nothing when its time or its value is not one.
std::optional<Sample> readSample(const QVariantMap& record);

/// The records that are ones, put in order; what was left out is one debug line.
Samples readSamples(const QVariantList& records);

/// Adds samples; one of a moment that is there already replaces it.
void mergeInto(Samples& samples, const Samples& more);

/// The sample at a moment: the last that is not later, nothing before the first.
const Sample* sampleAt(const Samples& samples, double time);

} // namespace corvanta::sensor
