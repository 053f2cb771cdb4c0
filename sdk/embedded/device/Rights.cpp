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

Json authorityOf(const store::PlacedDevice& device) {
    const bool owner = device.rights.empty();
    Json given = owner ? Json::object() : Json::parse(device.rights, nullptr, false);
    Json authority = Json::object();
    for (const RightKey& row : rightKeys)
        authority[row.key] = owner || flagAt(given, row.key).value_or(false);
    // A share never makes an administrator, whatever stands in it.
    authority["admin"] = owner;
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
