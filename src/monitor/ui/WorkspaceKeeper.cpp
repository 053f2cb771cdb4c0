#include "monitor/ui/WorkspaceKeeper.h"

#include "base/Settings.h"
#include "monitor/SavedWorkspace.h"
#include "monitor/ui/DeviceTree.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "monitor/ui/PollRunner.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QSplitter>

namespace keys = corvanta::keys;
namespace workspace = corvanta::workspace;

namespace {
constexpr int SaveDelay = 400; // ms
} // namespace

WorkspaceKeeper::WorkspaceKeeper(const AppContext& context, const Parts& parts, QObject* parent)
    : QObject(parent)
    , context_(context)
    , parts_(parts) {
    delay_.setSingleShot(true);
    delay_.setInterval(SaveDelay);
    connect(&delay_, &QTimer::timeout, this, &WorkspaceKeeper::storeNow);
    const auto later = qOverload<>(&QTimer::start);
    connect(&parts_.live, &LiveVideo::sigOpenChanged, &delay_, later);
    connect(&parts_.tree, &DeviceTree::sigStateChanged, &delay_, later);
    connect(&parts_.splitter, &QSplitter::splitterMoved, &delay_, later);
    if (!context_.settings.get(keys::RestoreState).toBool())
        return;
    restoreGrid();
    parts_.tree.restoreState(context_.settings.get(keys::DeviceTreeState));
    const int width = context_.settings.get(keys::PanelWidth).toInt();
    if (width > 0)
        parts_.splitter.setSizes({width, qMax(1, parts_.splitter.width() - width)});
}

void WorkspaceKeeper::restoreGrid() {
    const int zoom = workspace::readZoom(context_.settings, parts_.grid.grid().poolSize());
    if (const auto shape = workspace::readLayout(context_.settings))
        parts_.grid.setLayout(shape->rows, shape->columns, false);
    if (zoom >= 0 && parts_.grid.isIndexShown(zoom))
        parts_.grid.setZoom(zoom);
}

void WorkspaceKeeper::placeWindow(QWidget& window, const QSize& smallest) {
    window_ = &window;
    QVector<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens += screen->availableGeometry();
    const bool restored = context_.settings.get(keys::RestoreState).toBool();
    const auto saved = restored ? workspace::readWindowPlace(context_.settings.get(keys::WindowPlace)) : std::nullopt;
    if (saved) {
        window.setGeometry(workspace::placeOnScreens(saved->normal, smallest, screens));
        window.setWindowState(saved->maximized ? Qt::WindowMaximized : Qt::WindowNoState);
    } else if (!screens.isEmpty()) {
        window.setGeometry(workspace::firstPlace(smallest, screens.first()));
    }
    window.installEventFilter(this);
}

bool WorkspaceKeeper::eventFilter(QObject* watched, QEvent* event) {
    const bool moves = event->type() == QEvent::Move || event->type() == QEvent::Resize ||
                       event->type() == QEvent::WindowStateChange;
    if (moves && watched == window_ && window_->isVisible() && !finished_)
        delay_.start();
    return QObject::eventFilter(watched, event);
}

void WorkspaceKeeper::restoreVideos() {
    if (videosRestored_)
        return;
    videosRestored_ = true;
    // A polling that goes on opens what is its turn.
    if (!context_.settings.get(keys::RestoreState).toBool() || parts_.poll.isRunning())
        return;
    const QMap<int, QString> videos = workspace::readOpenVideos(context_.settings.get(keys::OpenVideos));
    parts_.live.restore(videos.values());
}

void WorkspaceKeeper::forgetVideos() {
    if (delay_.isActive())
        storeNow();
    videosRestored_ = false;
}

void WorkspaceKeeper::finish() {
    if (finished_)
        return;
    storeNow();
    finished_ = true;
}

void WorkspaceKeeper::storeNow() {
    delay_.stop();
    if (finished_)
        return;
    Settings& settings = context_.settings;
    // Before the videos of the last time are open again they are not overwritten, and what a polling shows is its
    // own.
    if (videosRestored_ && !parts_.poll.isRunning())
        settings.set(keys::OpenVideos, workspace::storedOpenVideos(parts_.live.openVideos()));
    if (!parts_.tree.isEmpty())
        settings.set(keys::DeviceTreeState, parts_.tree.state());
    settings.set(keys::PanelWidth, parts_.splitter.sizes().value(0));
    storeWindow();
    settings.save();
}

void WorkspaceKeeper::storeWindow() {
    if (window_ == nullptr || !window_->isVisible())
        return;
    const bool isNormal = !window_->isMaximized() && !window_->isFullScreen() && !window_->isMinimized();
    const QRect normal = isNormal ? window_->geometry() : window_->normalGeometry();
    if (normal.isEmpty())
        return;
    context_.settings.set(keys::WindowPlace,
                          workspace::storedWindowPlace({normal, window_->isMaximized(), window_->isFullScreen()}));
}
