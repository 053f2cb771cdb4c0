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
    Unbound = 12,
    NumberTaken = 13,
    CodeWrong = 14,
    CodeTimeout = 15,
    NotFriend = 16,
    FriendExists = 17,
    DeviceTaken = 18,
    FileError = 19,
    StoreError = 20,
    MessageFailed = 21,
    MessageLimit = 22,
    FriendSelf = 23,
    WordWrong = 24,
    CameraPassword = 25,
    CameraClock = 26,
    CameraFault = 27,
    NoMedia = 28,
    InUse = 29,
    UnknownInput = 30,
    WriteFailed = 31,
    Limit = 32,
    NotMainAccount = 33,
    MapNotEmpty = 34,
    UnknownMap = 35,
    UnknownMarker = 36,
    FileExists = 37,
    NotFound = 404
};

/// The "errcode" text of a code, such as "(not login)"; empty for `Done`.
const char* errorText(ServiceCode code);

} // namespace ipncsdk
