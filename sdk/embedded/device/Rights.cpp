#include "device/Rights.h"

#include <array>

namespace ipncsdk::device {

namespace {

struct RightKey {
    Right right;
    const char* key;
};

constexpr std::array rightKeys = {RightKey{Right::Admin, "admin"}, RightKey{Right::Video, "video"},
                                  RightKey{Right::Record, "record"}, RightKey{Right::Ptz, "ptz"},
                                  RightKey{Right::Param, "param"}};

} // namespace

Json authorityOfShare(const std::string& rights) {
    const Json given = Json::parse(rights, nullptr, false);
    Json authority = Json::object();
    for (const RightKey& row : rightKeys)
        authority[row.key] = flagAt(given, row.key).value_or(false);
    // A share never makes an administrator, whatever stands in it.
    authority["admin"] = false;
    return authority;
}

Json authorityOf(const store::PlacedDevice& device) {
    if (!device.rights.empty())
        return authorityOfShare(device.rights);
    Json authority = Json::object();
    for (const RightKey& row : rightKeys)
        authority[row.key] = true;
    return authority;
}

bool allows(const store::PlacedDevice& device, Right right) {
    const Json authority = authorityOf(device);
    for (const RightKey& row : rightKeys) {
        if (row.right == right)
            return authority[row.key].get<bool>();
    }
    return false;
}

} // namespace ipncsdk::device
