#pragma once

#include "playback/PlaybackCamera.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVector>

#include <functional>
#include <vector>

class MonitorMainUI;

/// Walks through the program by itself and leaves pictures of what it shows, then ends the program: with 0 when
/// everything came in time, else with 1 and one line that says what did not.
///
/// The short walk signs in, opens cameras and takes pictures of them; the tour also opens every window, dialog and
/// menu. Pictures show the screen as it is, so what lies over a window is in them too.
class OperatorTour final : public QObject {
    Q_OBJECT
public:
    enum class Extent { Short, Everything };

    /// `window` outlives the tour. Pictures are written into `folder`, which is made.
    OperatorTour(MonitorMainUI& window, QString folder, Extent extent, QObject* parent = nullptr);

    /// Begins once the event loop runs.
    void start();

private:
    struct Step {
        QString name;
        std::function<void()> begin;
        std::function<bool()> done;
        int limit = 20000; ///< ms
    };

    void largeWindow();
    void planShort();
    void planEverything();
    void planWindow();
    void planMenus();
    void planTreeMenus();
    void planSettings();
    void planPlayback();
    /// Records the first devices for some seconds; `recorded_` has the files then.
    void record(int devices);
    void endRecording();
    void planPolling();
    /// The log page with the log of sign-ins, in which the tour's own stands.
    void planLogs(const QString& pictures);
    void planExport();
    /// The page of stored files, as a list and as a timeline, with pictures that the tour stores itself.
    void planFiles(const QString& pictures);
    void planViewer();
    void storePictures() const;
    void settingsPage(const QString& picture, const QString& page);
    /// Opens a menu, which may run an event loop of its own, takes a picture of it and closes it.
    void menu(const QString& picture, std::function<void()> open);
    /// Likewise a dialog.
    void dialog(const QString& picture, std::function<void()> open, std::function<void()> close);
    void signIn();
    /// Shows a layout, opens what is online in it, waits until all of it runs.
    void layout(int rows, int columns, const QString& picture);
    void tip();
    void picture(const QString& name);
    void pause(int milliseconds);

    void tick();
    void finish(int code);
    bool shoot(const QString& name);
    int runningStreams() const;
    QStringList onlineDevices() const;
    void openShown() const;

    MonitorMainUI& window_;
    QString folder_;
    QVector<corvanta::playback::PlaybackCamera> recorded_; ///< what the tour has recorded
    std::vector<Step> steps_;
    std::size_t current_ = 0;
    bool begun_ = false;
    QElapsedTimer sinceBegin_;
    QTimer timer_;
};
