#pragma once

#include "linkage/AlarmTypes.h"

#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace corvanta::linkage {

/// An alarm as a device reports it. A value; what is missing is empty.
struct AlarmMessage {
    QString ipncId;
    QString dateTime; ///< as the device sent it
    QString content;  ///< the text for people
    /// Of an alarm that a linkage plan has raised: "linkplanid", "name", "threshold", "input", ...
    std::optional<QVariantMap> trigger;
    std::optional<QString> saveLog; ///< name of the data file that the device has saved
    bool hasImages = false;
    QStringList images; ///< names of the picture files, where the device names them
    std::optional<QString> videoPath;
    AlarmLevel level = AlarmLevel::Other;

    static AlarmMessage fromMap(const QVariantMap& message);
};

} // namespace corvanta::linkage
