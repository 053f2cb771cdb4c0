#pragma once

#include <QStringList>

/// The vocabulary of the request builders: one table a family, walked by name.
namespace corvanta::requests {

struct DirectEntry {
    QString operation;
    QString type;
};

/// What an account request carries besides its operation and parameters.
struct AccountEntry {
    QString operation;
    QString value;
    bool underReqtype = false; ///< the operation stands under "reqtype" instead of "clienttype"
    bool forUser = false;      ///< acts for the signed-in user: "useloginphone"
    bool changes = false;      ///< changes something: "code"
    bool binding = false;      ///< binds or unbinds this computer: "phonetype"
};

struct DeviceEntry {
    enum class Form {
        Read,       ///< "p2pmsg" with "getcmds" = names
        WriteList,  ///< "p2pmsg" with "setcmds" = the caller's "cmdlist"
        WriteNamed, ///< "p2pmsg" with "setcmds" = {names[0]: the caller's value of that name, 1 without one}
        Pass,       ///< "p2pmsg" with the caller's parameters
        Server,     ///< "serverreq" of the type names[0], the parameters below it
        ServerOf,   ///< "serverreq" of the type names[0] about one device
        Account,    ///< "urlreq" with "clienttype" = names[0]
        Own         ///< "reqtype" = names[0] with the caller's parameters
    };
    QString operation;
    Form form;
    QStringList names;
};

const QList<DirectEntry>& directTable();
const QList<AccountEntry>& accountTable();
const QList<DeviceEntry>& deviceTable();

} // namespace corvanta::requests
