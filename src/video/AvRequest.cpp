#include "video/AvRequest.h"

namespace corvanta::video {

QString openVideoOperation() {
    return QStringLiteral("打开视频");
}

bool wantsMainStream(int zoomIndex, int rows, int columns, int tileIndex) {
    if (tileIndex < 0) {
        return false;
    }
    return tileIndex == zoomIndex || (rows == 1 && columns == 1 && tileIndex == 0);
}

int maxOpenTime(const QString& setting) {
    if (setting.isEmpty() || setting == QStringLiteral("不限")) {
        return 0;
    }
    return setting.toInt();
}

QVariantMap openVideoRequest(const QString& deviceId, bool mainStream, const QString& maxOpenTimeSetting) {
    return {{QStringLiteral("avreq"), QVariantMap{
                                          {QStringLiteral("ipncid"), deviceId},
                                          {QStringLiteral("recvdecodeavdata"), true},
                                          {QStringLiteral("hd"), mainStream},
                                          {QStringLiteral("maxopentime"), maxOpenTime(maxOpenTimeSetting)},
                                          {QStringLiteral("reqtype"), QStringLiteral("avreq")},
                                      }}};
}

} // namespace corvanta::video
