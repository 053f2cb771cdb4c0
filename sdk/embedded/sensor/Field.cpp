#include "sensor/Field.h"

#include "base/Text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <utility>

namespace ipncsdk::sensor {

namespace {

const char* kindName(Field::Kind kind) {
    switch (kind) {
    case Field::Kind::Int:
        return "int";
    case Field::Kind::Real:
        return "real";
    case Field::Kind::Text:
        return "text";
    case Field::Kind::Secret:
        return "secret";
    case Field::Kind::Choice:
        return "choice";
    }
    return "text";
}

std::string plain(double value) {
    char text[32] = {};
    std::snprintf(text, sizeof text, "%.6g", value);
    return text;
}

std::string wrongRange(const Field& field, const char* what) {
    return std::string(field.name) + what + plain(field.low) + "～" + plain(field.high);
}

bool isWithin(const Field& field, double value) {
    return std::isfinite(value) && value >= field.low && value <= field.high;
}

/// What is wrong with a value that is there.
std::string complaint(const Field& field, const Json& value) {
    switch (field.kind) {
    case Field::Kind::Int: {
        const auto number = integerOf(value);
        return number && isWithin(field, static_cast<double>(*number)) ? "" : wrongRange(field, "应为整数 ");
    }
    case Field::Kind::Real:
        return value.is_number() && isWithin(field, value.get<double>()) ? "" : wrongRange(field, "应为数值 ");
    case Field::Kind::Text:
    case Field::Kind::Secret: {
        const auto* const text = value.get_ptr<const std::string*>();
        const auto count = text != nullptr ? characterCount(*text) : std::nullopt;
        const bool good = count && isPlainText(*text, static_cast<std::size_t>(field.high)) &&
                          isWithin(field, static_cast<double>(*count));
        return good ? "" : wrongRange(field, "的字符数应为 ");
    }
    case Field::Kind::Choice:
        return std::any_of(field.choices.begin(), field.choices.end(),
                           [&](const Field::Choice& choice) { return choice.value == value; })
                   ? ""
                   : std::string(field.name) + "不是可选的值";
    }
    return {};
}

} // namespace

Json toJson(const Field& field) {
    Json json = {{"key", field.key}, {"name", field.name}, {"kind", kindName(field.kind)}};
    if (field.kind != Field::Kind::Choice) {
        json["low"] = field.low;
        json["high"] = field.high;
    }
    if (!field.usual.is_null())
        json["default"] = field.usual;
    for (const Field::Choice& choice : field.choices)
        json["choices"].push_back({{"value", choice.value}, {"name", choice.name}});
    if (field.when)
        json["when"] = {{"key", field.when->key}, {"is", field.when->is}};
    return json;
}

bool applies(const Field& field, const Json& boardParams) {
    if (!field.when)
        return true;
    const auto value = textAt(boardParams, field.when->key);
    return value && std::any_of(field.when->is.begin(), field.when->is.end(),
                                [&](std::string_view allowed) { return *value == allowed; });
}

std::string completeParams(const std::vector<Field>& fields, const Json& boardParams, Json& params) {
    for (const Field& field : fields) {
        if (!applies(field, boardParams))
            continue;
        const Json* const value = memberAt(params, field.key);
        if (value == nullptr && field.usual.is_null())
            return std::string("缺少") + field.name;
        if (value == nullptr) {
            params[field.key] = field.usual;
            continue;
        }
        if (std::string wrong = complaint(field, *value); !wrong.empty())
            return wrong;
    }
    return {};
}

} // namespace ipncsdk::sensor
