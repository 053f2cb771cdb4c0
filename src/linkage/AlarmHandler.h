#pragma once

#include <QString>
#include <QVariantMap>

#include <functional>

class AppEvents;
class DeviceModel;
class SqlHelp;

namespace corvanta::linkage {

class AlarmInbox;

/// Turns one alarm into everything that the operator sees and hears, in a fixed order. Keeps nothing between alarms.
/// GUI thread.
class AlarmHandler final {
public:
    struct Parts {
        AppEvents& events;
        const DeviceModel& devices;
        SqlHelp& database;
        AlarmInbox& inbox;
        std::function<void(const QString& type)> playSound;
    };
    /// A video of an alarm is there.
    using VideoHook = std::function<void(const QString& path)>;

    /// The parts outlive it.
    explicit AlarmHandler(Parts parts);

    /// Signals, the log of alarms, the sound, the message bar, and the alarms that wait.
    void handle(const QVariantMap& message) const;

    /// Who looks at videos of alarms; while nobody does, a debug line says so.
    void setVideoHook(VideoHook hook) { video_ = std::move(hook); }

private:
    Parts parts_;
    VideoHook video_;
};

} // namespace corvanta::linkage
