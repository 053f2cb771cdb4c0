#include "device/ServiceConfig.h"

#include "base/Log.h"
#include "base/Text.h"
#include "device/LineJson.h"
#include "onvif/Url.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <system_error>
#include <utility>

namespace ipncsdk::device {

namespace {

namespace fs = std::filesystem;
using Kind = ConfigMistake::Kind;

constexpr std::size_t longestText = 256;
constexpr std::size_t longestPath = 1024;
constexpr std::size_t mostCameras = 1000;
constexpr std::size_t mostBoards = 1000;

constexpr auto emptyConfig = R"({
  "store": "service/service.db",
  "cameras": []
}
)";

struct MistakeText {
    Kind kind;
    const char* english;
    const char* chinese;
};

constexpr std::array mistakeTexts = {
    MistakeText{Kind::Unreadable, "the file can't be read", "文件无法读取"},
    MistakeText{Kind::NotJson, "this is not JSON", "不是有效的 JSON"},
    MistakeText{Kind::WrongType, "the value is of the wrong type", "值的类型不正确"},
    MistakeText{Kind::Missing, "the key is missing", "缺少该项"},
    MistakeText{Kind::BadText, "the text is empty, too long or holds characters that may not stand here",
                "文本为空、过长或包含不允许的字符"},
    MistakeText{Kind::BadId, "this can't be an id: no separators, no \"..\", 1 to 64 characters",
                "不能用作设备编号: 不允许路径分隔符和 \"..\", 长度 1 至 64 个字符"},
    MistakeText{Kind::DuplicateId, "another entry above has this id", "设备编号与前面的条目重复"},
    MistakeText{Kind::BadAddress, "this is not an address of the form rtsp://host[:port]/path or file:path",
                "不是 rtsp://主机[:端口]/路径 或 file:路径 形式的地址"},
    MistakeText{Kind::UnknownKey, "the key is not known and is passed over", "未知的项, 已忽略"},
    MistakeText{Kind::DuplicateKey, "the key stands here twice, the first one counts", "该项重复, 以第一个为准"},
    MistakeText{Kind::UnknownGroup, "no group has this name, the first one is taken",
                "没有该名称的分组, 已放入第一个分组"},
    MistakeText{Kind::IdTaken, "a device of the service has this id", "设备编号已被其它设备使用"},
    MistakeText{Kind::BadGateway, "this is not an address of the form http(s)://host[:port]/path",
                "不是 http(s)://主机[:端口]/路径 形式的地址"},
    MistakeText{Kind::BadNumber, "this is not a whole number within its limits", "不是允许范围内的整数"},
    MistakeText{Kind::NoDevice, "there is no such device", "没有该编号的设备"},
    MistakeText{Kind::BadBoard, "the board can't be entered", "传感器无法加入"},
    MistakeText{Kind::BadBroker, "this is not an address of the form host[:port]", "不是 主机[:端口] 形式的地址"},
};

const MistakeText& textOf(Kind kind) {
    return *std::find_if(mistakeTexts.begin(), mistakeTexts.end(),
                         [kind](const MistakeText& text) { return text.kind == kind; });
}

/// Reads the members of one object of the file, naming what is wrong with them.
class ObjectReader {
public:
    ObjectReader(const LineNode& object, std::string path, std::vector<ConfigMistake>& mistakes)
        : object_(object)
        , path_(std::move(path))
        , mistakes_(mistakes) {}

    void note(Kind kind, int line, const std::string& key) { mistakes_.push_back({kind, line, path_ + key}); }

    /// Names members that are not among `known` or stand twice.
    void checkKeys(std::initializer_list<std::string_view> known) {
        for (auto member = object_.members.begin(); member != object_.members.end(); ++member) {
            const auto same = [&](const LineMember& other) {
                return other.key == member->key;
            };
            if (std::find(known.begin(), known.end(), member->key) == known.end())
                note(Kind::UnknownKey, member->line, member->key);
            else if (std::any_of(object_.members.begin(), member, same))
                note(Kind::DuplicateKey, member->line, member->key);
        }
    }

    const LineMember* find(const char* key) const {
        const auto found = std::find_if(object_.members.begin(), object_.members.end(),
                                        [key](const LineMember& member) { return member.key == key; });
        return found == object_.members.end() ? nullptr : &*found;
    }

    /// False when the member is there and can't serve; a missing one leaves `value` as it is.
    bool text(const char* key, std::size_t longest, std::string& value) {
        const LineMember* member = find(key);
        if (member == nullptr)
            return true;
        if (member->value.kind != LineNode::Kind::Text)
            return note(Kind::WrongType, member->value.line, key), false;
        if (!isPlainText(member->value.text, longest))
            return note(Kind::BadText, member->value.line, key), false;
        value = member->value.text;
        return true;
    }

    /// A member that must be there and stand the check.
    template <typename Check>
    bool required(const char* key, Kind kind, const Check& check, std::string& value) {
        const LineMember* member = find(key);
        if (member == nullptr)
            return note(Kind::Missing, object_.line, key), false;
        return optional(key, kind, check, value);
    }

    /// A member that must stand the check when it is there.
    template <typename Check>
    bool optional(const char* key, Kind kind, const Check& check, std::string& value) {
        const LineMember* member = find(key);
        if (member == nullptr)
            return true;
        if (member->value.kind != LineNode::Kind::Text)
            return note(Kind::WrongType, member->value.line, key), false;
        if (!check(member->value.text))
            return note(kind, member->value.line, key), false;
        value = member->value.text;
        return true;
    }

private:
    const LineNode& object_;
    std::string path_;
    std::vector<ConfigMistake>& mistakes_;
};

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return text;
}

/// Ids that differ in case alone would share a folder on some file systems.
bool isTaken(const ServiceConfig& config, const std::string& ipncid) {
    const auto same = [&](const NetworkCamera& other) {
        return lowered(other.ipncid) == lowered(ipncid);
    };
    return std::any_of(config.cameras.begin(), config.cameras.end(), same);
}

void readCamera(const LineNode& node, const std::string& path, ServiceConfig& config) {
    if (node.kind != LineNode::Kind::Object) {
        config.mistakes.push_back({Kind::WrongType, node.line, path});
        return;
    }
    ObjectReader reader(node, path + ".", config.mistakes);
    reader.checkKeys({"ipncid", "name", "main", "light", "onvif", "user", "password", "group"});
    NetworkCamera camera;
    camera.line = node.line;
    const auto isAddress = [](const std::string& url) {
        return parseRtspAddress(url).has_value() || parseFileAddress(url).has_value();
    };
    // Every member is looked at, so that one start names all mistakes of an entry.
    bool usable = reader.required("ipncid", Kind::BadId, isDeviceId, camera.ipncid);
    usable = reader.required("main", Kind::BadAddress, isAddress, camera.mainUrl) && usable;
    usable = reader.optional("light", Kind::BadAddress, isAddress, camera.lightUrl) && usable;
    usable = reader.optional("onvif", Kind::BadAddress, isCameraService, camera.onvifUrl) && usable;
    usable = reader.text("name", longestText, camera.name) && usable;
    usable = reader.text("user", longestText, camera.user) && usable;
    usable = reader.text("password", longestText, camera.password) && usable;
    usable = reader.text("group", longestText, camera.group) && usable;
    if (!camera.ipncid.empty() && isTaken(config, camera.ipncid)) {
        reader.note(Kind::DuplicateId, reader.find("ipncid")->line, "ipncid");
        usable = false;
    }
    if (!usable)
        return;
    if (camera.name.empty())
        camera.name = camera.ipncid;
    if (camera.lightUrl.empty())
        camera.lightUrl = camera.mainUrl;
    config.cameras.push_back(std::move(camera));
}

void readCameras(const LineMember& member, ServiceConfig& config) {
    if (member.value.kind != LineNode::Kind::List) {
        config.mistakes.push_back({Kind::WrongType, member.value.line, "cameras"});
        return;
    }
    for (std::size_t i = 0; i < member.value.items.size() && i < mostCameras; ++i)
        readCamera(member.value.items[i], "cameras[" + std::to_string(i) + "]", config);
}

bool isWebAddress(const std::string& url) {
    const std::string start = lowered(url.substr(0, 8));
    const std::size_t host = start == "https://" ? 8 : start.compare(0, 7, "http://") == 0 ? 7 : 0;
    return host != 0 && url.size() > host && url[host] != '/' && isPlainText(url, longestPath) &&
           url.find(' ') == std::string::npos;
}

/// A gateway with a mistake stays one: codes that were meant for a phone must not be shown instead.
void readGateway(const LineMember& member, ServiceConfig& config) {
    config.smsGateway = SmsGatewayConfig{};
    if (member.value.kind != LineNode::Kind::Object) {
        config.mistakes.push_back({Kind::WrongType, member.value.line, "smsgateway"});
        return;
    }
    ObjectReader reader(member.value, "smsgateway.", config.mistakes);
    reader.checkKeys({"url", "token"});
    SmsGatewayConfig gateway;
    bool usable = reader.required("url", Kind::BadGateway, isWebAddress, gateway.url);
    usable = reader.text("token", longestPath, gateway.token) && usable;
    if (usable)
        config.smsGateway = std::move(gateway);
}

void readRetention(const LineMember& member, ServiceConfig& config) {
    constexpr std::int64_t mostRawDays = 3650;
    constexpr std::int64_t mostMinuteDays = 36500;
    if (member.value.kind != LineNode::Kind::Object) {
        config.mistakes.push_back({Kind::WrongType, member.value.line, "samples"});
        return;
    }
    ObjectReader reader(member.value, "samples.", config.mistakes);
    reader.checkKeys({"rawdays", "minutedays"});
    const auto days = [&](const char* key, std::int64_t most, int& value) {
        const LineMember* const entry = reader.find(key);
        if (entry == nullptr)
            return;
        const auto number = integerOf(toJson(entry->value));
        if (number && *number >= 1 && *number <= most)
            value = static_cast<int>(*number);
        else
            reader.note(Kind::BadNumber, entry->value.line, key);
    };
    days("rawdays", mostRawDays, config.samples.rawDays);
    days("minutedays", mostMinuteDays, config.samples.minuteDays);
}

void readBoard(const LineNode& node, const std::string& path, ServiceConfig& config) {
    if (node.kind != LineNode::Kind::Object) {
        config.mistakes.push_back({Kind::WrongType, node.line, path});
        return;
    }
    ObjectReader reader(node, path + ".", config.mistakes);
    reader.checkKeys({"ipncid", "sensorinfo"});
    ConfiguredBoard board;
    board.line = node.line;
    board.key = path;
    const bool usable = reader.required("ipncid", Kind::BadId, isDeviceId, board.ipncid);
    const LineMember* const info = reader.find("sensorinfo");
    if (info == nullptr)
        return reader.note(Kind::Missing, node.line, "sensorinfo");
    if (info->value.kind != LineNode::Kind::Object)
        return reader.note(Kind::WrongType, info->value.line, "sensorinfo");
    board.board = toJson(info->value);
    if (usable)
        config.boards.push_back(std::move(board));
}

void readBoards(const LineMember& member, ServiceConfig& config) {
    if (member.value.kind != LineNode::Kind::List) {
        config.mistakes.push_back({Kind::WrongType, member.value.line, "sensors"});
        return;
    }
    for (std::size_t i = 0; i < member.value.items.size() && i < mostBoards; ++i)
        readBoard(member.value.items[i], "sensors[" + std::to_string(i) + "]", config);
}

/// Splits host[:port] into the config's host and port.
bool readBroker(const std::string& address, NoticesConfig& notices) {
    const std::size_t colon = address.rfind(':');
    notices.host = address.substr(0, colon);
    if (notices.host.empty() || notices.host.find_first_of(" /\\@:") != std::string::npos ||
        !isPlainText(notices.host, longestText))
        return false;
    if (colon == std::string::npos)
        return true;
    constexpr int highestPort = 65535;
    const char* const last = address.data() + address.size();
    const auto [end, error] = std::from_chars(address.data() + colon + 1, last, notices.port);
    return error == std::errc() && end == last && notices.port > 0 && notices.port <= highestPort;
}

void readNotices(const LineMember& member, ServiceConfig& config) {
    if (member.value.kind != LineNode::Kind::Object) {
        config.mistakes.push_back({Kind::WrongType, member.value.line, "notices"});
        return;
    }
    ObjectReader reader(member.value, "notices.", config.mistakes);
    reader.checkKeys({"broker", "user", "password", "topic"});
    NoticesConfig notices;
    std::string broker;
    // Wildcards are for those who listen; a slash at an end would make a level without a name.
    const auto isTopic = [](const std::string& topic) {
        return !topic.empty() && isPlainText(topic, longestText) && topic.find_first_of("#+$") == std::string::npos &&
               topic.front() != '/' && topic.back() != '/';
    };
    const auto isBroker = [&notices](const std::string& address) {
        return readBroker(address, notices);
    };
    bool usable = reader.required("broker", Kind::BadBroker, isBroker, broker);
    usable = reader.text("user", longestText, notices.user) && usable;
    usable = reader.text("password", longestText, notices.password) && usable;
    usable = reader.optional("topic", Kind::BadText, isTopic, notices.topic) && usable;
    if (usable)
        config.notices = std::move(notices);
}

bool isStorePath(const std::string& path) {
    return !path.empty() && isPlainText(path, longestPath) && path.find('"') == std::string::npos;
}

void writeDefault(const fs::path& file) {
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    std::ofstream out(file, std::ios::binary);
    out << emptyConfig;
    out.close();
    if (!out)
        logLine(std::string(configFileName) + " is missing and can't be written");
}

} // namespace

bool isCameraService(const std::string& url) {
    return isPlainText(url, longestPath) && onvif::deviceServiceUrl(url).has_value();
}

std::string ConfigMistake::english() const {
    return std::string(configFileName) + (line > 0 ? ", line " + std::to_string(line) : "") +
           (key.empty() ? "" : ", \"" + key + "\"") + ": " + textOf(kind).english;
}

std::string ConfigMistake::chinese() const {
    return std::string(configFileName) + (line > 0 ? " 第 " + std::to_string(line) + " 行" : "") +
           (key.empty() ? "" : " \"" + key + "\"") + ": " + textOf(kind).chinese + (text.empty() ? "" : ": " + text);
}

ServiceConfig parseServiceConfig(std::string_view text) {
    ServiceConfig config;
    const LineParse parsed = parseWithLines(text);
    if (!parsed.ok) {
        config.mistakes.push_back({Kind::NotJson, parsed.line, {}});
        return config;
    }
    if (parsed.root.kind != LineNode::Kind::Object) {
        config.mistakes.push_back({Kind::WrongType, parsed.root.line, {}});
        return config;
    }
    ObjectReader reader(parsed.root, {}, config.mistakes);
    reader.checkKeys({"store", "smsgateway", "notices", "cameras", "samples", "sensors"});
    reader.optional("store", Kind::BadText, isStorePath, config.store);
    if (const LineMember* gateway = reader.find("smsgateway"); gateway != nullptr)
        readGateway(*gateway, config);
    if (const LineMember* notices = reader.find("notices"); notices != nullptr)
        readNotices(*notices, config);
    if (const LineMember* cameras = reader.find("cameras"); cameras != nullptr)
        readCameras(*cameras, config);
    if (const LineMember* samples = reader.find("samples"); samples != nullptr)
        readRetention(*samples, config);
    if (const LineMember* sensors = reader.find("sensors"); sensors != nullptr)
        readBoards(*sensors, config);
    return config;
}

ServiceConfig loadServiceConfig(const std::filesystem::path& root) {
    const fs::path file = root / configFileName;
    std::error_code error;
    if (!fs::exists(file, error)) {
        writeDefault(file);
        return {};
    }
    std::ifstream in(file, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(in), {}};
    if (!fs::is_regular_file(file, error) || in.bad() || !in) {
        // Reading to the end leaves a good stream; anything else means that bytes are missing.
        ServiceConfig config;
        config.mistakes.push_back({Kind::Unreadable, 0, {}});
        return config;
    }
    return parseServiceConfig(text);
}

} // namespace ipncsdk::device
