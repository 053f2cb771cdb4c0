#include "video/ui/TileMenu.h"

#include <QActionGroup>

#include <algorithm>
#include <iterator>

using corvanta::video::AspectMode;

namespace {

struct Entry {
    TileAction action;
    const char* name; ///< object name
    const char* text;
    const char* runningText; ///< null when the entry starts nothing that goes on
    bool available;          ///< whether the tile can offer it by itself
};

constexpr Entry entries[] = {
    {TileAction::Open, "tileOpen", QT_TRANSLATE_NOOP("TileMenu", "打开视频"), nullptr, true},
    {TileAction::Record, "tileRecord", QT_TRANSLATE_NOOP("TileMenu", "开始录像"),
     QT_TRANSLATE_NOOP("TileMenu", "停止录像"), false},
    {TileAction::Listen, "tileListen", QT_TRANSLATE_NOOP("TileMenu", "开启音频"),
     QT_TRANSLATE_NOOP("TileMenu", "关闭音频"), false},
    {TileAction::Talk, "tileTalk", QT_TRANSLATE_NOOP("TileMenu", "开启对讲"),
     QT_TRANSLATE_NOOP("TileMenu", "关闭对讲"), false},
    {TileAction::Snapshot, "tileSnapshot", QT_TRANSLATE_NOOP("TileMenu", "抓拍照片"), nullptr, false},
    {TileAction::PanTiltZoom, "tilePanTiltZoom", QT_TRANSLATE_NOOP("TileMenu", "云台设置"), nullptr, false},
    {TileAction::Stretch, "tileStretch", QT_TRANSLATE_NOOP("TileMenu", "平铺"), nullptr, true},
    {TileAction::KeepRatio, "tileKeepRatio", QT_TRANSLATE_NOOP("TileMenu", "保持原始比例"), nullptr, true},
    {TileAction::LeaveFullScreen, "tileLeaveFullScreen", QT_TRANSLATE_NOOP("TileMenu", "退出全屏"), nullptr, true},
    {TileAction::Stop, "tileStop", QT_TRANSLATE_NOOP("TileMenu", "停   止"), nullptr, true},
    {TileAction::PollPreviews, "tilePollPreviews", QT_TRANSLATE_NOOP("TileMenu", "轮屏图片预览"), nullptr, false},
    {TileAction::PollVideos, "tilePollVideos", QT_TRANSLATE_NOOP("TileMenu", "轮屏视频通道"), nullptr, false},
};

const Entry& entryOf(TileAction action) {
    return *std::find_if(std::begin(entries), std::end(entries),
                         [action](const Entry& entry) { return entry.action == action; });
}

} // namespace

TileMenu::TileMenu(QWidget* parent)
    : QMenu(parent) {
    setObjectName(QStringLiteral("tileMenu"));
    setAccessibleName(tr("视频窗口菜单"));
    setStyleSheet(QStringLiteral("QMenu{background-color:rgb(235, 235, 235);} "
                                 "QMenu::item:selected {  background-color:rgb(0, 153, 255); }"));
    for (const TileAction action : {TileAction::Open, TileAction::Record, TileAction::Listen, TileAction::Talk,
                                    TileAction::Snapshot, TileAction::PanTiltZoom}) {
        add(*this, action);
    }
    QMenu* aspect = addMenu(tr("画面比例"));
    aspect->setObjectName(QStringLiteral("tileAspectMenu"));
    aspect->setAccessibleName(aspect->title());
    auto* modes = new QActionGroup(aspect);
    for (const TileAction action : {TileAction::Stretch, TileAction::KeepRatio}) {
        modes->addAction(add(*aspect, action))->setCheckable(true);
    }
    for (const TileAction action :
         {TileAction::LeaveFullScreen, TileAction::Stop, TileAction::PollPreviews, TileAction::PollVideos}) {
        add(*this, action);
    }
    for (const TileAction action : {TileAction::PollPreviews, TileAction::PollVideos}) {
        actions_.value(static_cast<int>(action))->setCheckable(true);
    }
    setAspectMode(AspectMode::KeepRatio);
}

QAction* TileMenu::add(QMenu& menu, TileAction action) {
    const Entry& entry = entryOf(action);
    QAction* added = menu.addAction(tr(entry.text));
    added->setObjectName(QLatin1String(entry.name));
    added->setData(static_cast<int>(action));
    added->setEnabled(entry.available);
    actions_.insert(static_cast<int>(action), added);
    return added;
}

std::optional<TileAction> TileMenu::actionOf(const QAction* action) {
    bool isNumber = false;
    const int value = action->data().toInt(&isNumber);
    const auto known = std::any_of(std::begin(entries), std::end(entries),
                                   [value](const Entry& entry) { return static_cast<int>(entry.action) == value; });
    return isNumber && known ? std::optional(static_cast<TileAction>(value)) : std::nullopt;
}

void TileMenu::setActionEnabled(TileAction action, bool enabled) {
    actions_.value(static_cast<int>(action))->setEnabled(enabled);
}

void TileMenu::setActionChecked(TileAction action, bool checked) {
    actions_.value(static_cast<int>(action))->setChecked(checked);
}

void TileMenu::setActionRunning(TileAction action, bool running) {
    const Entry& entry = entryOf(action);
    if (entry.runningText != nullptr) {
        actions_.value(static_cast<int>(action))->setText(tr(running ? entry.runningText : entry.text));
    }
}

void TileMenu::setAspectMode(AspectMode mode) {
    const TileAction action = mode == AspectMode::Stretch ? TileAction::Stretch : TileAction::KeepRatio;
    actions_.value(static_cast<int>(action))->setChecked(true);
}
