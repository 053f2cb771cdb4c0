#pragma once

#include "api/Request.h"
#include "api/Worker.h"
#include "base/Clock.h"
#include "base/JsonText.h"
#include "base/Reply.h"
#include "device/CardFiles.h"
#include "device/LoopDevice.h"
#include "device/NetworkCameras.h"
#include "device/Rights.h"
#include "media/loop/LoopClips.h"
#include "service/Session.h"
#include "store/Database.h"

#include <atomic>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <variant>
#include <vector>

namespace ipncsdk::api {

/// Files that go to devices and come from them: the card's list and content, firmware. Checks are done on the service
/// worker, where all requests begin; the rest takes its time on a worker of its own.
class DeviceFiles final {
public:
    struct Parts {
        store::Database& database;
        device::NetworkCameras& cameras;
        device::LoopDevices& loops;
        const service::Session& session;
        RequestTable& requests;
        Worker& files; ///< one thread; outlived by this
        const std::atomic<bool>& stopping;
        std::filesystem::path loopFolder;
        std::filesystem::path datFolder; ///< of the sensor data of alarms
    };

    explicit DeviceFiles(Parts parts);
    DeviceFiles(const DeviceFiles&) = delete;
    DeviceFiles& operator=(const DeviceFiles&) = delete;

    /// True for a "p2pmsg" that is about the card's files; those are answered here.
    static bool isAboutFiles(const Json& message);
    void cardRequest(const std::shared_ptr<Request>& request, const Json& message);
    /// "downsdfile"
    void download(const std::shared_ptr<Request>& request, const Json& message);
    /// "uploadipncfile"
    void upload(const std::shared_ptr<Request>& request, const Json& message);

private:
    using Pointer = std::shared_ptr<Request>;
    struct Found {
        media::LoopSource source;
        std::string ipncid;
        std::vector<device::CardFile> files;
    };

    /// A loop camera that the account may ask for its files, or why not.
    std::variant<ServiceCode, Found> lookUp(const std::string& ipncid, device::Right right);
    void list(const Pointer& request, const Json& wishes, const Json& message);
    /// "downsdfile" of the sensor data of an alarm.
    void downloadLog(const Pointer& request, const std::string& ipncid, const std::string& name,
                     const std::filesystem::path& target);
    ServiceCode mayReadLog(const std::string& ipncid, const std::string& name);
    Reply remove(const std::string& ipncid, const Json& paths);
    [[nodiscard]] bool isCancelled(const Request& request) const { return parts_.stopping || request.hasEnded(); }

    // On the files' worker.
    std::vector<std::uint8_t> bytesOf(const Found& camera, const device::CardFile& file, const Request& request);
    /// Nothing when the file cannot be made.
    std::optional<std::size_t> sizeOf(const Found& camera, const device::CardFile& file, const Request& request);
    ServiceCode save(const Request& request, const std::vector<std::uint8_t>& bytes,
                     const std::filesystem::path& target, const std::function<void(std::size_t)>& progress) const;

    void respond(const Pointer& request, const std::string& ipncid, const Reply& reply);
    /// Ends a flow.
    void finish(const Pointer& request, const char* type, ServiceCode code, std::size_t total);

    const Parts parts_;
    media::LoopClips clips_; ///< belongs to the files' worker, as `sizes_`
    /// Bytes of files that were made before: the camera's title, scene and phase, format, first group, seconds.
    std::map<std::tuple<std::string, int, unsigned, int, std::size_t, std::size_t>, std::size_t> sizes_;
};

} // namespace ipncsdk::api
