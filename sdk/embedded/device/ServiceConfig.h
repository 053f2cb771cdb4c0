#pragma once

#include "base/JsonText.h"
#include "sensor/SampleRetention.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ipncsdk::device {

/// A camera of the configuration file: on the network, or a recorded file that is played as one.
struct NetworkCamera {
    std::string ipncid;
    std::string name;
    std::string mainUrl;  ///< "rtsp://..." or "file:..."
    std::string lightUrl; ///< equal to `mainUrl` when the file names none
    std::string onvifUrl; ///< its device service, "http://...", "https://..." or "host[:port]"; empty: none is used
    std::string user;
    std::string password;
    std::string group; ///< name of a group; empty means the first one
    int line = 0;      ///< of its entry in the file
};

/// The server that takes text messages.
struct SmsGatewayConfig {
    std::string url; ///< "http://..." or "https://..."; empty when the entry has a mistake: nothing can be sent then
    std::string token; ///< sent as a bearer token unless empty
};

/// A board that is entered into a device at each start.
struct ConfiguredBoard {
    std::string ipncid;
    Json board;
    int line = 0;    ///< of its entry in the file
    std::string key; ///< such as "sensors[0]"
};

/// The MQTT broker that takes notices for the phone app.
struct NoticesConfig {
    std::string host;
    int port = 1883;
    std::string user; ///< empty: none
    std::string password;
    std::string topic = "notices"; ///< notices go to TOPIC/<phone number>
};

struct ConfigMistake {
    enum class Kind {
        Unreadable,
        NotJson,
        WrongType,
        Missing,
        BadText,
        BadId,
        DuplicateId,
        BadAddress,
        UnknownKey,
        DuplicateKey,
        UnknownGroup,
        IdTaken,
        BadGateway,
        BadNumber,
        NoDevice,
        BadBoard,
        BadBroker
    };
    Kind kind = Kind::NotJson;
    int line = 0;          ///< from 1; 0 when no line is meant
    std::string key;       ///< such as "cameras[1].main"
    std::string text = {}; ///< what is wrong in further words, Chinese; may be empty

    /// For the log.
    [[nodiscard]] std::string english() const;
    /// For the user.
    [[nodiscard]] std::string chinese() const;
};

struct ServiceConfig {
    std::string store = "service/service.db"; ///< UTF-8; relative to the data root
    std::vector<NetworkCamera> cameras;
    std::optional<SmsGatewayConfig> smsGateway;
    sensor::SampleRetention samples;
    std::vector<ConfiguredBoard> boards;
    std::optional<NoticesConfig> notices; ///< nothing when the entry is missing or has a mistake
    std::vector<ConfigMistake> mistakes;
};

constexpr auto configFileName = "config/service.json";

/// Reads a configuration text: what is wrong is named and left out, the rest serves.
ServiceConfig parseServiceConfig(std::string_view text);

/// Reads `config/service.json` below `root`; a missing file is written with its defaults, so that the user finds it.
ServiceConfig loadServiceConfig(const std::filesystem::path& root);

/// Host and port of an address of the form rtsp://[user[:password]@]host[:port][/path]; nothing when it is not one.
struct RtspAddress {
    std::string host;
    int port = 554;
    std::string withoutPassword; ///< the address with user name and password left out
};
std::optional<RtspAddress> parseRtspAddress(std::string_view url);

/// True for an address of a camera's device service: "http(s)://host[:port][/path]" or "host[:port]".
bool isCameraService(const std::string& url);

/// The file that an address of the form file:///absolute/path or file:path/from/the/root names; nothing when it is
/// not one. The path is UTF-8, without percent-encoding, and leads nowhere through "..".
std::optional<std::filesystem::path> parseFileAddress(std::string_view url);

} // namespace ipncsdk::device
