#include "playback/ui/PlaybackActions.h"

#include <QCoreApplication>

#include <algorithm>

namespace corvanta::playback {

const std::vector<ActionEntry>& playbackActions() {
    const auto keys = [](const char* list) {
        return QString::fromLatin1(list).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    };
    static const std::vector<ActionEntry> table{
        {Action::PreviousRecording, "previousRecording", QT_TRANSLATE_NOOP("Playback", "上一段录像"),
         "previous-recording", keys("PgUp"), "PgUp", true},
        {Action::FrameBack, "frameBack", QT_TRANSLATE_NOOP("Playback", "后退一帧"), "frame-back", keys("Left"), "←",
         true},
        {Action::TogglePlay, "playPause", QT_TRANSLATE_NOOP("Playback", "播放"), "play", keys("Space"),
         QT_TRANSLATE_NOOP("Playback", "空格"), true},
        {Action::FrameForward, "frameForward", QT_TRANSLATE_NOOP("Playback", "前进一帧"), "frame-forward",
         keys("Right"), "→", true},
        {Action::NextRecording, "nextRecording", QT_TRANSLATE_NOOP("Playback", "下一段录像"), "next-recording",
         keys("PgDown"), "PgDn", true},
        {Action::Slower, "slower", QT_TRANSLATE_NOOP("Playback", "减速"), "slower", keys("Down"), "↓", true},
        {Action::Faster, "faster", QT_TRANSLATE_NOOP("Playback", "加速"), "faster", keys("Up"), "↑", true},
        {Action::MarkBegin, "markBegin", QT_TRANSLATE_NOOP("Playback", "标记开始"), "mark-begin", keys("I"), "I",
         true},
        {Action::MarkEnd, "markEnd", QT_TRANSLATE_NOOP("Playback", "标记结束"), "mark-end", keys("O"), "O", true},
        {Action::Export, "exportClip", QT_TRANSLATE_NOOP("Playback", "导出标记的片段"), "export", keys("E"), "E",
         true},
        {Action::Snapshot, "snapshot", QT_TRANSLATE_NOOP("Playback", "抓拍画面"), "snapshot", keys("S"), "S", true},
        {Action::SkipGaps, "skipGaps", QT_TRANSLATE_NOOP("Playback", "跳过无录像的时段"), "skip-gaps", keys("G"), "G",
         true},
        {Action::Open, "openFiles", QT_TRANSLATE_NOOP("Playback", "打开文件"), "open", keys("Ctrl+O"), "Ctrl+O",
         false},
        {Action::Close, "closePlayback", QT_TRANSLATE_NOOP("Playback", "关闭回放"), "close", keys("Ctrl+Backspace"),
         "Ctrl+Backspace", false},
        {Action::Back, "", QT_TRANSLATE_NOOP("Playback", "后退10秒"), nullptr, keys("Shift+Left"), "Shift+←", true},
        {Action::Forward, "", QT_TRANSLATE_NOOP("Playback", "前进10秒"), nullptr, keys("Shift+Right"), "Shift+→",
         true},
        {Action::ToBegin, "", QT_TRANSLATE_NOOP("Playback", "到开头"), nullptr, keys("Home"), "Home", true},
        {Action::ToEnd, "", QT_TRANSLATE_NOOP("Playback", "到结尾"), nullptr, keys("End"), "End", true},
        {Action::Zoom, "", QT_TRANSLATE_NOOP("Playback", "放大或还原画面"), nullptr, keys("Return Enter"), "Enter",
         true},
    };
    return table;
}

const ActionEntry& entryOf(Action action) {
    const auto& table = playbackActions();
    return *std::find_if(table.begin(), table.end(),
                         [action](const ActionEntry& entry) { return entry.action == action; });
}

QString actionText(const ActionEntry& entry) {
    return QCoreApplication::translate("Playback", entry.text);
}

QString withKey(const QString& text, const ActionEntry& entry) {
    return entry.keyLabel == nullptr ? text
                                     : QCoreApplication::translate("Playback", "%1（%2）")
                                           .arg(text, QCoreApplication::translate("Playback", entry.keyLabel));
}

} // namespace corvanta::playback
