#pragma once

#include <QByteArray>
#include <QString>

#include <string>
#include <string_view>

namespace corvanta::video {

/// The request for one picture of a device, at most `width` pixels wide, ready to be sent.
std::string previewRequest(const QString& deviceId, int width);

/// Likewise of a camera that is not added yet, by its RTSP address.
std::string previewRequest(const QString& url, const QString& user, const QString& password, int width);

/// What came of it.
struct PreviewReply {
    int retcode = 0;      ///< 0: there is a picture; else one of "avclose"
    std::string jpeg;     ///< the picture as a JPEG file
    QString problem = {}; ///< English, for the debug stream: the message could not be followed
};

/// Reads the response and copies the picture, which is gone when the SDK's callback returns. Any thread.
PreviewReply readPreview(std::string_view json);

} // namespace corvanta::video
