#pragma once

#include "TestSdk.h"

#include <QByteArray>

#include <filesystem>
#include <string>
#include <vector>

namespace ipncsdk::test {

/// Where the store keeps the contents of maps and icons, below the SDK's folder.
inline constexpr auto filesFolder = "service/service.db.files";

/// A picture of one colour, which `seed` chooses, as a file of a format that Qt writes.
QByteArray picture(const char* format, int width = 48, int height = 32, int seed = 0);
/// SHA-256 in hexadecimal digits.
std::string hashOf(const QByteArray& bytes);

/// Requests for storing a file as a map or an icon.
Json mapUpload(const std::filesystem::path& file);
Json iconUpload(const std::filesystem::path& file);

/// Sends the request and waits for its last message; what came before is put into `progress`. Null when none comes.
Json flow(TestSdk& sdk, const Json& message, std::vector<Json>* progress = nullptr);
/// The response to a "userdown".
Json download(TestSdk& sdk, Json params);

/// An SDK with the first account signed in. `count` contents are in the folder from the first start on.
struct UserFilesWorld {
    UserFilesWorld();
    /// Writes a file below the SDK's folder, for uploading it.
    std::filesystem::path put(const std::string& name, const QByteArray& bytes) const;
    [[nodiscard]] std::size_t added() const { return sdk.filesIn(filesFolder).size() - count; }

    TestSdk sdk;
    bool good = false;
    std::size_t count = 0;
};

} // namespace ipncsdk::test
