#include "base/JsonText.h"

#include <cmath>
#include <limits>
#include <utility>

namespace ipncsdk {

const char* jsonTextRefusal(std::string_view text) {
    if (text.size() > longestJsonText)
        return "the text is too long";
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '{' || c == '[') {
            if (++depth > deepestJsonNesting)
                return "the text is nested too deep";
        } else if (c == '}' || c == ']') {
            --depth;
        }
    }
    return nullptr;
}

std::optional<Json> parseObject(std::string_view text, std::string& reason) {
    if (const char* refusal = jsonTextRefusal(text); refusal != nullptr) {
        reason = refusal;
        return std::nullopt;
    }
    Json value = Json::parse(text, nullptr, false);
    if (value.is_discarded()) {
        reason = "the text is not JSON";
        return std::nullopt;
    }
    if (!value.is_object()) {
        reason = "the text is not a JSON object";
        return std::nullopt;
    }
    return std::make_optional(std::move(value));
}

std::string toText(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

const Json* memberAt(const Json& object, const char* key) {
    if (!object.is_object())
        return nullptr;
    const auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

std::optional<std::string> textAt(const Json& object, const char* key) {
    const Json* member = memberAt(object, key);
    if (member == nullptr || !member->is_string())
        return std::nullopt;
    return member->get<std::string>();
}

std::optional<std::int64_t> integerOf(const Json& value) {
    if (value.is_number_unsigned()) {
        const auto number = value.get<std::uint64_t>();
        if (number > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
            return std::nullopt;
        return static_cast<std::int64_t>(number);
    }
    if (value.is_number_integer())
        return value.get<std::int64_t>();
    if (value.is_number_float()) {
        const auto number = value.get<double>();
        constexpr double exactUpTo = 9007199254740992.0; // 2^53
        if (number != std::floor(number) || std::abs(number) > exactUpTo)
            return std::nullopt;
        return static_cast<std::int64_t>(number);
    }
    return std::nullopt;
}

std::optional<std::int64_t> integerAt(const Json& object, const char* key) {
    const Json* member = memberAt(object, key);
    return member == nullptr ? std::nullopt : integerOf(*member);
}

std::optional<bool> flagAt(const Json& object, const char* key) {
    const Json* member = memberAt(object, key);
    if (member == nullptr || !member->is_boolean())
        return std::nullopt;
    return member->get<bool>();
}

} // namespace ipncsdk
