#include "media/StillPicture.h"
#include "media/WholeFile.h"
#include "service/Operations.h"
#include "service/Params.h"
#include "store/Accounts.h"

#include <sodium.h>

#include <cstdint>
#include <filesystem>
#include <system_error>
#include <vector>

namespace ipncsdk::service {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t largestPicture = 1024 * 1024 - 1;
constexpr int base64Variant = sodium_base64_VARIANT_ORIGINAL;

std::string encoded(const std::vector<std::uint8_t>& bytes) {
    std::vector<char> text(sodium_base64_encoded_len(bytes.size(), base64Variant));
    sodium_bin2base64(text.data(), text.size(), bytes.data(), bytes.size(), base64Variant);
    return text.data();
}

/// Empty when the text is not the encoded form of anything.
std::vector<std::uint8_t> decoded(const std::string& text) {
    std::vector<std::uint8_t> bytes(text.size());
    std::size_t length = 0;
    if (sodium_base642bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr, &length, nullptr,
                          base64Variant) != 0)
        length = 0;
    bytes.resize(length);
    return bytes;
}

} // namespace

Reply uploadHead(const OperationContext& context, const Json& params) {
    const auto file = absolutePathAt(params, "uploadpath");
    if (!file)
        return ServiceCode::BadRequest;
    // Reading from anything but a plain file may never end.
    std::error_code error;
    const auto bytes =
        fs::is_regular_file(*file, error) ? media::readWholeFile(*file, largestPicture) : std::vector<std::uint8_t>();
    if (!media::isStillPicture(bytes))
        return ServiceCode::FileError;
    return context.change("keep a picture", [&](soci::session& sql) {
        store::setHeadPicture(sql, context.caller.id, encoded(bytes));
        return ServiceCode::Done;
    });
}

Reply downHead(const OperationContext& context, const Json& params) {
    const auto file = absolutePathAt(params, "downpath");
    const bool ofFriend = memberAt(params, "friendphone") != nullptr;
    const auto phone = textAt(params, "friendphone");
    if (!file || (ofFriend && !phone))
        return ServiceCode::BadRequest;
    std::string content;
    const ServiceCode code = context.database.read("read a picture", [&](soci::session& sql) {
        store::AccountId account = context.caller.id;
        if (ofFriend) {
            const auto other = store::friendOf(sql, account, *phone);
            if (!other)
                return ServiceCode::NotFriend;
            account = other->id;
        }
        content = store::headPicture(sql, account);
        return content.empty() ? ServiceCode::NotFound : ServiceCode::Done;
    });
    if (code != ServiceCode::Done)
        return code;
    // Renaming puts the new file in the place of a link, not of what the link names.
    const auto bytes = decoded(content);
    if (bytes.empty() || !media::writeWholeFile(*file, bytes))
        return ServiceCode::FileError;
    return Reply(Json{{"size", bytes.size()}});
}

} // namespace ipncsdk::service
