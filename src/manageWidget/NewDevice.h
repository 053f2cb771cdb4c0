#pragma once

#include <QString>
#include <QVariantMap>
#include <QVector>

#include <optional>

namespace corvanta::manage {

/// A device that is to be added, as the dialog's fields say.
struct NewDevice {
    enum class Way {
        Number,  ///< by its number and verification word
        Address, ///< a network camera by its RTSP addresses
        Found    ///< likewise, found on the network; `onvif` is where it is asked
    };
    static constexpr int LongestField = 256; ///< characters

    Way way = Way::Number;
    QString ipncId;
    QString word;
    QString name; ///< may be empty with a number: the device's own
    QString groupId;
    QString main;
    QString light; ///< empty: the main stream serves both
    QString user;
    QString password;
    QString onvif;
};

/// The text to show instead of sending it; nothing when it can be sent.
std::optional<QString> problem(const NewDevice& device);
/// The parameters of "addipnc"; fields without text are left out.
QVariantMap parameters(const NewDevice& device);

/// A device that the SDK has found on the local network, or that waits to be added.
struct FoundDevice {
    QString id;
    QString name;
    QString model;
    QString ip;
    QString url; ///< of a network camera
    QString mac;
    bool isAdded = false;
    bool isOnvif = false;

    QString displayName() const { return name.isEmpty() ? id : name; }
    /// The records of a "freshlocal"; what is no record is left out.
    static QVector<FoundDevice> listFrom(const QVariantMap& freshlocal);
};

/// What a camera told of itself when it was probed.
struct ProbedCamera {
    struct Profile {
        QString name;
        QString codec;
        QString size; ///< "1920 x 1080"
        int fps = 0;
        QString url; ///< empty: it cannot be opened
    };
    QString manufacturer;
    QString model;
    QString firmware;
    QString main;
    QString light;
    QVector<Profile> profiles;

    static ProbedCamera fromReply(const QVariantMap& resp);
};

} // namespace corvanta::manage
