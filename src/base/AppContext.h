#pragma once

#include <QVariantList>

class AccountFlags;
class AppEvents;
class AppPaths;
class AppUi;
class DeviceModel;
class InputFields;
class OperationLog;
class PasswordVault;
class ScreenPoll;
class SdkGateway;
class Settings;
class SqlHelp;

namespace corvanta::linkage {
class AlarmInbox;
}

namespace corvanta::update {
class VersionCheck;
}

/// The handful of parts that a window or dialog is handed. All outlive every window; GUI thread.
struct AppContext {
    SdkGateway& gateway;
    Settings& settings;
    DeviceModel& devices; ///< replaced as a whole on every change; `AppEvents::sig_updateList()` tells
    AppEvents& events;
    AccountFlags& accountFlags;
    const AppPaths& paths;
    AppUi& ui;
    ScreenPoll& poll;
    OperationLog& operationLog; ///< where dialogs write down what their user did
    SqlHelp& database;
    PasswordVault& vault;                         ///< protects what is remembered
    corvanta::linkage::AlarmInbox& alarms;        ///< that nobody has acknowledged
    InputFields& inputFields;                     ///< what is known of the inputs of sensors beside `devices`
    corvanta::update::VersionCheck& versionCheck; ///< the one at the start
    const QVariantList& timeZones; ///< that a device can be in: "timezone" ("UTC+08:00"), "name", "minutes"
};
