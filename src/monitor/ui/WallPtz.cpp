#include "monitor/ui/WallPtz.h"

#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ServerErrors.h"
#include "manageWidget/ui/PtzPad.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "video/ui/ItemVideo.h"
#include "video/ui/TileMenu.h"

#include <QDebug>
#include <QKeyEvent>
#include <QTimer>

#include <algorithm>
#include <array>

namespace manage = corvanta::manage;
namespace requests = corvanta::requests;
using manage::PtzCaps;
using manage::PtzMotion;

namespace {

constexpr int PadStays = 4000; // ms after the last movement of the mouse
constexpr int Margin = 8;      // px
constexpr int MarkHeight = 24; // px, of what stands in the lower right corner of a tile

struct KeyMotion {
    int key;
    PtzMotion motion;
};
constexpr std::array<KeyMotion, 7> Keys{{{Qt::Key_Left, {.pan = -1}},
                                         {Qt::Key_Right, {.pan = 1}},
                                         {Qt::Key_Up, {.tilt = 1}},
                                         {Qt::Key_Down, {.tilt = -1}},
                                         {Qt::Key_Plus, {.zoom = 1}},
                                         {Qt::Key_Equal, {.zoom = 1}}, // plus without Shift
                                         {Qt::Key_Minus, {.zoom = -1}}}};

PtzMotion motionOf(const QSet<int>& held) {
    PtzMotion sum;
    for (const KeyMotion& one : Keys) {
        if (!held.contains(one.key))
            continue;
        sum.pan = qBound(-1, sum.pan + one.motion.pan, 1);
        sum.tilt = qBound(-1, sum.tilt + one.motion.tilt, 1);
        sum.zoom = qBound(-1, sum.zoom + one.motion.zoom, 1);
    }
    return sum;
}

bool isOurs(const QKeyEvent& event) {
    const auto modifiers = event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    return modifiers == Qt::NoModifier &&
           std::any_of(Keys.begin(), Keys.end(), [&event](const KeyMotion& one) { return one.key == event.key(); });
}

} // namespace

WallPtz::WallPtz(const AppContext& context, Fwidget& grid, LiveVideo& live, QObject* parent)
    : QObject(parent)
    , context_(context)
    , grid_(grid)
    , live_(live)
    , line_(context.gateway, context.operationLog)
    , pad_(new PtzPad(PtzPad::Extent::Small, &grid)) {
    pad_->hide();
    grid_.addCover(*pad_);
    hide_.setSingleShot(true);
    hide_.setInterval(PadStays);
    connect(&hide_, &QTimer::timeout, this, [this] {
        if (pad_->underMouse() || pad_->isHeld())
            hide_.start();
        else
            pad_->hide();
    });
    connectTiles();
    connectPad();
    connect(&grid_, &Fwidget::sigSelected, this, &WallPtz::update);
    connect(&grid_, &Fwidget::sigLayoutChanged, this, &WallPtz::update);
    connect(&live_, &LiveVideo::sigOpenChanged, this, &WallPtz::update);
    connect(&line_, &PtzLine::sigProblem, this, &WallPtz::sigMessage);
}

WallPtz::~WallPtz() {
    stop();
}

void WallPtz::connectTiles() {
    for (int index = 0; index < grid_.grid().poolSize(); ++index) {
        ItemVideo* const tile = grid_.tile(index);
        tile->setMouseTracking(true);
        tile->installEventFilter(this);
        connect(tile, &ItemVideo::sigMenuAboutToShow, this, [this](int number) {
            const auto device = context_.devices.deviceOfTile(number);
            const bool isPossible = device && mayMove(*device) && (!caps_.contains(*device) || caps_[*device].any());
            grid_.tile(number)->menu().setActionEnabled(TileAction::PanTiltZoom, isPossible);
        });
        connect(tile, &ItemVideo::sigMenuAction, this, [this](int number, TileAction action) {
            const auto device = context_.devices.deviceOfTile(number);
            if (action == TileAction::PanTiltZoom && device)
                emit sigDialog(*device);
        });
    }
}

void WallPtz::connectPad() {
    connect(pad_, &PtzPad::sigHold, &line_, &PtzLine::hold);
    connect(pad_, &PtzPad::sigRelease, &line_, &PtzLine::release);
    connect(pad_, &PtzPad::sigHome, &line_, &PtzLine::home);
    connect(pad_, &PtzPad::sigMore, this, [this] {
        if (!line_.device().isEmpty())
            emit sigDialog(line_.device());
    });
}

bool WallPtz::mayMove(const QString& ipncId) const {
    const DeviceRecord* const device = context_.devices.device(ipncId);
    if (device == nullptr || !device->isVideo())
        return false;
    return device->isAdmin ||
           device->record.value(QStringLiteral("authority")).toMap().value(QStringLiteral("ptz")).toBool();
}

int WallPtz::tileInQuestion() const {
    const int zoomed = grid_.grid().zoomIndex();
    return zoomed >= 0 ? zoomed : grid_.selectedIndex();
}

QString WallPtz::movable() const {
    const int index = tileInQuestion();
    const auto device = context_.devices.deviceOfTile(index);
    const bool isMovable = device && grid_.isIndexShown(index) && grid_.tileRequest(index) > 0 &&
                           live_.isOpen(*device) && mayMove(*device);
    return isMovable ? *device : QString();
}

void WallPtz::onLists() {
    asked_.clear();
    const QStringList known = caps_.keys();
    for (const QString& ipncId : known) {
        if (context_.devices.device(ipncId) == nullptr)
            caps_.remove(ipncId);
    }
    update();
}

void WallPtz::update() {
    const QString ipncId = movable();
    const bool isNew = ipncId != line_.device();
    if (isNew)
        keys_.clear();
    line_.setDevice(ipncId);
    if (!ipncId.isEmpty() && !caps_.contains(ipncId))
        askCaps(ipncId);
    if (caps_.value(ipncId).any())
        showPad();
    else
        hidePad();
}

void WallPtz::askCaps(const QString& ipncId) {
    if (asked_.contains(ipncId))
        return;
    asked_.insert(ipncId);
    // A camera that is not heard of, or was not, is asked again.
    QTimer::singleShot(context_.gateway.patience(), this, [this, ipncId] {
        if (!caps_.contains(ipncId) && asked_.remove(ipncId))
            update();
    });
    const std::string json = requests::deviceRequest(
        QStringLiteral("读取设备参数"),
        {{QStringLiteral("ipncid"), ipncId}, {QStringLiteral("getcmds"), QStringList{QStringLiteral("ptzcaps")}}});
    context_.gateway.request(json, this, [this, ipncId](const QVariantMap& reply) {
        if (!corvanta::serverErrors::isSuccess(reply)) {
            qDebug() << "no answer whether" << ipncId << "can be moved:" << corvanta::serverErrors::codeOf(reply);
            return;
        }
        const QVariantMap values =
            reply.value(QStringLiteral("resp")).toMap().value(QStringLiteral("getcmds")).toMap();
        caps_.insert(ipncId, PtzCaps::fromValue(values.value(QStringLiteral("ptzcaps"))));
        update();
    });
}

void WallPtz::showPad() {
    const ItemVideo* const tile = grid_.tile(tileInQuestion());
    const QSize size = pad_->sizeHint();
    const QRect room = tile->geometry().adjusted(Margin, Margin + MarkHeight, -Margin, -Margin - MarkHeight);
    // A small tile has no room beside its title; its keys and the dialog are still there.
    if (room.width() < 2 * size.width() || room.height() < size.height()) {
        hidePad();
        return;
    }
    pad_->setCaps(caps_.value(line_.device()));
    pad_->setGeometry(QRect(room.bottomRight() - QPoint(size.width() - 1, size.height() - 1), size));
    pad_->show();
    pad_->raise();
    hide_.start();
}

void WallPtz::hidePad() {
    hide_.stop();
    pad_->hide();
}

bool WallPtz::eventFilter(QObject* watched, QEvent* event) {
    const auto* const tile = qobject_cast<ItemVideo*>(watched);
    if (tile == nullptr || tile->tileIndex() != tileInQuestion() || !caps_.value(line_.device()).any())
        return QObject::eventFilter(watched, event);
    const bool isZoomed = grid_.grid().zoomIndex() == tile->tileIndex();
    switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::Resize:
        if (event->type() == QEvent::MouseMove || pad_->isVisible())
            showPad();
        break;
    case QEvent::ShortcutOverride:
        // The keys are the camera's before they are shortcuts of the window.
        if (isZoomed && isOurs(*static_cast<QKeyEvent*>(event))) {
            event->accept();
            return true;
        }
        break;
    case QEvent::KeyPress:
        return isZoomed && onKey(*static_cast<QKeyEvent*>(event), true);
    case QEvent::KeyRelease:
        return onKey(*static_cast<QKeyEvent*>(event), false);
    case QEvent::FocusOut:
    case QEvent::WindowDeactivate:
        letGo();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool WallPtz::onKey(const QKeyEvent& event, bool pressed) {
    if (pressed ? !isOurs(event) : !keys_.contains(event.key()))
        return false;
    if (event.isAutoRepeat())
        return true;
    if (pressed)
        keys_.insert(event.key());
    else
        keys_.remove(event.key());
    line_.hold(motionOf(keys_));
    return true;
}

void WallPtz::letGo() {
    if (keys_.isEmpty())
        return;
    keys_.clear();
    line_.release();
}

void WallPtz::stop() {
    keys_.clear();
    line_.stopNow();
}
