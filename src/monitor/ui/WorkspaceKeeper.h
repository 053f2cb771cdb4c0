#pragma once

#include "base/AppContext.h"

#include <QObject>
#include <QTimer>

class DeviceTree;
class Fwidget;
class LiveVideo;
class PollRunner;
class QSplitter;
class QWidget;

/// Keeps what the operator has set up, so that the next start goes on from there: place of the window, layout, zoom,
/// open videos, device tree. Layout and zoom are saved by the grid itself. GUI thread.
///
/// Changes are saved together, shortly after the last one: opening 64 videos writes one file.
class WorkspaceKeeper final : public QObject {
    Q_OBJECT
public:
    struct Parts {
        Fwidget& grid;
        LiveVideo& live;
        PollRunner& poll;
        DeviceTree& tree;
        QSplitter& splitter;
    };

    /// The parts outlive this object. Brings back the layout and the device tree's state.
    WorkspaceKeeper(const AppContext& context, const Parts& parts, QObject* parent = nullptr);

    /// Puts the window where it was, or where a first start's belongs, and goes on watching it. `smallest`: of the
    /// window, px.
    void placeWindow(QWidget& window, const QSize& smallest);

    /// Opens the videos that were open, once after each sign-in.
    void restoreVideos();
    /// Somebody signs out: what is open now is not what the next sign-in of another account is to find.
    void forgetVideos();
    /// The program ends: saves what is open now, and nothing after it.
    void finish();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void restoreGrid();
    void storeNow();
    void storeWindow();

    AppContext context_;
    Parts parts_;
    QWidget* window_ = nullptr;
    QTimer delay_;
    bool videosRestored_ = false;
    bool finished_ = false;
};
