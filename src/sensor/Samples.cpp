#include "sensor/Samples.h"

#include <QDateTime>
#include <QDebug>

#include <algorithm>
#include <cmath>

namespace corvanta::sensor {
namespace {

constexpr double DayAhead = 86400; // s

bool isEarlier(const Sample& a, const Sample& b) {
    return a.time < b.time;
}

} // namespace

std::optional<double> readNumber(const QVariant& value) {
    if (value.type() == QVariant::Bool)
        return std::nullopt;
    bool ok = false;
    const double number = value.toDouble(&ok);
    return ok && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<double> readTime(const QVariant& value) {
    const auto time = readNumber(value);
    const double now = static_cast<double>(QDateTime::currentSecsSinceEpoch());
    return time && *time > 0 && *time < now + DayAhead ? time : std::nullopt;
}

std::optional<Sample> readSample(const QVariantMap& record) {
    const auto time = readTime(record.value(QStringLiteral("time")));
    const auto value = readNumber(record.value(QStringLiteral("value")));
    if (!time || !value)
        return std::nullopt;
    Sample sample{*time, *value, *value, *value};
    const auto low = readNumber(record.value(QStringLiteral("min")));
    const auto high = readNumber(record.value(QStringLiteral("max")));
    if (low && high && *low <= *value && *high >= *value) {
        sample.low = *low;
        sample.high = *high;
    }
    const QVariant state = record.value(QStringLiteral("state"));
    sample.isNormal = !state.isValid() || state.toInt() == 1;
    return sample;
}

Samples readSamples(const QVariantList& records) {
    Samples samples;
    samples.reserve(static_cast<std::size_t>(records.size()));
    for (const QVariant& record : records) {
        if (const auto sample = readSample(record.toMap()))
            samples.push_back(*sample);
    }
    if (samples.size() != static_cast<std::size_t>(records.size()))
        qDebug() << "samples that are none were left out:" << records.size() - static_cast<int>(samples.size());
    std::stable_sort(samples.begin(), samples.end(), isEarlier);
    const auto last = std::unique(samples.begin(), samples.end(),
                                  [](const Sample& a, const Sample& b) { return a.time == b.time; });
    samples.erase(last, samples.end());
    return samples;
}

void mergeInto(Samples& samples, const Samples& more) {
    if (more.empty())
        return;
    if (samples.empty() || samples.back().time < more.front().time) {
        samples.insert(samples.end(), more.begin(), more.end());
        return;
    }
    Samples all;
    all.reserve(samples.size() + more.size());
    // Of equal ones those of the first list come first, and the first is kept.
    std::merge(more.begin(), more.end(), samples.begin(), samples.end(), std::back_inserter(all), isEarlier);
    const auto last =
        std::unique(all.begin(), all.end(), [](const Sample& a, const Sample& b) { return a.time == b.time; });
    all.erase(last, all.end());
    samples = std::move(all);
}

const Sample* sampleAt(const Samples& samples, double time) {
    const auto after = std::upper_bound(samples.begin(), samples.end(), time,
                                        [](double wanted, const Sample& sample) { return wanted < sample.time; });
    return after == samples.begin() ? nullptr : &*(after - 1);
}

} // namespace corvanta::sensor
