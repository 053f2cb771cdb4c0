#pragma once

/// The XML namespaces in which cameras name things. Prefixes differ from camera to camera; these do not.
namespace ipncsdk::onvif::ns {

inline constexpr auto soap = "http://www.w3.org/2003/05/soap-envelope";
inline constexpr auto security = "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-secext-1.0.xsd";
inline constexpr auto utility = "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-utility-1.0.xsd";
inline constexpr auto passwordDigest =
    "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-username-token-profile-1.0#PasswordDigest";
inline constexpr auto base64Binary =
    "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-soap-message-security-1.0#Base64Binary";
inline constexpr auto error = "http://www.onvif.org/ver10/error";
inline constexpr auto schema = "http://www.onvif.org/ver10/schema";
inline constexpr auto device = "http://www.onvif.org/ver10/device/wsdl";
inline constexpr auto media = "http://www.onvif.org/ver10/media/wsdl";
inline constexpr auto ptz = "http://www.onvif.org/ver20/ptz/wsdl";
inline constexpr auto imaging = "http://www.onvif.org/ver20/imaging/wsdl";
inline constexpr auto network = "http://www.onvif.org/ver10/network/wsdl";
inline constexpr auto addressing = "http://schemas.xmlsoap.org/ws/2004/08/addressing";
inline constexpr auto discovery = "http://schemas.xmlsoap.org/ws/2005/04/discovery";

} // namespace ipncsdk::onvif::ns
