#pragma once

#include "base/Reply.h"
#include "device/NetworkCameras.h"
#include "service/PasswordHasher.h"
#include "service/Session.h"
#include "service/SignInGuard.h"
#include "service/TextMessage.h"
#include "service/VerificationCodes.h"
#include "store/ContentFiles.h"
#include "store/Database.h"
#include "store/StoreKey.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace ipncsdk::service {

/// What an operation brings about besides its reply.
struct Effects {
    std::set<store::AccountId> concerned;        ///< accounts whose clients must read their lists again
    std::set<store::AccountId> concernedByFiles; ///< likewise, of maps and files
    std::set<std::string> released; ///< contents that were used and may not be any more; removed after the operation
    std::optional<TextMessage> message; ///< to be sent; the reply waits for it
    bool signedOut = false;             ///< the caller's session is over, see `Session`
};

/// What an operation works on.
struct OperationContext {
    store::Database& database;
    const device::NetworkCameras& cameras;
    const store::StoreKey& key;
    const store::ContentFiles& files;
    const VerificationCodes& codes;
    const PasswordHasher& hasher;
    SignInGuard& words; ///< slows down the guessing of devices' words
    Session& session;
    const std::string& computer; ///< where this process runs
    Effects& effects;
    SignedIn caller; ///< empty for operations that need no sign-in

    /// Runs `work` as `Database::change` does; the accounts that it enters into `effects` are told, in all
    /// processes.
    ServiceCode change(const char* what, const store::Database::Work& work) const;
};

/// One account request: its name ("clienttype") and what does it.
struct Operation {
    const char* name;
    bool needsSignIn;
    Reply (*run)(const OperationContext& context, const Json& params);
};

/// Null for a name that the service does not know. "logon" is not among them: it changes the session.
const Operation* findOperation(std::string_view name);

// The operations, by subject. Texts are checked for length and well-formedness, rights by the caller's account.

Reply checkPhone(const OperationContext& context, const Json& params);
Reply sendRegisterCode(const OperationContext& context, const Json& params);
Reply sendPasswordCode(const OperationContext& context, const Json& params);
Reply sendRebindCode(const OperationContext& context, const Json& params);
Reply checkMessageCode(const OperationContext& context, const Json& params);
Reply registerPhone(const OperationContext& context, const Json& params);
Reply changePassword(const OperationContext& context, const Json& params);
Reply rebindPhone(const OperationContext& context, const Json& params);
Reply unbindPhone(const OperationContext& context, const Json& params);

Reply getPersonInfo(const OperationContext& context, const Json& params);
Reply setPhoneParam(const OperationContext& context, const Json& params);
Reply uploadHead(const OperationContext& context, const Json& params);
Reply downHead(const OperationContext& context, const Json& params);

Reply addGroup(const OperationContext& context, const Json& params);
Reply editGroup(const OperationContext& context, const Json& params);
Reply deleteGroup(const OperationContext& context, const Json& params);
Reply moveGroupIndex(const OperationContext& context, const Json& params);

Reply setIpncParam(const OperationContext& context, const Json& params);
Reply setIpncAdminParam(const OperationContext& context, const Json& params);
Reply moveDeviceIndex(const OperationContext& context, const Json& params);
Reply addIpnc(const OperationContext& context, const Json& params);
Reply deleteIpnc(const OperationContext& context, const Json& params);

Reply sensorType(const OperationContext& context, const Json& params);
Reply moduleInterface(const OperationContext& context, const Json& params);
Reply submitSensorInfo(const OperationContext& context, const Json& params);
Reply deleteSensor(const OperationContext& context, const Json& params);
Reply changeSensorInput(const OperationContext& context, const Json& params);
Reply submitLinkPlan(const OperationContext& context, const Json& params);
Reply deleteLinkPlan(const OperationContext& context, const Json& params);
Reply getLinkPlan(const OperationContext& context, const Json& params);

Reply getSysNames(const OperationContext& context, const Json& params);
Reply getReportRules(const OperationContext& context, const Json& params);
Reply submitReportRules(const OperationContext& context, const Json& params);
Reply deleteReportRules(const OperationContext& context, const Json& params);
Reply getSmsRecords(const OperationContext& context, const Json& params);

Reply submitMap(const OperationContext& context, const Json& params);
Reply deleteMap(const OperationContext& context, const Json& params);
Reply setMapShare(const OperationContext& context, const Json& params);
Reply submitMapSensor(const OperationContext& context, const Json& params);
Reply deleteMapSensor(const OperationContext& context, const Json& params);
Reply deleteUserFile(const OperationContext& context, const Json& params);

Reply getFriends(const OperationContext& context, const Json& params);
Reply addFriend(const OperationContext& context, const Json& params);
Reply setFriendParam(const OperationContext& context, const Json& params);
Reply deleteFriend(const OperationContext& context, const Json& params);
Reply getAllDeviceShareList(const OperationContext& context, const Json& params);
Reply setFriendDeviceShare(const OperationContext& context, const Json& params);

} // namespace ipncsdk::service
