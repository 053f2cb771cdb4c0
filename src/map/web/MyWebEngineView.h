#pragma once

#include "map/ui/MapView.h"
#include "map/ui/WebMapPlugin.h"
#include "map/web/MarkerPictures.h"
#include "map/web/ScriptQueue.h"

#include <QQueue>
#include <QTimer>
#include <QVector>

#include <memory>

class QStackedLayout;
class QWebChannel;
class QWebEngineProfile;

namespace corvanta::map {

class bridge;
class FailurePane;
class MapPage;
class MapWebView;
class RequestGuard;

/// A map of the world: a page in a browser of its own, driven by calls of the page's functions and heard through the
/// object "bridge".
///
/// What it was told it keeps here, so that it can be told to the page at any time. Life of the page: loading, ready
/// (the markers were built), failed (it could not be loaded, or its process ended); from failed it comes back when
/// the user reloads it, with everything that was told meanwhile.
class MyWebEngineView final : public MapView {
    Q_OBJECT
public:
    explicit MyWebEngineView(const WebMapOptions& options, QWidget* parent = nullptr);
    ~MyWebEngineView() override;

    void setMarkers(const QList<MapMarker>& markers) override;
    void setMarkerText(int index, const QStringList& lines) override;
    void showAlarm(int index, int level) override;
    void clearAlarm(int index) override { showAlarm(index, 0); }
    void moveMarker(int index, const MapMarker& marker) override;
    void removeMarker(int index) override;
    void fitMarkers() override;
    void zoomIn() override;
    void zoomOut() override;
    void showMarker(int index) override;
    void beginDrag(int index) override;
    void setEditable(bool editable) override;

    bool isReady() const { return state_ == State::Ready; }
    MapPage& page() const { return *page_; }
    /// Also of a page that works.
    void reload();

signals:
    /// The page shows what it was told.
    void sigReady();

protected:
    void changeEvent(QEvent* event) override;

private:
    enum class State { Loading, Ready, Failed };
    struct Shown {
        MapMarker marker;
        QStringList lines; ///< of the label
        int alarm = 0;     ///< its level, 0: none
    };

    void buildPage(const WebMapOptions& options);
    void connectBridge(const bridge& told);
    void onLoadFinished(bool isLoaded);
    void onPageChecked(bool isWhole);
    /// `reason`: a source text of this class.
    void fail(const char* reason);
    /// Says everything in the interface's language.
    void setWords();
    /// Builds all markers anew in the page.
    void updateOnLineMarks();
    void addMark(const Shown& shown);
    void tellText(int index);
    void tellAlarm(int index);
    QString iconOf(const MapMarker& marker);
    void tellZoom(QLatin1String function);
    void onSensorDropped(const QString& ipncId, const QString& sensorPid, const QPoint& at);
    void onDropPlaced(double lng, double lat);
    void onDragEnd(int index, double lng, double lat);
    void onOpenDialog(const QString& dialogType);
    bool has(int index) const { return index >= 0 && index < shown_.size(); }
    /// Queues the call when the page can take it; otherwise it will be built from what is kept here.
    void call(const ScriptCall& call);

    struct Drop {
        QString ipncId;
        QString sensorPid;
    };

    // In this order: a page must end before its profile, and a profile before its guard.
    std::unique_ptr<RequestGuard> guard_;
    std::unique_ptr<QWebEngineProfile> profile_;
    std::unique_ptr<MapPage> page_;
    MapWebView* web_;
    FailurePane* failure_;
    QStackedLayout* stack_;
    ScriptQueue calls_;
    QTimer loading_; ///< ends a loading that does not end
    ScriptCall tileCall_;
    MarkerPictures pictures_;
    QVector<Shown> shown_;
    QQueue<Drop> drops_; ///< whose places the page was asked for, in order
    State state_ = State::Loading;
    const char* reason_ = nullptr; ///< why it has failed; null: it never has
    bool isEditable_ = true;
    bool fitsNext_ = true; ///< the next markers that are built are brought into view
    int showsNext_ = -1;   ///< and then this one; -1: none
};

} // namespace corvanta::map
