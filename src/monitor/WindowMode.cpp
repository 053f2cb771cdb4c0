#include "monitor/WindowMode.h"

#include <QtGlobal>

namespace corvanta {

const std::array<WindowStateText, 3>& windowStates() {
    static constexpr std::array<WindowStateText, 3> Table{{
        {WindowMode::State::Normal, QT_TRANSLATE_NOOP("WindowMode", "普通窗口")},
        {WindowMode::State::Maximized, QT_TRANSLATE_NOOP("WindowMode", "最大化")},
        {WindowMode::State::FullScreen, QT_TRANSLATE_NOOP("WindowMode", "全屏")},
    }};
    return Table;
}

const std::array<WindowSwitchText, 2>& windowSwitches() {
    static constexpr std::array<WindowSwitchText, 2> Table{{
        {&WindowMode::onTop, QT_TRANSLATE_NOOP("WindowMode", "置顶")},
        {&WindowMode::hidesDeviceTree, QT_TRANSLATE_NOOP("WindowMode", "隐藏设备树")},
    }};
    return Table;
}

} // namespace corvanta

WindowMode WindowMode::fromSetting(const QVariant& setting) {
    QStringList texts = setting.toStringList();
    texts.removeAll(QString());
    WindowMode mode;
    // Full screen is the last state of the table, so it wins.
    for (const auto& [state, text] : corvanta::windowStates()) {
        if (texts.removeAll(QString::fromUtf8(text)) > 0)
            mode.state = state;
    }
    for (const auto& [isOn, text] : corvanta::windowSwitches())
        mode.*isOn = texts.removeAll(QString::fromUtf8(text)) > 0;
    mode.others = texts;
    return mode;
}

QStringList WindowMode::toSetting() const {
    QStringList texts;
    for (const auto& [named, text] : corvanta::windowStates()) {
        if (named == state && state != State::Normal)
            texts += QString::fromUtf8(text);
    }
    for (const auto& [isOn, text] : corvanta::windowSwitches()) {
        if (this->*isOn)
            texts += QString::fromUtf8(text);
    }
    return texts + others;
}
