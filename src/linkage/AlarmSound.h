#pragma once

#include "linkage/Throttle.h"

#include <QObject>

#include <memory>

class QMediaPlayer;
class Settings;

/// The sounds of alarms: one player. A new alarm replaces the sound that is playing. GUI thread.
class AlarmSound final : public QObject {
    Q_OBJECT
public:
    /// `settings` outlives it.
    explicit AlarmSound(const Settings& settings, QObject* parent = nullptr);
    ~AlarmSound() override;

    /// Plays the sound that the settings give the type of this text. Nothing for an unknown text, one that is
    /// switched off, and one without a file. Of a flood of alarms only the last of each fifth of a second begins: a
    /// sound that would be replaced at once is not heard anyway, but costs a pipeline.
    void play(const QString& type);

    static constexpr int Volume = 30; ///< percent

signals:
    /// A sound was told to begin.
    void sigBegun(QString file);

private:
    void begin();

    const Settings& settings_;
    std::unique_ptr<QMediaPlayer> player_; ///< made for the first sound: it loads a multimedia framework
    QString next_;                         ///< file that is to begin
    Throttle beat_;
};
