#pragma once

#include "ipncsdk/ipncsdk_export.h"

#include <string>

namespace ipncsdk {

/// One outgoing TCP connection that the client carries for the SDK, for example through a proxy.
///
/// The SDK obtains an object by the client callback's "getsocketdelegate" message: the reply is the decimal text
/// of the object's address, signed, in the full width of a pointer. The object belongs to the client; the SDK uses
/// it for one connection, calls `Close` exactly once and does not touch it afterwards.
///
/// The calls block and come from threads of the SDK. `Send` and `Receive` may run at the same time on two threads;
/// `Close` comes after both have returned. `Abort` may come at any time before that and ends whatever is pending.
class IPNCSDK_API TCPSocketDelegate {
public:
    virtual ~TCPSocketDelegate() = default;

    enum Result : int {
        Closed = 0,   ///< the other side closed the connection in order
        Failed = -1,  ///< the connection is broken or was never made
        TimedOut = -2 ///< nothing happened in the given time; the connection stays as it is
    };

    /// Connects to `host` (name or address, resolved by the proxy where it can) and `port`.
    /// Returns true when the connection stands within `timeoutMs` milliseconds.
    virtual bool Connect(const std::string& host, unsigned short port, int timeoutMs) = 0;

    /// Sends all `size` bytes. Returns `size`, or `Failed`.
    virtual int Send(const char* data, int size) = 0;

    /// Waits up to `timeoutMs` milliseconds for data and takes at most `size` bytes.
    /// Returns the number of bytes taken (above 0), or one of `Result`.
    virtual int Receive(char* data, int size, int timeoutMs) = 0;

    /// Ends pending and later calls with `Failed`. Callable from any thread, more than once.
    virtual void Abort() = 0;

    /// Ends the use of this object by the SDK.
    virtual void Close() = 0;
};

} // namespace ipncsdk
