#pragma once

#include "playback/Timeline.h"
#include "playback/ui/PlaybackActions.h"

#include <QHash>
#include <QWidget>

class QBoxLayout;
class QLabel;
class QToolButton;

namespace corvanta::playback {

/// The bar of a playback: its buttons, speed and time; in two lines where one has no room. GUI thread.
class PlaybackControls final : public QWidget {
    Q_OBJECT
public:
    explicit PlaybackControls(QWidget* parent = nullptr);

    /// Whether there is something to be played.
    void setLoaded(bool loaded);
    void setPlaying(bool playing);
    void setSpeed(double speed);
    void setMoment(Moment moment);
    void setSkipsGaps(bool skips);

    /// That of two lines, so that one line never keeps the window wide.
    QSize minimumSizeHint() const override;

signals:
    void sigAction(corvanta::playback::Action action);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void sayPlaying();
    void addButton(const ActionEntry& entry, QBoxLayout* line);

    QBoxLayout* lines_;
    QHash<int, QToolButton*> buttons_; ///< by action
    QLabel* speed_ = nullptr;
    QLabel* time_ = nullptr;
    bool isPlaying_ = false;
    double speedShown_ = 1;
};

} // namespace corvanta::playback
