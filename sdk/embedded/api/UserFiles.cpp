#include "api/UserFiles.h"

#include "base/PartFile.h"
#include "base/Text.h"
#include "store/ContentHash.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <system_error>
#include <utility>
#include <variant>

namespace ipncsdk::api {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t partSize = std::size_t{64} * 1024;
constexpr std::chrono::milliseconds betweenProgress{100};
constexpr auto uploadType = "userupload";
constexpr auto downloadType = "urlreq";
constexpr auto downloadOperation = "userdown";

std::span<const unsigned char> bytesOf(const std::string& part, std::size_t count) {
    return {reinterpret_cast<const unsigned char*>(part.data()), count};
}

} // namespace

class UserFiles::Progress final {
public:
    Progress(const Clock& clock, Request& request, const char* type, std::size_t total)
        : clock_(clock)
        , request_(request)
        , type_(type)
        , total_(total) {}

    void tell(std::size_t done) {
        const auto now = clock_.steadyNow();
        if (toldAt_ && now - *toldAt_ < betweenProgress)
            return;
        toldAt_ = now;
        request_.respond(toText({{"type", type_},
                                 {"reqid", request_.id()},
                                 {"retcode", 0},
                                 {"state", "progress"},
                                 {"done", done},
                                 {"total", total_}}));
    }

private:
    const Clock& clock_;
    Request& request_;
    const char* const type_;
    const std::size_t total_;
    std::optional<std::chrono::steady_clock::time_point> toldAt_;
};

UserFiles::UserFiles(Parts parts)
    : parts_(std::move(parts)) {}

void UserFiles::upload(const Pointer& request, const Json& message) {
    const auto caller = parts_.session.current();
    if (!caller)
        return finishUpload(request, ServiceCode::NotSignedIn, 0);
    auto planned = service::plannedUpload(caller->id, message);
    if (const auto* const refusal = std::get_if<Reply>(&planned))
        return finishUpload(request, *refusal, 0);
    parts_.files.post(
        [this, request, upload = std::get<service::Upload>(std::move(planned))] { receive(request, upload); });
}

void UserFiles::receive(const Pointer& request, service::Upload upload) {
    // Reading from anything but a plain file may never end.
    std::error_code error;
    const std::uintmax_t size = fs::is_regular_file(upload.source, error) ? fs::file_size(upload.source, error) : 0;
    std::ifstream source(upload.source, std::ios::binary);
    if (error || !source || size == 0 || size > upload.largest())
        return finishUpload(request, ServiceCode::FileError, 0);
    const auto total = static_cast<std::size_t>(size);
    upload.size = static_cast<long long>(size);
    upload.file = std::make_shared<PartFile>(parts_.contents.incoming());
    store::ContentHash hash;
    Progress progress(parts_.clock, *request, uploadType, total);
    std::string part(partSize, '\0');
    for (std::size_t done = 0; done < total;) {
        if (isCancelled(*request))
            return;
        const std::size_t wanted = std::min(partSize, total - done);
        if (!source.read(part.data(), static_cast<std::streamsize>(wanted)) ||
            !upload.file->write(part.data(), wanted))
            return finishUpload(request, ServiceCode::FileError, 0);
        hash.add(bytesOf(part, wanted));
        done += wanted;
        progress.tell(done);
    }
    // Only what is written whole can be looked at.
    const ServiceCode named =
        upload.file->close() ? service::nameContent(upload, hash.take()) : ServiceCode::FileError;
    if (named != ServiceCode::Done)
        return finishUpload(request, named, 0);
    parts_.keep(request, std::move(upload));
}

void UserFiles::finishUpload(const Pointer& request, const Reply& reply, long long size) {
    const bool good = reply.code == ServiceCode::Done;
    request->respond(responseText(uploadType, request->id(), reply,
                                  {{"state", good ? "ok" : "error"}, {"done", good ? size : 0}, {"total", size}}));
    parts_.requests.take(request->id());
}

void UserFiles::download(const Pointer& request, const Json& params) {
    const auto caller = parts_.session.current();
    if (!caller)
        return finishDownload(request, ServiceCode::NotSignedIn);
    const auto target = absolutePathAt(params, "savepath");
    auto found = service::readableFile(parts_.database, caller->id, params);
    if (!target)
        return finishDownload(request, ServiceCode::BadRequest);
    if (const auto* const code = std::get_if<ServiceCode>(&found))
        return finishDownload(request, *code);
    const bool told = flagAt(params, "progress").value_or(false);
    parts_.files.post(
        [this, request, told, target = *target, file = std::get<service::ReadableFile>(std::move(found))] {
            std::error_code error;
            const fs::path path = parts_.contents.pathOf(file.content);
            const std::uintmax_t size = file.content.empty() ? file.bytes.size() : fs::file_size(path, error);
            if (error)
                return finishDownload(request, ServiceCode::NotFound);
            Progress progress(parts_.clock, *request, downloadType, static_cast<std::size_t>(size));
            std::unique_ptr<std::istream> source;
            if (file.content.empty())
                source = std::make_unique<std::istringstream>(
                    std::string(reinterpret_cast<const char*>(file.bytes.data()), file.bytes.size()));
            else
                source = std::make_unique<std::ifstream>(path, std::ios::binary);
            const ServiceCode code =
                save(*request, *source, static_cast<std::size_t>(size), target, told ? &progress : nullptr);
            finishDownload(request, code == ServiceCode::Done ? Reply(Json{{"size", size}}) : Reply(code));
        });
}

ServiceCode UserFiles::save(const Request& request, std::istream& from, std::size_t size, const fs::path& target,
                            Progress* progress) const {
    fs::path beside = target;
    beside += "." + std::to_string(request.id()) + ".part";
    PartFile file(std::move(beside));
    std::string part(partSize, '\0');
    for (std::size_t done = 0; done < size;) {
        if (isCancelled(request))
            return ServiceCode::FileError;
        const std::size_t wanted = std::min(partSize, size - done);
        if (!from.read(part.data(), static_cast<std::streamsize>(wanted)) || !file.write(part.data(), wanted))
            return ServiceCode::FileError;
        done += wanted;
        if (progress != nullptr)
            progress->tell(done);
    }
    return !isCancelled(request) && file.finish(target) ? ServiceCode::Done : ServiceCode::FileError;
}

void UserFiles::finishDownload(const Pointer& request, const Reply& reply) {
    request->respond(responseText(downloadType, request->id(), reply, {{"clienttype", downloadOperation}}));
    parts_.requests.take(request->id());
}

} // namespace ipncsdk::api
