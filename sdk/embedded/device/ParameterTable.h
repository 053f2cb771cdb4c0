#pragma once

#include "base/JsonText.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace ipncsdk::device {

/// One device parameter: its name in "getcmds" and "setcmds", and what it takes.
struct Parameter {
    enum class Kind {
        Flag,    ///< 0 or 1; true and false are taken too
        Integer, ///< `low` to `high`
        Text,    ///< up to `high` characters
        Secret,  ///< a text that is never read back: reads give `secretMask` when one is set
        Command  ///< does something when written, can't be read
    };
    const char* name;
    Kind kind;
    bool writable;
    std::int64_t low;
    std::int64_t high;
    std::int64_t number; ///< default of a Flag or Integer
    const char* text;    ///< default of a Text or Secret
};

/// What a set secret reads as; written back, it leaves the secret as it is.
constexpr auto secretMask = "********";

const std::vector<Parameter>& parameterTable();
/// Null for an unknown name.
const Parameter* findParameter(std::string_view name);

/// The default as it is read.
Json defaultValue(const Parameter& parameter);
/// The value as the store keeps it, or nothing when it is of the wrong type or out of range.
std::optional<Json> acceptedValue(const Parameter& parameter, const Json& value);

} // namespace ipncsdk::device
