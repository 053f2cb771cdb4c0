#pragma once

#include "base/JsonText.h"

#include <string>

namespace ipncsdk::sensor {

/// What the record of a positioning sensor has under "protocol".
inline constexpr auto positionProtocol = "4353";

/// A positioning sensor: it measures where something is, in metres, by points whose place is known.
bool isPositionBoard(const Json& record);

/// Completes the record of a positioning sensor: "protocol", and "info"."locations" with the reference points, whose
/// numbers become texts. Returns what is wrong, in Chinese, or an empty text.
std::string completePosition(Json& record);

/// The reference points of a record, [{"x": text, "y": text}...]; empty when it has none that can be read.
Json locationsOf(const Json& record);

/// The way of a simulated positioning sensor along one axis: back and forth between its reference points. It depends
/// on the board and the time alone.
class SimulatedWalk final {
public:
    explicit SimulatedWalk(const Json& record);
    /// Metres along "x" or "y"; `seconds` since the beginning of 1970.
    [[nodiscard]] double at(bool alongX, double seconds) const;

private:
    struct Extent {
        double low = 0;
        double high = 10;
    };
    Extent x_;
    Extent y_;
};

} // namespace ipncsdk::sensor
