#include "service/Operations.h"

#include <algorithm>
#include <array>

namespace ipncsdk::service {

namespace {

constexpr std::array operations = {
    Operation{"checkphone", false, false, checkPhone},
    Operation{"getpersioninfo", true, false, getPersonInfo},
    Operation{"setphoneparam", true, false, setPhoneParam},
    Operation{"addgroup", true, true, addGroup},
    Operation{"editgroup", true, true, editGroup},
    Operation{"delgroup", true, true, deleteGroup},
    Operation{"movegroupindex", true, true, moveGroupIndex},
    Operation{"setipncparam", true, true, setIpncParam},
    Operation{"movedeviceindex", true, true, moveDeviceIndex},
    Operation{"getfriends", true, false, getFriends},
    Operation{"getalldevicesharelist", true, false, getAllDeviceShareList},
};

} // namespace

const Operation* findOperation(std::string_view name) {
    const auto* found = std::find_if(operations.begin(), operations.end(),
                                     [name](const Operation& operation) { return name == operation.name; });
    return found == operations.end() ? nullptr : &*found;
}

} // namespace ipncsdk::service
