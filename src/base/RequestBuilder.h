#pragma once

#include <QString>
#include <QVariantMap>

#include <string>

/// Builds the JSON of a request from an operation's name and its parameters. Each returns an empty text (and one
/// debug line) for a name that it does not know. Any thread.
namespace corvanta::requests {

/// A direct SDK command: the parameters with "type" set.
std::string directCommand(const QString& operation, const QVariantMap& parameters = {});

/// A request to the account service: "reqtype" = "urlreq", the parameters below "urlreq"/"params".
std::string accountRequest(const QString& operation, const QVariantMap& parameters = {});

/// A request to a device, or for data that the service keeps of a device. Values to be written stand in the
/// parameter "cmdlist"; "ipncid" names the device.
std::string deviceRequest(const QString& operation, const QVariantMap& parameters = {});

} // namespace corvanta::requests
