#include "map/ui/ItemMapWidget.h"

#include "base/AppEvents.h"
#include "base/AppPaths.h"
#include "base/Settings.h"
#include "base/ui/BarButton.h"
#include "base/ui/PlainToolTip.h"
#include "base/ui/Theme.h"
#include "map/ui/ElectronMapwidget.h"
#include "map/ui/MapSession.h"
#include "map/ui/WebMapLoader.h"
#include "map/ui/WebMapPlugin.h"

#include <QContextMenuEvent>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

namespace corvanta::map {
namespace {

constexpr int LowestWithHead = 110; // px; in a lower cell the map has all the room
constexpr int LongestName = 100;    // characters

QString unreadable() {
    return ItemMapWidget::tr("地图图片无法读取!");
}

/// A text of a menu: an ampersand is one, none that underlines.
QString menuText(const QString& text) {
    return text.left(LongestName).simplified().replace(QLatin1Char('&'), QStringLiteral("&&"));
}

} // namespace

ItemMapWidget::ItemMapWidget(const AppContext& context, MapDocument& document, int number, QWidget* parent)
    : QWidget(parent)
    , context_(context)
    , document_(document)
    , number_(number) {
    setObjectName(QStringLiteral("mapCell%1").arg(number));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored); // all cells are alike
    setFocusPolicy(Qt::StrongFocus);
    build();
    worded(this, [this] {
        setAccessibleName(tr("地图窗口 %1").arg(number_ + 1));
        hint_->setText(hint());
        if (failed_)
            failureText_->setText(failed_());
    });
    connect(&document_, &MapDocument::sigMapsChanged, this, &ItemMapWidget::onMaps);
    connect(&document_, &MapDocument::sigPictureReady, this, [this](const QString& path) {
        const MapRecord* const map = document_.map(mapId());
        if (picture_ == nullptr || map == nullptr || map->filePath != path)
            return;
        stack_->setCurrentWidget(view_);
        picture_->readPicture();
    });
    connect(&document_, &MapDocument::sigPictureFailed, this, [this](const QString& path, const QString& text) {
        const MapRecord* const map = document_.map(mapId());
        if (picture_ != nullptr && !picture_->hasPicture() && map != nullptr && map->filePath == path)
            showFailure([text] { return tr("地图图片下载失败!") + QLatin1Char('\n') + text; });
    });
}

ItemMapWidget::~ItemMapWidget() = default;

void ItemMapWidget::build() {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(1, 1, 1, 1); // the cell's own line
    column->setSpacing(0);
    head_ = makeHead();
    column->addWidget(head_);
    stack_ = new QStackedWidget(this);
    hint_ = new QLabel(stack_);
    hint_->setObjectName(QStringLiteral("mapHint"));
    hint_->setTextFormat(Qt::PlainText);
    hint_->setAlignment(Qt::AlignCenter);
    hint_->setWordWrap(true);
    hint_->setProperty("role", QStringLiteral("faint"));
    hint_->setMinimumSize(1, 1);
    stack_->addWidget(hint_);
    failure_ = makeFailure();
    stack_->addWidget(failure_);
    column->addWidget(stack_, 1);
    showHint();
}

QWidget* ItemMapWidget::makeHead() {
    auto* const head = new QWidget(this);
    auto* const row = new QHBoxLayout(head);
    row->setContentsMargins(2 * theme::Step, 0, theme::Step, 0);
    row->setSpacing(0);
    name_ = new QLabel(head);
    name_->setObjectName(QStringLiteral("mapCellName"));
    name_->setTextFormat(Qt::PlainText);
    name_->setProperty("role", QStringLiteral("faint"));
    name_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->addWidget(name_, 1);
    const auto add = [this, head, row](const char* name, Text text, const char* drawing, auto&& act) {
        QToolButton* const button = barButton(head, QLatin1String(name), std::move(text), QLatin1String(drawing));
        button->setIconSize(QSize(16, 16));
        connect(button, &QToolButton::clicked, this, std::forward<decltype(act)>(act));
        row->addWidget(button);
    };
    add(
        "mapZoomIn", [] { return tr("放大"); }, "zoom-in", [this] { view_->zoomIn(); });
    add(
        "mapZoomOut", [] { return tr("缩小"); }, "zoom-out", [this] { view_->zoomOut(); });
    add(
        "mapFit", [] { return tr("自适应标记点"); }, "map-fit", [this] { view_->fitMarkers(); });
    add(
        "mapMenu", [] { return tr("地图菜单"); }, "more",
        [this] { showMenu(mapToGlobal(QPoint(width() - 1, head_->height()))); });
    return head;
}

QWidget* ItemMapWidget::makeFailure() {
    auto* const page = new QWidget(stack_);
    auto* const column = new QVBoxLayout(page);
    failureText_ = new QLabel(page);
    failureText_->setObjectName(QStringLiteral("mapFailure"));
    failureText_->setTextFormat(Qt::PlainText);
    failureText_->setAlignment(Qt::AlignCenter);
    failureText_->setWordWrap(true);
    failureText_->setProperty("role", QStringLiteral("faint"));
    auto* const again = new QPushButton(page);
    again->setObjectName(QStringLiteral("mapReload"));
    wordedText(again, [] { return tr("重新加载"); });
    wordedName(again, [] { return tr("重新加载"); });
    connect(again, &QPushButton::clicked, this, &ItemMapWidget::retry);
    column->addStretch(1);
    column->addWidget(failureText_);
    column->addWidget(again, 0, Qt::AlignHCenter);
    column->addStretch(1);
    return page;
}

QString ItemMapWidget::mapId() const {
    return session_ == nullptr ? QString() : session_->mapId();
}

QString ItemMapWidget::hint() const {
    if (webMissing_)
        return webMissing_();
    return document_.maps().isEmpty() ? tr("未添加地图，请点击鼠标右键开始添加地图!") : tr("请右键打开地图!");
}

void ItemMapWidget::showHint() {
    head_->hide();
    hint_->setText(hint());
    stack_->setCurrentWidget(hint_);
}

MapView* ItemMapWidget::makeView(const MapRecord& map) {
    picture_ = nullptr;
    if (map.type == MapType::Local) {
        picture_ = new ElectronMapwidget(stack_);
        return picture_;
    }
    if (map.type == MapType::Unknown) {
        webMissing_ = [] {
            return tr("当前版本不支持该类型的地图!");
        };
        return nullptr;
    }
    WebMapOptions options;
    options.tileServer = context_.settings.get(keys::TileServer).toString();
    options.dataFolder = context_.paths.userInfo() + QStringLiteral("maps/");
    QDir().mkpath(options.dataFolder);
    return makeWebMap(options, stack_, webMissing_);
}

void ItemMapWidget::openMap(const QString& mapId) {
    const MapRecord* const known = document_.map(mapId);
    if (known == nullptr || mapId == this->mapId())
        return;
    const MapRecord map = *known; // the document may change meanwhile
    closeMap();
    view_ = makeView(map);
    if (view_ == nullptr) {
        showHint();
        return;
    }
    stack_->addWidget(view_);
    connectView(map);
    session_ = new MapSession(context_, document_, map.id, *view_);
    // Not from inside what told it: the view goes with the map.
    connect(session_, &MapSession::sigGone, this, &ItemMapWidget::closeMap, Qt::QueuedConnection);
    AppEvents& events = context_.events;
    if (picture_ != nullptr) {
        picture_->setSession(session_);
        connect(&events, &AppEvents::sig_triggerAlarm, picture_, &ElectronMapwidget::OntriggerAlarm);
        connect(&events, &AppEvents::sig_UpdateSensorInputData, picture_, &ElectronMapwidget::UpdateSensorInputData);
        picture_->setMap(map);
        document_.fetchAgain(map.filePath); // before others that wait
    } else {
        connect(&events, &AppEvents::sig_triggerAlarm, session_, &MapSession::OntriggerAlarm);
        connect(&events, &AppEvents::sig_UpdateSensorInputData, session_, &MapSession::UpdateSensorInputData);
    }
    head_->setVisible(height() >= LowestWithHead);
    stack_->setCurrentWidget(view_);
    if (picture_ != nullptr && map.filePath.isEmpty())
        showFailure(&unreadable); // its name can be no file's
    onMaps();
    emit sigChanged();
}

void ItemMapWidget::connectView(const MapRecord& map) {
    connect(view_, &MapView::sigMapMenu, this, &ItemMapWidget::showMenu);
    connect(view_, &MapView::sigOpenDialog, this, &ItemMapWidget::openDialog);
    connect(view_, &MapView::sigDoubleClicked, this, [this] { emit sigZoom(number_); });
    connect(view_, &MapView::sigFailed, this, [this, isPicture = map.type == MapType::Local](const QString& reason) {
        // A web page says it in its own place, and offers to load it again.
        if (isPicture)
            showFailure(&unreadable); // the one thing that can befall it
        else
            emit context_.events.sig_MessageBar(reason);
    });
}

void ItemMapWidget::closeMap() {
    const bool wasOpen = view_ != nullptr;
    webMissing_ = {};
    if (wasOpen) {
        stack_->removeWidget(view_);
        delete std::exchange(view_, nullptr); // its session goes with it
    }
    picture_ = nullptr;
    session_ = nullptr;
    showHint();
    if (wasOpen)
        emit sigChanged();
}

void ItemMapWidget::onMaps() {
    const MapRecord* const map = document_.map(mapId());
    if (map == nullptr) {
        if (view_ == nullptr)
            hint_->setText(hint());
        return;
    }
    name_->setText(map->name.left(LongestName).simplified());
    name_->setToolTip(plainToolTip(map->name.left(LongestName)));
    setAccessibleDescription(map->name.left(LongestName));
    if (picture_ != nullptr)
        picture_->setMap(*map);
}

void ItemMapWidget::showFailure(Text text) {
    failed_ = std::move(text);
    failureText_->setText(failed_());
    stack_->setCurrentWidget(failure_);
}

void ItemMapWidget::retry() {
    const MapRecord* const map = document_.map(mapId());
    if (map == nullptr || picture_ == nullptr)
        return;
    stack_->setCurrentWidget(view_);
    document_.fetchAgain(map->filePath);
    picture_->readPicture();
}

void ItemMapWidget::fillOpenMenu(QMenu& menu) {
    for (const MapRecord& map : document_.maps()) {
        QString text = menuText(map.name);
        if (map.shared)
            text = tr("%1（分享）").arg(text);
        QAction* const action = menu.addAction(text, this, [this, id = map.id] { openMap(id); });
        action->setObjectName(QStringLiteral("mapOpenOne"));
        action->setCheckable(true);
        action->setChecked(map.id == mapId());
    }
    menu.setEnabled(!menu.isEmpty());
}

void ItemMapWidget::showMenu(const QPoint& place) {
    auto* const menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("mapCellMenu"));
    menu->setAccessibleName(tr("地图菜单"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [menu, this](const char* name, const QString& text, bool enabled, auto&& act) {
        QAction* const action = menu->addAction(text, this, std::forward<decltype(act)>(act));
        action->setObjectName(QLatin1String(name));
        action->setEnabled(enabled);
    };
    add("mapMenuAdd", tr("添加地图"), true, [this] { emit sigAdd(number_); });
    QMenu* const open = menu->addMenu(tr("打开地图"));
    open->setObjectName(QStringLiteral("mapMenuOpen"));
    fillOpenMenu(*open);
    // Not from inside the menu's own end: the view that it stands over goes.
    add("mapMenuClose", tr("关闭地图"), view_ != nullptr,
        [this] { QMetaObject::invokeMethod(this, &ItemMapWidget::closeMap, Qt::QueuedConnection); });
    add("mapMenuManage", tr("管理地图"), true, [this] { emit sigManage(); });
    add("mapMenuFit", tr("自适应标记点"), view_ != nullptr, [this] {
        if (view_ != nullptr)
            view_->fitMarkers();
    });
    menu->popup(place);
}

void ItemMapWidget::openDialog(const QString& dialogType) {
    if (dialogType == QStringLiteral("添加地图")) {
        emit sigAdd(number_);
    } else if (dialogType == QStringLiteral("管理地图")) {
        emit sigManage();
    } else if (dialogType == QStringLiteral("关闭地图")) {
        QMetaObject::invokeMethod(this, &ItemMapWidget::closeMap, Qt::QueuedConnection);
    } else if (dialogType == QStringLiteral("自适应标记点")) {
        view_->fitMarkers();
    } else if (dialogType == QStringLiteral("打开地图")) {
        auto* const menu = new QMenu(this);
        menu->setObjectName(QStringLiteral("mapMenuOpen"));
        menu->setAccessibleName(tr("打开地图"));
        menu->setAttribute(Qt::WA_DeleteOnClose);
        fillOpenMenu(*menu);
        menu->popup(QCursor::pos());
    }
}

void ItemMapWidget::contextMenuEvent(QContextMenuEvent* event) {
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    showMenu(byMouse ? event->globalPos() : mapToGlobal(rect().center()));
}

void ItemMapWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), theme::Panel);
    painter.setPen(hasFocus() ? theme::Selection : theme::TileLine);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void ItemMapWidget::mouseDoubleClickEvent(QMouseEvent*) {
    emit sigZoom(number_);
}

void ItemMapWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    head_->setVisible(view_ != nullptr && height() >= LowestWithHead);
}

} // namespace corvanta::map
