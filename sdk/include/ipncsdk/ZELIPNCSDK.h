#pragma once

#include "ipncsdk/ipncsdk_export.h"

#include <functional>
#include <string>

namespace ipncsdk {

/// Result of an SDK call. Callers distinguish `emSuccess` (0) from everything else; the other values exist for
/// diagnostics only and may differ between SDK libraries.
enum emReturnValue : int {
    emSuccess = 0,
    emFailure = 1,        ///< nothing more precise is known
    emNotStarted = 2,     ///< the call needs `Startup` first
    emAlreadyStarted = 3, ///< `Startup` while running
    emBadArgument = 4,    ///< text that is not a JSON object, unknown document, null callback
    emWrongThread = 5     ///< `Cleanup` called from one of the SDK's own callbacks
};

/// The device SDK: one object per process, the only road to devices and to the account service.
///
/// All texts are UTF-8 JSON objects. Callbacks run on threads of the SDK, never on the thread that made the call,
/// several of them at once for different requests, one at a time for one request. The members may be called from
/// any thread, also from inside callbacks (`Cleanup` excepted).
class IPNCSDK_API ZELIPNCSDK {
public:
    /// Receives an unsolicited message; may write an answer into `reply` before it returns.
    using ClientCallback = std::function<void(const std::string& message, std::string& reply)>;
    /// Receives one response of a request.
    using ResponseCallback = std::function<void(const std::string& response)>;

    /// The process's SDK object; never null, alive until the process ends.
    static ZELIPNCSDK* GetInstance();

    ZELIPNCSDK(const ZELIPNCSDK&) = delete;
    ZELIPNCSDK& operator=(const ZELIPNCSDK&) = delete;

    /// Starts the SDK's threads. Files lie relative to the directory that is current during this call.
    emReturnValue Startup();

    /// Installs the one callback for unsolicited messages; an empty function removes it.
    emReturnValue SetClientCallback(ClientCallback callback);

    /// Sends a request. `reqid` is written before the call returns and before the first response is delivered:
    /// a positive id, or 0 when the text is not a request or the SDK does not run (then nothing is called back).
    void RequestMessage(const std::string& json, int& reqid, ResponseCallback callback);

    /// Ends a request. When it returns, no callback of that request starts any more; one that runs on another
    /// thread has been waited for. Unknown ids are ignored.
    void StopRequest(int reqid);

    /// Hands over a command or a changed document; `callback` (may be empty) receives one result.
    void SetConfig(const std::string& json, ResponseCallback callback);

    /// Reads a document at once. `query` is an object whose "type" names the document; `out` is left empty on
    /// failure.
    emReturnValue GetConfig(const std::string& query, std::string& out);

    /// Ends every request and joins every thread of the SDK; no callback runs after it returned. The SDK can be
    /// started again afterwards.
    emReturnValue Cleanup();

private:
    ZELIPNCSDK();
    ~ZELIPNCSDK();
};

} // namespace ipncsdk
