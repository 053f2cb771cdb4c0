#include "device/Firmware.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace ipncsdk::device {

namespace {

struct Row {
    std::string_view model;
    Firmware firmware;
};

constexpr std::array rows = {
    Row{"CV-D200", {"3.5.0", 11'862'016, "改进夜视画面；修复存储卡偶尔无法识别的问题。"}},
    Row{"CV-B210", {"3.5.0", 12'124'160, "改进夜视画面；降低低码流时的延迟。"}},
    Row{"CV-P300", {"3.6.2", 14'680'064, "云台转动更平稳；新增巡航停留时间设置。"}},
};

constexpr std::string_view fileMark = "ipnc-firmware ";
constexpr std::size_t longestVersion = 32;

/// Takes the number before the next dot off the front; -1 when there is none.
int takeNumber(std::string_view& text) {
    const std::size_t dot = std::min(text.find('.'), text.size());
    int number = -1;
    std::from_chars(text.data(), text.data() + dot, number);
    text.remove_prefix(std::min(text.size(), dot + 1));
    return number;
}

} // namespace

const Firmware* newestFirmware(std::string_view model) {
    const auto found = std::find_if(rows.begin(), rows.end(), [model](const Row& row) { return row.model == model; });
    return found == rows.end() ? nullptr : &found->firmware;
}

bool isNewer(std::string_view a, std::string_view b) {
    while (!a.empty() || !b.empty()) {
        const int left = takeNumber(a);
        const int right = takeNumber(b);
        if (left != right)
            return left > right;
    }
    return false;
}

std::optional<Json> newestVersionFor(const Json& info) {
    const Firmware* const firmware = newestFirmware(textAt(info, "model").value_or(""));
    if (firmware == nullptr)
        return std::nullopt;
    const std::string installed = textAt(info, "softwareversion").value_or("");
    if (!isNewer(firmware->version, installed))
        return std::make_optional(Json{{"softwareversion", installed}, {"size", 0}, {"text", ""}});
    return std::make_optional(
        Json{{"softwareversion", firmware->version}, {"size", firmware->size}, {"text", firmware->notes}});
}

std::string versionInFile(std::string_view beginning) {
    if (beginning.substr(0, fileMark.size()) != fileMark)
        return {};
    std::string_view line = beginning.substr(fileMark.size());
    line = line.substr(0, line.find_first_of("\r\n"));
    const bool good = !line.empty() && line.size() <= longestVersion &&
                      line.find_first_not_of("0123456789.") == std::string_view::npos && line.front() != '.' &&
                      line.back() != '.';
    return good ? std::string(line) : std::string();
}

} // namespace ipncsdk::device
