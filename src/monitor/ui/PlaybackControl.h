#pragma once

#include <QObject>
#include <QVector>

class ModulePages;
class QDateTime;
class RecordingStorage;

namespace corvanta::playback {
class PlaybackPage;
struct PlaybackCamera;
} // namespace corvanta::playback

/// Recordings played in the main window, from wherever they are asked for. GUI thread.
class PlaybackControl final : public QObject {
    Q_OBJECT
public:
    /// Makes the page at once. Both outlive it.
    PlaybackControl(ModulePages& pages, RecordingStorage& storage, QObject* parent);

    corvanta::playback::PlaybackPage& page() const { return *page_; }

    /// Goes to the page and plays these.
    void play(const QVector<corvanta::playback::PlaybackCamera>& cameras);
    /// The same, from a time on.
    void playAt(const QVector<corvanta::playback::PlaybackCamera>& cameras, const QDateTime& time);

private:
    ModulePages& pages_;
    corvanta::playback::PlaybackPage* page_;
};
