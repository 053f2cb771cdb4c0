#include "service/UserFileOperations.h"

#include "base/Text.h"
#include "media/PictureHeader.h"
#include "media/StillPicture.h"
#include "media/WholeFile.h"
#include "pictures/Pictures.h"
#include "service/MapCheck.h"
#include "service/MapRecords.h"
#include "store/ContentHash.h"
#include "store/Maps.h"
#include "store/UserFiles.h"

#include <algorithm>
#include <fstream>
#include <utility>

namespace ipncsdk::service {

namespace {

constexpr std::uintmax_t largestMap = std::uintmax_t{64} * 1024 * 1024;
constexpr std::uintmax_t largestIcon = std::uintmax_t{1024} * 1024;
constexpr std::uint64_t mostMapPixels = 120'000'000;
constexpr std::uint32_t widestIcon = 1024; ///< pixels, and as high
constexpr std::size_t mostIcons = 500;
constexpr auto icons = "icons";

Reply refusal(ServiceCode code, const std::string& text) {
    Reply reply(code);
    reply.content["text"] = text;
    return reply;
}

const pictures::EmbeddedPicture* publicIcon(const std::string& name) {
    const auto all = pictures::icons();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&name](const pictures::EmbeddedPicture& icon) { return name == icon.name; });
    return found == all.end() ? nullptr : &*found;
}

std::string lowered(std::string text) {
    for (char& c : text)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return text;
}

/// File systems that take small and capital letters for the same can't hold two names that differ in nothing else.
bool isNameTaken(const std::vector<store::UserFile>& files, const std::string& name) {
    return std::any_of(files.begin(), files.end(),
                       [&](const store::UserFile& file) { return lowered(file.name) == lowered(name); });
}

ServiceCode keepMap(soci::session& sql, const Upload& upload, Json& told) {
    if (store::mapsOf(sql, upload.account).size() >= mostMaps)
        return ServiceCode::Limit;
    const long long id =
        store::insertMap(sql, {0, upload.account, true, upload.content, upload.size, toText(upload.mapInfo)});
    told["mapid"] = std::to_string(id);
    told["filename"] = upload.content;
    return ServiceCode::Done;
}

ServiceCode keepIcon(soci::session& sql, const Upload& upload, Json& told) {
    const auto files = store::filesOf(sql, upload.account, icons);
    if (isNameTaken(files, upload.name))
        return ServiceCode::FileExists;
    if (files.size() >= mostIcons)
        return ServiceCode::Limit;
    store::insertUserFile(sql, {upload.account, icons, upload.name, upload.content, upload.size});
    told["filename"] = upload.name;
    told["hash"] = upload.content.substr(0, store::ContentFiles::hashDigits);
    return ServiceCode::Done;
}

ServiceCode findIcon(soci::session& sql, store::AccountId account, const std::string& name,
                     const std::optional<std::string>& ownerPhone, std::string& content) {
    store::AccountId owner = account;
    if (ownerPhone && !ownerPhone->empty()) {
        const auto other = store::accountByPhone(sql, *ownerPhone);
        // Nobody learns here which numbers have an account.
        if (!other || (other->id != account && !isIconShown(sql, other->id, account, name)))
            return ServiceCode::NotFound;
        owner = other->id;
    }
    const auto file = store::userFile(sql, owner, icons, name);
    if (!file)
        return ServiceCode::NotFound;
    content = file->content;
    return ServiceCode::Done;
}

} // namespace

std::uintmax_t Upload::largest() const {
    return isMap ? largestMap : largestIcon;
}

std::variant<Reply, Upload> plannedUpload(store::AccountId account, const Json& message) {
    const auto kind = textAt(message, "type");
    const auto source = absolutePathAt(message, "uploadpath");
    if (!kind || !source || (*kind != "maps" && *kind != icons))
        return Reply(ServiceCode::BadRequest);
    Upload upload;
    upload.account = account;
    upload.source = *source;
    upload.isMap = *kind == "maps";
    if (!upload.isMap) {
        const auto name = source->filename().u8string();
        upload.name.assign(name.begin(), name.end());
        if (!isFileName(upload.name, longestFileName))
            return refusal(ServiceCode::BadRequest, "文件名不正确!");
        return upload;
    }
    const Json* const info = memberAt(message, "mapinfo");
    if (info == nullptr || !info->is_object() || isLocalMap(*info) != std::make_optional(true))
        return Reply(ServiceCode::BadRequest);
    CheckedObject checked = checkMap(*info, Json::object(), true);
    if (!checked.fault.empty())
        return refusal(ServiceCode::BadRequest, checked.fault);
    upload.mapInfo = std::move(checked.document);
    return upload;
}

ServiceCode nameContent(Upload& upload, const std::string& hash) {
    std::ifstream file(upload.file->path(), std::ios::binary);
    const auto header = media::readPictureHeader(file);
    if (!header)
        return ServiceCode::FileError;
    const bool fits = upload.isMap
                          ? std::uint64_t{header->width} * header->height <= mostMapPixels
                          : header->width <= widestIcon && header->height <= widestIcon &&
                                media::isStillPicture(media::readWholeFile(upload.file->path(), largestIcon));
    if (!fits)
        return ServiceCode::FileError;
    upload.content = hash + (header->kind == media::PictureHeader::Kind::Png ? ".png" : ".jpg");
    return ServiceCode::Done;
}

Reply keepUpload(const OperationContext& context, const Upload& upload) {
    // Somebody else may have signed in meanwhile.
    if (context.caller.id != upload.account)
        return ServiceCode::NotSignedIn;
    Json told = Json::object();
    const ServiceCode code = context.change("keep a file", [&](soci::session& sql) {
        const ServiceCode entered = upload.isMap ? keepMap(sql, upload, told) : keepIcon(sql, upload, told);
        if (entered != ServiceCode::Done)
            return entered;
        if (!upload.file->finish(context.files.pathOf(upload.content)))
            return ServiceCode::FileError;
        context.effects.concernedByFiles.insert(context.caller.id);
        return ServiceCode::Done;
    });
    if (code == ServiceCode::Done)
        return Reply(std::move(told));
    context.effects.released.insert(upload.content);
    return code;
}

std::variant<ServiceCode, ReadableFile> readableFile(store::Database& database, store::AccountId account,
                                                     const Json& params) {
    const auto kind = textAt(params, "type");
    const auto name = textAt(params, "filename");
    const auto owner = textAt(params, "userid");
    const bool hasPublic = memberAt(params, "public") != nullptr;
    const auto isPublic = flagAt(params, "public");
    if (!kind || !name || (*kind != "maps" && *kind != icons) || (hasPublic && !isPublic) ||
        (memberAt(params, "userid") != nullptr && !owner) || !isFileName(*name, longestFileName))
        return ServiceCode::BadRequest;
    ReadableFile file;
    if (isPublic.value_or(false)) {
        const auto* const icon = *kind == icons ? publicIcon(*name) : nullptr;
        if (icon == nullptr)
            return ServiceCode::NotFound;
        file.bytes = icon->bytes;
        return file;
    }
    const ServiceCode code = database.read("look for a user's file", [&](soci::session& sql) {
        if (*kind == icons)
            return findIcon(sql, account, *name, owner, file.content);
        file.content = *name;
        return store::seesContent(sql, account, *name) ? ServiceCode::Done : ServiceCode::NotFound;
    });
    if (code != ServiceCode::Done)
        return code;
    return file;
}

const Json& publicIconsDocument() {
    static const Json document = [] {
        Json list = Json::array();
        for (const pictures::EmbeddedPicture& icon : pictures::icons())
            list.push_back(
                {{"filename", icon.name}, {"size", icon.bytes.size()}, {"hash", store::ContentHash::of(icon.bytes)}});
        return list;
    }();
    return document;
}

Reply deleteUserFile(const OperationContext& context, const Json& params) {
    const auto name = textAt(params, "filename");
    if (textAt(params, "type") != icons || !name)
        return ServiceCode::BadRequest;
    std::string content;
    const ServiceCode code = context.change("delete a user's file", [&](soci::session& sql) {
        const auto file = store::userFile(sql, context.caller.id, icons, *name);
        if (!file)
            return publicIcon(*name) != nullptr ? ServiceCode::NotMainAccount : ServiceCode::NotFound;
        store::removeUserFile(sql, *file);
        content = file->content;
        context.effects.concernedByFiles.insert(context.caller.id);
        return ServiceCode::Done;
    });
    if (code == ServiceCode::Done)
        context.effects.released.insert(content);
    return code;
}

} // namespace ipncsdk::service
