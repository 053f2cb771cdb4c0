#include "service/Operations.h"

#include "store/Sessions.h"

#include <algorithm>
#include <array>

namespace ipncsdk::service {

namespace {

constexpr std::array operations = {
    Operation{"checkphone", false, checkPhone},
    Operation{"logincode", false, sendRegisterCode},
    Operation{"changepascode", false, sendPasswordCode},
    Operation{"rebindcode", false, sendRebindCode},
    Operation{"checkmessagecode", false, checkMessageCode},
    Operation{"loginphone", false, registerPhone},
    Operation{"changephonepas", false, changePassword},
    Operation{"rebindphone", false, rebindPhone},
    Operation{"unbindphonemode", true, unbindPhone},
    Operation{"getpersioninfo", true, getPersonInfo},
    Operation{"setphoneparam", true, setPhoneParam},
    Operation{"uploadhead", true, uploadHead},
    Operation{"downhead", true, downHead},
    Operation{"addgroup", true, addGroup},
    Operation{"editgroup", true, editGroup},
    Operation{"delgroup", true, deleteGroup},
    Operation{"movegroupindex", true, moveGroupIndex},
    Operation{"setipncparam", true, setIpncParam},
    Operation{"setipncadminparam", true, setIpncAdminParam},
    Operation{"movedeviceindex", true, moveDeviceIndex},
    Operation{"addipnc", true, addIpnc},
    Operation{"delipnc", true, deleteIpnc},
    Operation{"sensortype", true, sensorType},
    Operation{"moduleinterface", true, moduleInterface},
    Operation{"submitsensorinfo", true, submitSensorInfo},
    Operation{"delsensor", true, deleteSensor},
    Operation{"changesensorinput", true, changeSensorInput},
    Operation{"getfriends", true, getFriends},
    Operation{"addfriend", true, addFriend},
    Operation{"setfriendparam", true, setFriendParam},
    Operation{"delfriend", true, deleteFriend},
    Operation{"getalldevicesharelist", true, getAllDeviceShareList},
    Operation{"setfrienddeviceshare", true, setFriendDeviceShare},
    Operation{"submitlinkplan", true, submitLinkPlan},
    Operation{"dellinkplan", true, deleteLinkPlan},
    Operation{"getlinkplan", true, getLinkPlan},
    Operation{"getsysnames", true, getSysNames},
    Operation{"getreportrules", true, getReportRules},
    Operation{"submitreportrules", true, submitReportRules},
    Operation{"delreportrules", true, deleteReportRules},
    Operation{"getsmsrecords", true, getSmsRecords},
    Operation{"submitmap", true, submitMap},
    Operation{"delmap", true, deleteMap},
    Operation{"setmapshare", true, setMapShare},
    Operation{"submitmapsensor", true, submitMapSensor},
    Operation{"delmapsensor", true, deleteMapSensor},
    Operation{"deluserfile", true, deleteUserFile},
};

} // namespace

ServiceCode OperationContext::change(const char* what, const store::Database::Work& work) const {
    return database.change(what, [&](soci::session& sql) {
        effects.concerned.clear();
        effects.concernedByFiles.clear();
        const ServiceCode code = work(sql);
        if (code == ServiceCode::Done) {
            for (const store::AccountId account : effects.concerned)
                store::touch(sql, account);
            for (const store::AccountId account : effects.concernedByFiles)
                store::touchFiles(sql, account);
        }
        return code;
    });
}

const Operation* findOperation(std::string_view name) {
    const auto* found = std::find_if(operations.begin(), operations.end(),
                                     [name](const Operation& operation) { return name == operation.name; });
    return found == operations.end() ? nullptr : &*found;
}

} // namespace ipncsdk::service
