#pragma once

#include "base/Reply.h"
#include "device/NetworkCameras.h"
#include "service/Session.h"
#include "store/Database.h"

#include <string_view>

namespace ipncsdk::service {

/// What an operation works on.
struct OperationContext {
    store::Database& database;
    const device::NetworkCameras& cameras;
    SignedIn caller; ///< empty for operations that need no sign-in
};

/// One account request: its name ("clienttype") and what does it.
struct Operation {
    const char* name;
    bool needsSignIn;
    bool changesLists; ///< done, it makes the client read the device lists again
    Reply (*run)(const OperationContext& context, const Json& params);
};

/// Null for a name that the service does not know. "logon" is not among them: it changes the session.
const Operation* findOperation(std::string_view name);

// The operations, by subject. Texts are checked for length and well-formedness, rights by the caller's account.

Reply checkPhone(const OperationContext& context, const Json& params);
Reply getPersonInfo(const OperationContext& context, const Json& params);
Reply setPhoneParam(const OperationContext& context, const Json& params);

Reply addGroup(const OperationContext& context, const Json& params);
Reply editGroup(const OperationContext& context, const Json& params);
Reply deleteGroup(const OperationContext& context, const Json& params);
Reply moveGroupIndex(const OperationContext& context, const Json& params);

Reply setIpncParam(const OperationContext& context, const Json& params);
Reply moveDeviceIndex(const OperationContext& context, const Json& params);

Reply getFriends(const OperationContext& context, const Json& params);
Reply getAllDeviceShareList(const OperationContext& context, const Json& params);

} // namespace ipncsdk::service
