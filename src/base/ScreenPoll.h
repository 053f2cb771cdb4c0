#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantMap>

class DeviceModel;
class Settings;

/// One stop of the screen polling: devices that are shown together. Keys that this program does not know survive.
struct PollEntry {
    QString name;
    QStringList ipncIds;
    QVariantMap record; ///< as it was stored

    static PollEntry fromMap(const QVariantMap& map);
    QVariantMap toMap() const;
};

/// What the screen polling shows next. The entries stand in the settings, so that a change of them takes effect at
/// the next step; the mode stands there, too, so that a poll goes on after a restart. GUI thread.
class ScreenPoll final : public QObject {
    Q_OBJECT
public:
    enum class Mode {
        Off = 0,
        Videos = 1,  ///< live videos
        Previews = 2 ///< single pictures
    };

    /// `settings` outlives this object.
    explicit ScreenPoll(Settings& settings, QObject* parent = nullptr);

    Mode mode() const;
    /// Starts or stops the polling; every call is told by `modeChanged`, also one that begins it anew.
    void setPollValue(Mode mode);

    QList<PollEntry> entries() const;
    void setEntries(const QList<PollEntry>& entries);

    /// The devices of the next entry that has any: for videos only those that are online. The entries form a ring;
    /// when none qualifies the list is empty and the place in the ring stays.
    QStringList getNextPollDevices(const DeviceModel& devices);

    /// Seconds from one step to the next. A value outside 1 .. 3600 in the settings is replaced by 5 and saved.
    int interval();

signals:
    void modeChanged();

private:
    Settings& settings_;
    int lastIndex_ = -1; ///< of the entry last shown
};
