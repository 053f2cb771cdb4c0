#pragma once

#include "api/Request.h"
#include "api/Worker.h"
#include "base/Clock.h"
#include "base/JsonText.h"
#include "base/Reply.h"
#include "service/Session.h"
#include "service/UserFileOperations.h"
#include "store/ContentFiles.h"
#include "store/Database.h"

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>

namespace ipncsdk::api {

/// Files of accounts on their way: pictures of maps, icons. Checks are done on the service worker, where all requests
/// begin and where an upload is entered; the bytes move on a worker of their own.
class UserFiles final {
public:
    using Pointer = std::shared_ptr<Request>;
    struct Parts {
        store::Database& database;
        const store::ContentFiles& contents;
        const Clock& clock;
        const service::Session& session;
        RequestTable& requests;
        Worker& files; ///< one thread; outlived by this
        const std::atomic<bool>& stopping;
        /// Enters what was received, on the service worker, and then calls `finishUpload`.
        std::function<void(const Pointer& request, service::Upload upload)> keep;
    };

    explicit UserFiles(Parts parts);
    UserFiles(const UserFiles&) = delete;
    UserFiles& operator=(const UserFiles&) = delete;

    /// "userupload"
    void upload(const Pointer& request, const Json& message);
    void finishUpload(const Pointer& request, const Reply& reply, long long size);
    /// "userdown"
    void download(const Pointer& request, const Json& params);

private:
    /// Tells of a flow's progress, ten times a second at most.
    class Progress;

    [[nodiscard]] bool isCancelled(const Request& request) const { return parts_.stopping || request.hasEnded(); }

    // On the files' worker.
    void receive(const Pointer& request, service::Upload upload);
    ServiceCode save(const Request& request, std::istream& from, std::size_t size,
                     const std::filesystem::path& target, Progress* progress) const;
    void finishDownload(const Pointer& request, const Reply& reply);

    const Parts parts_;
};

} // namespace ipncsdk::api
