#include "service/Params.h"

#include "base/Text.h"

#include <charconv>

namespace ipncsdk::service {

std::optional<std::string> nameAt(const Json& params, const char* key) {
    auto name = textAt(params, key);
    if (!name || !isPlainText(*name, longestName) || name->find_first_not_of(' ') == std::string::npos)
        return std::nullopt;
    return name;
}

std::optional<std::string> phoneAt(const Json& params, const char* key) {
    auto phone = textAt(params, key);
    return phone && isPhoneNumber(*phone) ? phone : std::nullopt;
}

bool isGiven(const Json& params, const char* key) {
    const Json* const value = memberAt(params, key);
    if (value == nullptr || value->is_null())
        return false;
    const auto* const text = value->get_ptr<const std::string*>();
    return text == nullptr || !text->empty();
}

std::optional<long long> idAt(const Json& params, const char* key) {
    if (const auto number = integerAt(params, key))
        return *number;
    const auto text = textAt(params, key);
    if (!text)
        return std::nullopt;
    long long id = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), id);
    return error == std::errc() && end == text->data() + text->size() ? id : 0;
}

std::optional<store::GroupId> groupIdAt(const Json& params, const char* key) {
    return idAt(params, key);
}

std::optional<std::size_t> indexAt(const Json& params, const char* key) {
    constexpr std::int64_t largest = 1'000'000;
    const auto index = integerAt(params, key);
    if (!index || *index < 0 || *index > largest)
        return std::nullopt;
    return static_cast<std::size_t>(*index);
}

} // namespace ipncsdk::service
