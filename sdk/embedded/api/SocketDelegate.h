#pragma once

#include "ipncsdk/TCPSocketDelegate.h"

#include <string_view>

namespace ipncsdk::api {

/// The object that the client's reply to "getsocketdelegate" names: the whole text is the signed decimal form of an
/// address. Null when the reply is empty or anything else.
TCPSocketDelegate* delegateFromReply(std::string_view reply);

} // namespace ipncsdk::api
