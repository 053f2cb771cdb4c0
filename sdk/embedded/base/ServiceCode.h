#pragma once

namespace ipncsdk {

/// How a request ended: the "retcode" of its response. Clients show the text that belongs to a number, so a number
/// never changes its meaning.
enum class ServiceCode : int {
    Done = 0,
    NotSupported = 1,
    BadRequest = 2,
    NotSignedIn = 3,
    UnknownNumber = 4,
    PasswordWrong = 5,
    NoRight = 6,
    UnknownDevice = 7,
    UnknownGroup = 8,
    GroupNotEmpty = 9,
    DeviceOffline = 10,
    TryLater = 11,
    StoreError = 20,
    CameraPassword = 25,
    CameraClock = 26,
    CameraFault = 27,
    NoMedia = 28
};

/// The "errcode" text of a code, such as "(not login)"; empty for `Done`.
const char* errorText(ServiceCode code);

} // namespace ipncsdk
