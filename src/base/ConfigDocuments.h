#pragma once

#include <QVariantMap>

namespace ipncsdk {
class ZELIPNCSDK;
}

/// Reads the documents that the SDK keeps for the signed-in account.
namespace corvanta::documents {

/// The document named `type` ("ipnclist", "userinfo", "phoneid", ...); an empty map where there is none, then with
/// one debug line. GUI thread.
QVariantMap read(ipncsdk::ZELIPNCSDK& sdk, const QString& type);

/// The phone number of the signed-in account, empty when nobody is signed in.
QString phoneId(ipncsdk::ZELIPNCSDK& sdk);

} // namespace corvanta::documents
