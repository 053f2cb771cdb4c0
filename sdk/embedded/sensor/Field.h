#pragma once

#include "base/JsonText.h"

#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::sensor {

/// One parameter of a board or of a port: what its value may be, and how a dialog shows it.
struct Field {
    enum class Kind { Int, Real, Text, Secret, Choice };

    struct Choice {
        Json value; ///< a text or a whole number
        const char* name;
    };

    /// The field counts only while a parameter of the board has one of these values.
    struct Condition {
        const char* key;
        std::vector<const char*> is;
    };

    const char* key;
    const char* name; ///< Chinese
    Kind kind = Kind::Int;
    double low = 0;  ///< of numbers the least value, of texts the least length in characters
    double high = 0; ///< likewise the greatest
    Json usual = {}; ///< taken when the value is missing; null: it must be there
    std::vector<Choice> choices = {};
    std::optional<Condition> when = std::nullopt;
};

/// The field as the client's dialogs read it.
Json toJson(const Field& field);

/// True when the field counts on a board with these parameters.
bool applies(const Field& field, const Json& boardParams);

/// Checks the values of `params` and adds those that are missing; keys that no field knows stay. Returns what is
/// wrong, in Chinese, or an empty text.
std::string completeParams(const std::vector<Field>& fields, const Json& boardParams, Json& params);

} // namespace ipncsdk::sensor
