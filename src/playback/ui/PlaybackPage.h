#pragma once

#include "playback/PlaybackCamera.h"
#include "playback/PlaybackSession.h"
#include "playback/ui/PlaybackActions.h"

#include <QVector>
#include <QWidget>

#include <functional>
#include <memory>

class QStackedWidget;

namespace corvanta::playback {

class PlaybackControls;
class PlaybackWall;
class TimeAxis;

/// The page that plays stored recordings: up to nine cameras in step, a line of time, buttons. GUI thread.
class PlaybackPage final : public QWidget {
    Q_OBJECT
public:
    /// Cameras that are shown at once.
    static constexpr int MostCameras = 9;
    /// Where a picture of a camera, taken at a time, is to be written; empty when there is no place. Asked when the
    /// operator wants one; without it he is asked himself.
    using SnapshotPath = std::function<QString(const PlaybackCamera& camera, const QDateTime& time)>;

    explicit PlaybackPage(QWidget* parent = nullptr);
    ~PlaybackPage() override;

    /// Shows the cameras' recordings, paused at their beginning, in place of what was there. Cameras without files
    /// are left out, and those beyond `MostCameras`.
    void play(const QVector<PlaybackCamera>& cameras);
    void close();
    /// Where snapshots go without asking; where it says nothing, the operator is asked.
    void setSnapshotPath(SnapshotPath path) { snapshotPath_ = std::move(path); }

    /// Null while nothing is loaded.
    PlaybackSession* session() const { return session_.get(); }
    PlaybackWall& wall() const { return *wall_; }
    TimeAxis& axis() const { return *axis_; }
    std::optional<Moment> markedBegin() const { return begin_; }
    std::optional<Moment> markedEnd() const { return end_; }

    /// Writes the marked range of the selected camera, with a dialog that shows how far it is.
    void exportTo(const QString& file);
    /// Writes the selected camera's picture.
    void saveSnapshotTo(const QString& file);

signals:
    /// Something for the message bar.
    void sigMessage(QString text);

public slots:
    void carryOut(corvanta::playback::Action action);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QWidget* makeEmptyState();
    void installKeys();
    void connectSession();
    void onReady();
    void onMoved();
    void onStateChanged();
    void tellUnreadable();
    void seekBy(std::chrono::microseconds step);
    void mark(bool begin);
    void chooseExport();
    void takeSnapshot();
    void openFiles();

    QVector<PlaybackCamera> cameras_;
    std::unique_ptr<PlaybackSession> session_;
    QStackedWidget* pages_;
    PlaybackWall* wall_;
    TimeAxis* axis_;
    PlaybackControls* controls_;
    SnapshotPath snapshotPath_;
    std::optional<Moment> begin_;
    std::optional<Moment> end_;
    QString folder_; ///< where files were chosen last
    bool skipGaps_ = true;
};

} // namespace corvanta::playback
