#include "base/ServiceCode.h"

namespace ipncsdk {

const char* errorText(ServiceCode code) {
    switch (code) {
    case ServiceCode::Done:
        return "";
    case ServiceCode::NotSupported:
        return "(not supported)";
    case ServiceCode::BadRequest:
        return "(bad request)";
    case ServiceCode::NotSignedIn:
        return "(not login)";
    case ServiceCode::UnknownNumber:
        return "(not phonenumber)";
    case ServiceCode::PasswordWrong:
        return "(password error)";
    case ServiceCode::NoRight:
        return "(not authority)";
    case ServiceCode::UnknownDevice:
        return "(not ipnc)";
    case ServiceCode::UnknownGroup:
        return "(not group)";
    case ServiceCode::GroupNotEmpty:
        return "(group not empty)";
    case ServiceCode::DeviceOffline:
        return "(ipnc offline)";
    case ServiceCode::TryLater:
        return "(try later)";
    case ServiceCode::Unbound:
        return "(not bind)";
    case ServiceCode::NumberTaken:
        return "(phonenumber exist)";
    case ServiceCode::CodeWrong:
        return "(checkcode error)";
    case ServiceCode::CodeTimeout:
        return "(checkcode timeout)";
    case ServiceCode::NotFriend:
        return "(not friend)";
    case ServiceCode::FriendExists:
        return "(friend exist)";
    case ServiceCode::DeviceTaken:
        return "(ipnc exist)";
    case ServiceCode::FileError:
        return "(file error)";
    case ServiceCode::StoreError:
        return "(store error)";
    case ServiceCode::MessageFailed:
        return "(sms error)";
    case ServiceCode::MessageLimit:
        return "(sms limit)";
    case ServiceCode::FriendSelf:
        return "(friend self)";
    case ServiceCode::WordWrong:
        return "(word error)";
    case ServiceCode::NotFound:
        return "(http 404)";
    case ServiceCode::CameraPassword:
        return "(camera password)";
    case ServiceCode::CameraClock:
        return "(camera clock)";
    case ServiceCode::CameraFault:
        return "(onvif fault)";
    case ServiceCode::NoMedia:
        return "(no media)";
    case ServiceCode::InUse:
        return "(in use)";
    case ServiceCode::UnknownInput:
        return "(unknown input)";
    case ServiceCode::WriteFailed:
        return "(write failed)";
    case ServiceCode::Limit:
        return "(limit)";
    case ServiceCode::NotMainAccount:
        return "(not main account)";
    case ServiceCode::MapNotEmpty:
        return "(map not empty)";
    case ServiceCode::UnknownMap:
        return "(not map)";
    case ServiceCode::UnknownMarker:
        return "(not marker)";
    case ServiceCode::FileExists:
        return "(file exist)";
    }
    return "(bad request)";
}

} // namespace ipncsdk
