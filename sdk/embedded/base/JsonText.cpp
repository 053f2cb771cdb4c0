#include "base/JsonText.h"

#include "base/Text.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>
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

std::optional<double> numberOf(const Json& value) {
    double number = 0;
    if (value.is_number()) {
        number = value.get<double>();
    } else if (const auto* const text = value.get_ptr<const std::string*>(); text != nullptr) {
        const char* const end = text->data() + text->size();
        const auto parsed = std::from_chars(text->data(), end, number);
        if (parsed.ec != std::errc() || parsed.ptr != end)
            return std::nullopt;
    } else {
        return std::nullopt;
    }
    return std::isfinite(number) ? std::make_optional(number) : std::nullopt;
}

std::optional<std::filesystem::path> absolutePathAt(const Json& object, const char* key) {
    constexpr std::size_t longest = 4096;
    const auto text = textAt(object, key);
    if (!text || text->empty() || !isPlainText(*text, longest))
        return std::nullopt;
    std::filesystem::path path(std::u8string(text->begin(), text->end()));
    return path.is_absolute() && path.has_filename() ? std::make_optional(std::move(path)) : std::nullopt;
}

} // namespace ipncsdk
