#pragma once

#include "base/AppContext.h"
#include "playback/PlaybackCamera.h"

#include <QDateTime>
#include <QObject>
#include <QVector>

#include <memory>

class AlarmCenterPage;
class QWidget;
class RecordingStorage;
class SearchDiskThread;

/// The alarm centre in the main window: its page, and the ways from an alarm to what the camera shows and has
/// recorded. GUI thread.
class AlarmControl final : public QObject {
    Q_OBJECT
public:
    /// `storage` outlives it.
    AlarmControl(const AppContext& context, RecordingStorage& storage, QObject* parent);
    ~AlarmControl() override;

    AlarmCenterPage* makePage(QWidget* parent);
    /// Looks for what a device recorded around a time; `sigPlayback` or `sigMessage` tell what came of it.
    void play(const QString& ipncId, const QDateTime& time);

signals:
    /// How many alarms wait.
    void sigCount(qint64 count);
    void sigLive(QString ipncid);
    /// These recordings are to be played from that time on.
    void sigPlayback(QVector<corvanta::playback::PlaybackCamera> cameras, QDateTime time);
    void sigMessage(QString text);

private:
    void onFound(const QDateTime& time);

    AppContext context_;
    RecordingStorage& storage_;
    std::unique_ptr<SearchDiskThread> search_; ///< the last one
};
