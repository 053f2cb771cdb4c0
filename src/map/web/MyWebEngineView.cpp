#include "map/web/MyWebEngineView.h"

#include "map/web/FailurePane.h"
#include "map/web/MapPage.h"
#include "map/web/MapWebView.h"
#include "map/web/RequestGuard.h"
#include "map/web/TileAddress.h"
#include "map/web/bridge.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QStackedLayout>
#include <QWebChannel>
#include <QWebEngineProfile>

#include <array>
#include <utility>

/// In no namespace, as the generated function that it calls.
static void initResources() {
    Q_INIT_RESOURCE(webmap);
}

namespace corvanta::map {

namespace {

constexpr int LongestLoading = 60000; // ms

/// The animated picture of an alarm's level; empty for one that has none.
QString alarmPicture(int level) {
    static const std::array<QString, 4> Names = {
        QStringLiteral("onelevlealarm.gif"), QStringLiteral("twolevlealarm.gif"),
        QStringLiteral("threelevelalarm.gif"), QStringLiteral("otheralarm.gif")};
    if (level < 1 || level > int(Names.size()))
        return {};
    return QStringLiteral("qrc:///style/img/") + Names[std::size_t(level - 1)];
}

QString showModeText(ShowMode mode) {
    return mode == ShowMode::MouseIn ? QStringLiteral("mousein") : QStringLiteral("always");
}

/// What the page's own texts are in the interface's language.
ScriptCall wordsCall() {
    static constexpr std::array Texts = {
        QT_TRANSLATE_NOOP("WebMapPage", "在线地图"), QT_TRANSLATE_NOOP("WebMapPage", "放大"),
        QT_TRANSLATE_NOOP("WebMapPage", "缩小"),     QT_TRANSLATE_NOOP("WebMapPage", "设置标记参数"),
        QT_TRANSLATE_NOOP("WebMapPage", "拖动标记"), QT_TRANSLATE_NOOP("WebMapPage", "删除标记"),
        QT_TRANSLATE_NOOP("WebMapPage", "清除报警"), QT_TRANSLATE_NOOP("WebMapPage", "添加地图"),
        QT_TRANSLATE_NOOP("WebMapPage", "打开地图"), QT_TRANSLATE_NOOP("WebMapPage", "关闭地图"),
        QT_TRANSLATE_NOOP("WebMapPage", "管理地图"), QT_TRANSLATE_NOOP("WebMapPage", "自适应标记点")};
    QJsonObject words;
    for (const char* const text : Texts)
        words.insert(QString::fromUtf8(text), QCoreApplication::translate("WebMapPage", text));
    //: The tag of the language that this is translated into, as pages tell theirs.
    const QString language = QCoreApplication::translate("WebMapPage", "zh-CN");
    return ScriptCall(QLatin1String("SetWords"))
        .text(language)
        .text(QString::fromUtf8(QJsonDocument(words).toJson(QJsonDocument::Compact)));
}

ScriptCall tileCallOf(const std::optional<TileAddress>& tiles) {
    ScriptCall call(QLatin1String("SetTileServer"));
    return call.text(tiles ? tiles->text() : QString()).text(tiles ? tiles->sources() : QString());
}

} // namespace

MyWebEngineView::MyWebEngineView(const WebMapOptions& options, QWidget* parent)
    : MapView(parent)
    , web_(new MapWebView(this))
    , failure_(new FailurePane(this))
    , stack_(new QStackedLayout(this))
    , calls_([this](const QString& script, const std::function<void()>& done) {
        page_->runJavaScript(script, [done](const QVariant&) { done(); });
    })
    , tileCall_(tileCallOf(TileAddress::parse(options.tileServer))) {
    initResources();
    setObjectName(QStringLiteral("MyWebEngineView"));
    stack_->setContentsMargins(0, 0, 0, 0);
    stack_->addWidget(web_);
    stack_->addWidget(failure_);
    setFocusProxy(web_);
    loading_.setSingleShot(true);
    loading_.setInterval(LongestLoading);
    connect(&loading_, &QTimer::timeout, this, [this] { fail(QT_TR_NOOP("地图页面加载失败")); });
    connect(failure_, &FailurePane::sigReload, this, &MyWebEngineView::reload);
    connect(web_, &MapWebView::sigSensorDropped, this, &MyWebEngineView::onSensorDropped);
    buildPage(options);
    setWords();
    reload();
}

MyWebEngineView::~MyWebEngineView() {
    // While everything else still stands: the end of the page is no failure, but it answers what it was asked.
    state_ = State::Failed;
    page_->disconnect(this);
    calls_.clear(); // else the answer would have the next ones sent to a page that is half gone
    delete web_;
    page_.reset();
}

void MyWebEngineView::buildPage(const WebMapOptions& options) {
    if (!options.tileServer.isEmpty() && !TileAddress::parse(options.tileServer))
        qDebug() << "the tile server's address is not used:" << options.tileServer.left(200);
    guard_ = std::make_unique<RequestGuard>(TileAddress::parse(options.tileServer));
    profile_ = std::make_unique<QWebEngineProfile>(); // without a name: it leaves nothing on the disk
    profile_->setUrlRequestInterceptor(guard_.get());
    page_ = std::make_unique<MapPage>(*profile_, nullptr);
    auto* const told = new bridge(page_.get());
    auto* const channel = new QWebChannel(page_.get());
    channel->registerObject(QStringLiteral("bridge"), told);
    page_->setWebChannel(channel);
    connectBridge(*told);
    connect(page_.get(), &QWebEnginePage::loadFinished, this, &MyWebEngineView::onLoadFinished);
    connect(page_.get(), &QWebEnginePage::renderProcessTerminated, this,
            [this](QWebEnginePage::RenderProcessTerminationStatus status, int code) {
                qDebug() << "the map's page has ended" << status << code;
                fail(QT_TR_NOOP("地图页面已停止"));
            });
    web_->setPage(page_.get());
}

void MyWebEngineView::connectBridge(const bridge& told) {
    connect(&told, &bridge::sig_SendDragMarklnglat, this, &MyWebEngineView::onDropPlaced);
    connect(&told, &bridge::sig_DragMarkEnd, this, &MyWebEngineView::onDragEnd);
    connect(&told, &bridge::openDialog, this, &MyWebEngineView::onOpenDialog);
    connect(&told, &bridge::sig_WebViewMouseDoubleClicked, this, &MapView::sigDoubleClicked);
    const auto forward = [this, &told](auto heard, auto said) {
        connect(&told, heard, this, [this, said](int index) {
            if (has(index))
                emit(this->*said)(index);
        });
    };
    forward(&bridge::sig_DeleteMarkFromIndex, &MapView::sigDeleteMarker);
    forward(&bridge::sig_ManageMarkDialog, &MapView::sigEditMarker);
    forward(&bridge::sig_MarkDoubleClicked, &MapView::sigMarkerActivated);
    forward(&bridge::sig_ClearAlarm, &MapView::sigClearAlarm);
}

// --- life of the page ---------------------------------------------------------------------------------------------

void MyWebEngineView::reload() {
    state_ = State::Loading;
    calls_.clear();
    drops_.clear();
    pictures_.forgetPage();
    fitsNext_ = true;
    stack_->setCurrentWidget(web_);
    loading_.start();
    page_->load(MapPage::address());
}

void MyWebEngineView::onLoadFinished(bool isLoaded) {
    if (state_ != State::Loading)
        return;
    if (!isLoaded) {
        fail(QT_TR_NOOP("地图页面加载失败"));
        return;
    }
    // A document that came without its scripts counts as loaded, too.
    page_->runJavaScript(QStringLiteral("typeof SetTileServer === 'function'"),
                         [self = QPointer<MyWebEngineView>(this)](const QVariant& isWhole) {
                             if (!self.isNull())
                                 self->onPageChecked(isWhole.toBool());
                         });
}

void MyWebEngineView::onPageChecked(bool isWhole) {
    if (state_ != State::Loading)
        return;
    if (!isWhole) {
        fail(QT_TR_NOOP("地图页面加载失败"));
        return;
    }
    loading_.stop();
    state_ = State::Ready;
    call(wordsCall());
    call(tileCall_);
    call(ScriptCall(QLatin1String("SetMapEditable")).flag(isEditable_));
    updateOnLineMarks();
    emit sigReady();
}

void MyWebEngineView::fail(const char* reason) {
    if (state_ == State::Failed)
        return;
    state_ = State::Failed;
    loading_.stop();
    calls_.clear();
    drops_.clear();
    reason_ = reason;
    failure_->setReason(tr(reason));
    stack_->setCurrentWidget(failure_);
    emit sigFailed(tr(reason));
}

// The program's notice of the language does not reach into a plugin, the event of it does.
void MyWebEngineView::changeEvent(QEvent* event) {
    MapView::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        setWords();
}

void MyWebEngineView::setWords() {
    setAccessibleName(tr("在线地图"));
    web_->setAccessibleName(accessibleName());
    if (reason_ != nullptr)
        failure_->setReason(tr(reason_));
    call(wordsCall());
}

// --- what is told to the page -------------------------------------------------------------------------------------

void MyWebEngineView::call(const ScriptCall& call) {
    if (isReady())
        calls_.add(call);
}

QString MyWebEngineView::iconOf(const MapMarker& marker) {
    return pictures_.nameFor(marker, [this](const QString& name, const QString& address) {
        call(ScriptCall(QLatin1String("DefinePicture")).text(name).text(address));
    });
}

void MyWebEngineView::updateOnLineMarks() {
    if (!isReady())
        return;
    calls_.indicesChanged();
    call(ScriptCall(QLatin1String("reMoveControl")));
    for (const Shown& shown : qAsConst(shown_))
        addMark(shown);
    for (int i = 0; i < shown_.size(); ++i) {
        const MapMarker& marker = shown_[i].marker;
        call(ScriptCall(QLatin1String("UpdateMarkIcon")).number(i).text(iconOf(marker)));
        call(ScriptCall(QLatin1String("SetMarkisAllwaysShow")).number(i).text(showModeText(marker.showMode)));
        tellText(i);
    }
    call(ScriptCall(QLatin1String("addTipControl")));
    for (int i = 0; i < shown_.size(); ++i) {
        if (shown_[i].alarm != 0)
            tellAlarm(i);
    }
    if (fitsNext_)
        fitMarkers();
    fitsNext_ = false;
    showMarker(std::exchange(showsNext_, -1));
}

void MyWebEngineView::addMark(const Shown& shown) {
    const QString icon = iconOf(shown.marker);
    const QString label = shown.lines.join(QStringLiteral("<br />"));
    call(ScriptCall(QLatin1String("addpoint")).place(GeoPoint::of(shown.marker)).text(label).text(icon));
}

void MyWebEngineView::tellText(int index) {
    if (!isReady())
        return;
    const QString label = shown_[index].lines.join(QStringLiteral("<br />"));
    calls_.addText(index, ScriptCall(QLatin1String("UpdateMarkText")).number(index).text(label));
}

void MyWebEngineView::tellAlarm(int index) {
    call(ScriptCall(QLatin1String("ShowAlarmMark")).number(index).text(alarmPicture(shown_[index].alarm)));
}

void MyWebEngineView::setMarkers(const QList<MapMarker>& markers) {
    shown_.clear();
    for (const MapMarker& marker : markers)
        shown_ += Shown{marker, {marker.name}, 0};
    updateOnLineMarks();
}

void MyWebEngineView::setMarkerText(int index, const QStringList& lines) {
    if (!has(index) || shown_[index].lines == lines)
        return;
    shown_[index].lines = lines;
    tellText(index);
}

void MyWebEngineView::showAlarm(int index, int level) {
    if (!has(index))
        return;
    shown_[index].alarm = level;
    tellAlarm(index);
}

void MyWebEngineView::moveMarker(int index, const MapMarker& marker) {
    if (!has(index))
        return;
    MapMarker& own = shown_[index].marker;
    call(ScriptCall(QLatin1String("UpdateMarkPosition")).number(index).place(GeoPoint::of(marker)));
    if (own.iconPath != marker.iconPath || own.pid != marker.pid)
        call(ScriptCall(QLatin1String("UpdateMarkIcon")).number(index).text(iconOf(marker)));
    if (own.showMode != marker.showMode)
        call(ScriptCall(QLatin1String("SetMarkisAllwaysShow")).number(index).text(showModeText(marker.showMode)));
    own = marker;
}

void MyWebEngineView::removeMarker(int index) {
    if (!has(index))
        return;
    shown_.remove(index);
    calls_.indicesChanged();
    call(ScriptCall(QLatin1String("removeMarkeFinish")).number(index));
}

void MyWebEngineView::fitMarkers() {
    call(ScriptCall(QLatin1String("setAdaptivemarker")));
}

void MyWebEngineView::tellZoom(QLatin1String function) {
    call(ScriptCall(function).number(web_->width() / 2).number(web_->height() / 2));
}

void MyWebEngineView::zoomIn() {
    tellZoom(QLatin1String("ZoomIn"));
}

void MyWebEngineView::zoomOut() {
    tellZoom(QLatin1String("Zoomout"));
}

void MyWebEngineView::showMarker(int index) {
    if (!has(index))
        return;
    if (isReady())
        call(ScriptCall(QLatin1String("ShowMark")).number(index));
    else
        showsNext_ = index;
}

void MyWebEngineView::beginDrag(int index) {
    if (!has(index))
        return;
    web_->setFocus();
    call(ScriptCall(QLatin1String("BeginDragMark")).number(index));
}

void MyWebEngineView::setEditable(bool editable) {
    isEditable_ = editable;
    call(ScriptCall(QLatin1String("SetMapEditable")).flag(editable));
}

// --- what the page tells ------------------------------------------------------------------------------------------

void MyWebEngineView::onSensorDropped(const QString& ipncId, const QString& sensorPid, const QPoint& at) {
    if (!isReady())
        return;
    drops_.enqueue({ipncId, sensorPid});
    call(ScriptCall(QLatin1String("AddpointFromPixel")).number(at.x()).number(at.y()));
}

void MyWebEngineView::onDropPlaced(double lng, double lat) {
    const GeoPoint place = GeoPoint::fromBridge(lng, lat);
    if (drops_.isEmpty())
        return;
    const Drop drop = drops_.dequeue();
    if (place.isValid())
        emit sigDropped(drop.ipncId, drop.sensorPid, place.toMarker());
    else
        qDebug() << "dropped at no place of the world" << lat << lng;
}

void MyWebEngineView::onDragEnd(int index, double lng, double lat) {
    const GeoPoint place = GeoPoint::fromBridge(lng, lat);
    if (!has(index) || !place.isValid())
        return;
    shown_[index].marker.lat = place.lat;
    shown_[index].marker.lng = place.lng;
    emit sigMarkerMoved(index, place.toMarker());
}

void MyWebEngineView::onOpenDialog(const QString& dialogType) {
    // The one entry of the menu that is no dialog. Entries are told by their own texts, in every language.
    if (dialogType == QStringLiteral("自适应标记点"))
        fitMarkers();
    else
        emit sigOpenDialog(dialogType);
}

} // namespace corvanta::map
