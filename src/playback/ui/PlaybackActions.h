#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace corvanta::playback {

/// What an operator can do with a playback, by button or key.
enum class Action {
    TogglePlay,
    FrameBack,
    FrameForward,
    Slower,
    Faster,
    PreviousRecording,
    NextRecording,
    Back,    ///< ten seconds
    Forward, ///< ten seconds
    ToBegin,
    ToEnd,
    MarkBegin,
    MarkEnd,
    Export,
    Snapshot,
    SkipGaps,
    Zoom,
    Open,
    Close
};

struct ActionEntry {
    Action action;
    const char* objectName; ///< of its button
    const char* text;       ///< to be translated in the context "Playback"
    const char* drawing;    ///< of its button; null for one that only keys do
    QStringList keys;       ///< portable text
    const char* keyLabel;   ///< as it is shown, to be translated likewise; null without a key
    bool needsRecordings;   ///< does nothing while nothing is loaded
};

/// In the order of the buttons.
const std::vector<ActionEntry>& playbackActions();
const ActionEntry& entryOf(Action action);
/// The text of an action, translated.
QString actionText(const ActionEntry& entry);
/// `text` with the key of an action, as tool tips show it.
QString withKey(const QString& text, const ActionEntry& entry);

} // namespace corvanta::playback
