#include "api/DeviceFiles.h"

#include "api/SensorLog.h"
#include "base/Log.h"
#include "base/PartFile.h"
#include "base/Text.h"
#include "device/DeviceRequests.h"
#include "device/Firmware.h"
#include "store/Linkages.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace ipncsdk::api {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostFiles = 5000;
constexpr auto logPrefix = "dat/"; ///< of the paths of sensor data
constexpr std::size_t longestPath = 4096;
constexpr std::size_t partSize = std::size_t{64} * 1024; ///< between two messages of progress
constexpr std::uintmax_t largestUpload = std::uintmax_t{256} * 1024 * 1024;

/// One message of a flow.
std::string flowText(const char* type, int requestId, ServiceCode code, const char* state, std::size_t done,
                     std::size_t total) {
    Json message = {{"type", type},   {"reqid", requestId}, {"retcode", static_cast<int>(code)},
                    {"state", state}, {"done", done},       {"total", total}};
    if (code != ServiceCode::Done)
        message["errcode"] = errorText(code);
    return toText(message);
}

/// "20260401" as an entry of a list.
Json folderEntry(const device::CardFile& first) {
    return {
        {"name", first.folder}, {"path", first.folder}, {"kind", ""}, {"size", 0}, {"time", first.date + " 00:00:00"},
        {"dir", true}};
}

/// What an "sdlist" asks for; nothing when it is of wrong types.
struct ListWishes {
    std::string date;
    std::string kind;
    std::string folder;
};

std::optional<ListWishes> readListWishes(const Json& wishes, const Json& message) {
    const auto optionalText = [](const Json& object, const char* key) {
        return memberAt(object, key) == nullptr ? std::string() : textAt(object, key);
    };
    const auto date = optionalText(wishes, "date");
    const auto kind = optionalText(wishes, "kind");
    auto folder = optionalText(message, "filepathvalue");
    const bool typed = wishes.is_object() && date && kind && folder && isPlainText(*folder, longestPath);
    if (!typed || (!date->empty() && !device::isDate(*date)))
        return std::nullopt;
    if (!kind->empty() && *kind != "video" && *kind != "image")
        return std::nullopt;
    while (!folder->empty() && folder->back() == '/')
        folder->pop_back();
    return ListWishes{*date, *kind, *folder};
}

} // namespace

DeviceFiles::DeviceFiles(Parts parts)
    : parts_(std::move(parts))
    , clips_(parts_.loopFolder, [](const std::string& line) { logLine(line); }) {}

bool DeviceFiles::isAboutFiles(const Json& message) {
    const Json* const values = memberAt(message, "setcmds");
    return values != nullptr &&
           (memberAt(*values, "sdlist") != nullptr || memberAt(*values, "delsdfilelist") != nullptr);
}

void DeviceFiles::respond(const Pointer& request, const std::string& ipncid, const Reply& reply) {
    request->respond(responseText("p2pmsg", request->id(), reply, {{"ipncid", ipncid}}));
    parts_.requests.take(request->id());
}

void DeviceFiles::finish(const Pointer& request, const char* type, ServiceCode code, std::size_t total) {
    const bool good = code == ServiceCode::Done;
    request->respond(flowText(type, request->id(), code, good ? "ok" : "error", good ? total : 0, total));
    parts_.requests.take(request->id());
}

std::variant<ServiceCode, DeviceFiles::Found> DeviceFiles::lookUp(const std::string& ipncid, device::Right right) {
    const auto caller = parts_.session.current();
    if (!caller)
        return ServiceCode::NotSignedIn;
    Found found;
    const ServiceCode code = parts_.database.read("look up a device's files", [&](soci::session& sql) {
        const auto placed = device::visibleDevice(sql, caller->id, ipncid, parts_.cameras);
        if (!placed)
            return ServiceCode::UnknownDevice;
        if (!device::allows(*placed, right))
            return ServiceCode::NoRight;
        if (placed->device.origin != "loop")
            return ServiceCode::NotSupported;
        if (!device::isOnline(placed->device, parts_.cameras))
            return ServiceCode::DeviceOffline;
        const store::Device& device = placed->device;
        found.source = {device.name, static_cast<int>(device.scene), static_cast<unsigned>(device.phase)};
        found.ipncid = ipncid;
        found.files = device::cardFiles(ipncid, device::cardOf(sql, ipncid), parts_.loops.clock().now());
        return ServiceCode::Done;
    });
    if (code != ServiceCode::Done)
        return code;
    return found;
}

void DeviceFiles::cardRequest(const Pointer& request, const Json& message) {
    const std::string ipncid = textAt(message, "ipncid").value_or("");
    const std::string shown = isPlainText(ipncid, 64) ? ipncid : std::string();
    const Json& values = message["setcmds"];
    // Files are no parameters: they are not written along with any.
    if (values.size() != 1 || memberAt(message, "getcmds") != nullptr)
        return respond(request, shown, ServiceCode::BadRequest);
    if (const Json* const wishes = memberAt(values, "sdlist"))
        return list(request, *wishes, message);
    respond(request, shown, remove(ipncid, values["delsdfilelist"]));
}

void DeviceFiles::list(const Pointer& request, const Json& wishes, const Json& message) {
    const std::string ipncid = textAt(message, "ipncid").value_or("");
    const auto wanted = readListWishes(wishes, message);
    auto found = lookUp(ipncid, device::Right::Record);
    if (const auto* const code = std::get_if<ServiceCode>(&found))
        return respond(request, isPlainText(ipncid, 64) ? ipncid : "", *code);
    if (!wanted)
        return respond(request, ipncid, ServiceCode::BadRequest);
    parts_.files.post([this, request, wanted = *wanted, camera = std::get<Found>(std::move(found))] {
        Json entries = Json::array();
        std::string folder;
        for (const device::CardFile& file : camera.files) {
            // The root holds the folders of the days, unless one day is asked for.
            if (wanted.folder.empty() && wanted.date.empty()) {
                if (std::exchange(folder, file.folder) != file.folder)
                    entries.push_back(folderEntry(file));
                continue;
            }
            const bool fits = (wanted.folder.empty() || wanted.folder == file.folder) &&
                              (wanted.date.empty() || wanted.date == file.date) &&
                              (wanted.kind.empty() || wanted.kind == file.kind);
            if (!fits || entries.size() >= mostFiles)
                continue;
            const auto size = sizeOf(camera, file, *request);
            if (!size)
                return respond(request, camera.ipncid, ServiceCode::FileError);
            entries.push_back({{"name", file.name},
                               {"path", file.path()},
                               {"kind", file.kind},
                               {"size", *size},
                               {"time", file.time},
                               {"dir", false}});
        }
        respond(request, camera.ipncid, Reply(Json{{"sdlist", std::move(entries)}}));
    });
}

Reply DeviceFiles::remove(const std::string& ipncid, const Json& paths) {
    const bool listed = paths.is_array() && paths.size() <= mostFiles &&
                        std::all_of(paths.begin(), paths.end(), [](const Json& path) { return path.is_string(); });
    const auto found = lookUp(ipncid, device::Right::Admin);
    if (const auto* const code = std::get_if<ServiceCode>(&found))
        return *code;
    if (!listed)
        return ServiceCode::BadRequest;
    Json deleted = Json::array();
    const ServiceCode code = parts_.database.change("delete files of a card", [&](soci::session& sql) {
        device::CardState card = device::cardOf(sql, ipncid);
        const device::CardState whole{card.formatted, {}};
        const auto all = device::cardFiles(ipncid, whole, parts_.loops.clock().now());
        const auto isThere = [&all](const std::string& path) {
            return std::any_of(all.begin(), all.end(),
                               [&path](const device::CardFile& file) { return file.path() == path; });
        };
        // Of files that have become too old nothing needs to be remembered.
        std::erase_if(card.deleted, [&](const std::string& path) { return !isThere(path); });
        for (const Json& entry : paths) {
            const auto path = entry.get<std::string>();
            if (isThere(path) && card.deleted.insert(path).second)
                deleted.push_back(path);
        }
        device::storeCard(sql, ipncid, card);
        return ServiceCode::Done;
    });
    return code == ServiceCode::Done ? Reply(Json{{"deleted", std::move(deleted)}}) : Reply(code);
}

void DeviceFiles::download(const Pointer& request, const Json& message) {
    constexpr auto type = "downsdfile";
    const auto ipncid = textAt(message, "ipncid");
    const auto path = textAt(message, "path");
    const auto target = absolutePathAt(message, "savepath");
    if (!ipncid || !path || !target)
        return finish(request, type, ServiceCode::BadRequest, 0);
    if (path->rfind(logPrefix, 0) == 0)
        return downloadLog(request, *ipncid, path->substr(std::string(logPrefix).size()), *target);
    auto found = lookUp(*ipncid, device::Right::Record);
    if (const auto* const code = std::get_if<ServiceCode>(&found))
        return finish(request, type, *code, 0);
    const auto& files = std::get<Found>(found).files;
    const auto file = std::find_if(files.begin(), files.end(),
                                   [&path](const device::CardFile& one) { return one.path() == *path; });
    if (file == files.end())
        return finish(request, type, ServiceCode::NotFound, 0);
    parts_.files.post([this, request, file = *file, target = *target, camera = std::get<Found>(std::move(found))] {
        const std::vector<std::uint8_t> bytes = bytesOf(camera, file, *request);
        const auto progress = [&](std::size_t done) {
            request->respond(flowText(type, request->id(), ServiceCode::Done, "progress", done, bytes.size()));
        };
        const ServiceCode code = bytes.empty() ? ServiceCode::FileError : save(*request, bytes, target, progress);
        finish(request, type, code, bytes.size());
    });
}

ServiceCode DeviceFiles::mayReadLog(const std::string& ipncid, const std::string& name) {
    const auto caller = parts_.session.current();
    if (!caller)
        return ServiceCode::NotSignedIn;
    return parts_.database.read("look for an alarm's sensor data", [&](soci::session& sql) {
        const auto placed = device::visibleDevice(sql, caller->id, ipncid, parts_.cameras);
        if (!placed)
            return ServiceCode::UnknownDevice;
        if (!device::allows(*placed, device::Right::Param))
            return ServiceCode::NoRight;
        return SensorLog::isName(name) && store::hasSavelog(sql, ipncid, name) ? ServiceCode::Done
                                                                               : ServiceCode::NotFound;
    });
}

void DeviceFiles::downloadLog(const Pointer& request, const std::string& ipncid, const std::string& name,
                              const fs::path& target) {
    constexpr auto type = "downsdfile";
    const ServiceCode allowed = mayReadLog(ipncid, name);
    if (allowed != ServiceCode::Done)
        return finish(request, type, allowed, 0);
    parts_.files.post(
        [this, request, target, file = parts_.datFolder / fs::path(std::u8string(name.begin(), name.end()))] {
            std::ifstream in(file, std::ios::binary);
            const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
            const auto progress = [&](std::size_t done) {
                request->respond(flowText(type, request->id(), ServiceCode::Done, "progress", done, bytes.size()));
            };
            const ServiceCode code = bytes.empty() ? ServiceCode::NotFound : save(*request, bytes, target, progress);
            finish(request, type, code, bytes.size());
        });
}

std::vector<std::uint8_t> DeviceFiles::bytesOf(const Found& camera, const device::CardFile& file,
                                               const Request& request) {
    return clips_.make(camera.source, file.clip, [this, &request] { return isCancelled(request); });
}

std::optional<std::size_t> DeviceFiles::sizeOf(const Found& camera, const device::CardFile& file,
                                               const Request& request) {
    const std::tuple key(camera.source.title, camera.source.scene, camera.source.phase,
                         static_cast<int>(file.clip.format), file.clip.firstGop, file.clip.seconds);
    const auto known = sizes_.find(key);
    if (known != sizes_.end())
        return known->second;
    const std::size_t size = bytesOf(camera, file, request).size();
    if (size == 0)
        return std::nullopt;
    sizes_[key] = size;
    return size;
}

ServiceCode DeviceFiles::save(const Request& request, const std::vector<std::uint8_t>& bytes, const fs::path& target,
                              const std::function<void(std::size_t)>& progress) const {
    fs::path part = target;
    part += "." + std::to_string(request.id()) + ".part";
    PartFile file(std::move(part));
    for (std::size_t done = 0; done < bytes.size();) {
        if (isCancelled(request))
            return ServiceCode::FileError;
        const std::size_t size = std::min(partSize, bytes.size() - done);
        if (!file.write(reinterpret_cast<const char*>(bytes.data() + done), size))
            break;
        done += size;
        progress(done);
    }
    return !isCancelled(request) && file.finish(target) ? ServiceCode::Done : ServiceCode::FileError;
}

void DeviceFiles::upload(const Pointer& request, const Json& message) {
    constexpr auto type = "uploadipncfile";
    const auto ipncid = textAt(message, "ipncid");
    const auto path = absolutePathAt(message, "path");
    if (!ipncid || !path)
        return finish(request, type, ServiceCode::BadRequest, 0);
    const auto found = lookUp(*ipncid, device::Right::Admin);
    if (const auto* const code = std::get_if<ServiceCode>(&found))
        return finish(request, type, *code, 0);
    parts_.files.post([this, request, path = *path, ipncid = *ipncid] {
        std::error_code error;
        const std::uintmax_t size = fs::is_regular_file(path, error) ? fs::file_size(path, error) : 0;
        std::ifstream file(path, std::ios::binary);
        if (error || !file || size == 0 || size > largestUpload)
            return finish(request, type, ServiceCode::FileError, 0);
        const auto total = static_cast<std::size_t>(size);
        std::string beginning; // all that a made-up camera keeps of its firmware
        std::string part(partSize, '\0');
        for (std::size_t done = 0; done < total;) {
            if (isCancelled(*request))
                return;
            const std::size_t wanted = std::min(partSize, total - done);
            if (!file.read(part.data(), static_cast<std::streamsize>(wanted)))
                return finish(request, type, ServiceCode::FileError, total);
            if (done == 0)
                beginning = part.substr(0, wanted);
            done += wanted;
            request->respond(flowText(type, request->id(), ServiceCode::Done, "progress", done, total));
        }
        parts_.loops.of(ipncid)->receive(device::versionInFile(beginning));
        finish(request, type, ServiceCode::Done, total);
    });
}

} // namespace ipncsdk::api
