#pragma once

#include "base/JsonText.h"
#include "base/PartFile.h"
#include "base/Reply.h"
#include "service/Operations.h"
#include "store/ContentFiles.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>

namespace ipncsdk::service {

/// A file that an account uploads: the picture of a new map, or an icon.
struct Upload {
    store::AccountId account = 0;
    std::filesystem::path source; ///< on this computer
    bool isMap = false;           ///< else an icon
    std::string name;             ///< of an icon: the file's own
    Json mapInfo;                 ///< of a map: what is to be kept of it

    // Set when it has been received.
    std::shared_ptr<PartFile> file; ///< in the folder of contents
    std::string content;            ///< the name that its content has there
    long long size = 0;             ///< bytes

    [[nodiscard]] std::uintmax_t largest() const; ///< bytes
};

/// What a "userupload" wants, checked but for the file itself; or how it is refused.
std::variant<Reply, Upload> plannedUpload(store::AccountId account, const Json& message);

/// Says whether what was received is a picture that can be kept, and names its content. `hash` is that of its bytes.
ServiceCode nameContent(Upload& upload, const std::string& hash);

/// Enters what was received into the account.
Reply keepUpload(const OperationContext& context, const Upload& upload);

/// A file that an account may read.
struct ReadableFile {
    std::span<const unsigned char> bytes; ///< of a public one; outlives everything
    std::string content;                  ///< else the name in the folder of contents
};

/// The file that "userdown" names, or why the account gets none.
std::variant<ServiceCode, ReadableFile> readableFile(store::Database& database, store::AccountId account,
                                                     const Json& params);

/// [{"filename", "size", "hash"}...]: icons that are everybody's.
const Json& publicIconsDocument();

} // namespace ipncsdk::service
