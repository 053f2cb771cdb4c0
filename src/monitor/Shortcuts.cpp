#include "monitor/Shortcuts.h"

namespace corvanta {

const std::array<Shortcut, 15>& shortcuts() {
    const auto keys = [](const char* list) {
        return QString::fromLatin1(list).split(QLatin1Char(' '));
    };
    static const std::array<Shortcut, 15> Table{{
        {ShortcutId::Escape, keys("Esc"), "Esc", QT_TRANSLATE_NOOP("Shortcuts", "退出全屏/还原画面"), false},
        {ShortcutId::ToggleVideo, keys("Return Enter"), "Enter",
         QT_TRANSLATE_NOOP("Shortcuts", "打开或关闭所选设备的视频"), true},
        {ShortcutId::StopTile, keys("Del"), "Delete", QT_TRANSLATE_NOOP("Shortcuts", "关闭所选窗口的视频"), true},
        {ShortcutId::Layout, keys("1 2 3 4 5 6 7 8"), "1…8",
         QT_TRANSLATE_NOOP("Shortcuts", "选择布局：1/4/9/16/18/25/36/64窗口"), true},
        {ShortcutId::MoveSelection, keys("Left Right Up Down"), "←→↑↓",
         QT_TRANSLATE_NOOP("Shortcuts", "移动所选窗口"), true},
        {ShortcutId::MoveCamera, {}, "←→↑↓ + -", QT_TRANSLATE_NOOP("Shortcuts", "画面放大时转动云台、变焦"), true},
        {ShortcutId::ZoomTile, keys("Space"), QT_TRANSLATE_NOOP("Shortcuts", "空格"),
         QT_TRANSLATE_NOOP("Shortcuts", "放大或还原所选窗口"), true},
        {ShortcutId::FullScreen, keys("F11"), "F11", QT_TRANSLATE_NOOP("Shortcuts", "全屏"), false},
        {ShortcutId::DevicePanel, keys("Ctrl+T"), "Ctrl+T", QT_TRANSLATE_NOOP("Shortcuts", "显示或隐藏设备树"),
         false},
        {ShortcutId::SearchDevice, keys("Ctrl+F"), "Ctrl+F", QT_TRANSLATE_NOOP("Shortcuts", "搜索设备"), false},
        {ShortcutId::RefreshDevices, keys("F5"), "F5", QT_TRANSLATE_NOOP("Shortcuts", "刷新设备列表"), false},
        {ShortcutId::TogglePoll, keys("Ctrl+P"), "Ctrl+P", QT_TRANSLATE_NOOP("Shortcuts", "开始/停止轮屏"), false},
        {ShortcutId::StopAll, keys("Ctrl+W"), "Ctrl+W", QT_TRANSLATE_NOOP("Shortcuts", "关闭所有视频"), false},
        {ShortcutId::OpenSettings, keys("Ctrl+,"), "Ctrl+,", QT_TRANSLATE_NOOP("Shortcuts", "设置"), false},
        {ShortcutId::Help, keys("F1"), "F1", QT_TRANSLATE_NOOP("Shortcuts", "帮助"), false},
    }};
    return Table;
}

} // namespace corvanta
