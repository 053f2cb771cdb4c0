#pragma once

#include "video/ui/ItemVideo.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

struct AppContext;
class AlarmRun;
class GuiWatch;
class MonitorMainUI;
class Shift;

/// Drives the client's own window by commands, one a line, and answers each with one line on the standard output:
///
///     signin            signed-in CAMERAS         the first account; cameras "wall..." get the first tiles
///     place             place X,Y,WxH ...         the picture of each open tile, pixels from the window's corner
///     open COUNT        open MS                   opens tiles 0..COUNT-1; answered when each has painted a picture
///     close             closed MS
///     counts            counts RECEIVED OVERWRITTEN PAINTED
///     click INDEX       shown MS                  from the order to open to the first painted picture; closed again
///     blocked FILE      blocked BEATS MEDIAN P99 WORST    ms that the window let events wait since the last such
///                       order, the longest ones into the file (client/GuiWatch.h)
///     alarms COUNT F    alarms MEDIAN WORST STALL TOTAL   ms (client/AlarmRun.h); F: the file of their sound
///     quit
///
/// and those of client/Shift.h. An order that takes longer than a minute is answered with "failed WHAT". GUI thread.
class Harness final : public QObject {
    Q_OBJECT
public:
    /// Both outlive the harness.
    Harness(MonitorMainUI& window, const AppContext& context);
    ~Harness() override;

    void obey(const QString& line);

private:
    void signIn();
    void arrange(const QString& groupId);
    void open(int count);
    void click(int index);
    void place() const;
    void blocked(const QString& file);
    void alarms(int count, const QString& sound);
    void answerWhen(std::function<bool()> done, std::function<QString()> answer);
    void look();
    /// Of all tiles together.
    ItemVideo::Counters counters() const;
    /// Of the first `count` tiles those whose stream is open and has brought a picture.
    int runningTiles(int count) const;
    QStringList wallCameras() const;

    MonitorMainUI& window_;
    const AppContext& context_;
    QTimer timer_; ///< runs while an answer is due
    QElapsedTimer sinceOrder_;
    std::unique_ptr<AlarmRun> alarms_;
    std::unique_ptr<GuiWatch> watch_; ///< from the first question on
    std::unique_ptr<Shift> shift_;
    std::function<bool()> done_;
    std::function<QString()> answer_;
};
