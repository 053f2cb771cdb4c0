#include "monitor/ui/ModulePages.h"

#include "monitor/ui/TopBar.h"

#include <utility>

namespace {

constexpr int Narrowest = 320; // px

struct Button {
    const char* name; ///< object name
    const char* text;
    const char* drawing;
};

constexpr std::array Buttons{
    Button{"videoModule", QT_TRANSLATE_NOOP("ModulePages", "视频"), "video"},
    Button{"playbackModule", QT_TRANSLATE_NOOP("ModulePages", "回放"), "playback"},
    Button{"filesModule", QT_TRANSLATE_NOOP("ModulePages", "文件"), "files"},
    Button{"chartModule", QT_TRANSLATE_NOOP("ModulePages", "图表"), "chart"},
    Button{"mapModule", QT_TRANSLATE_NOOP("ModulePages", "电子地图"), "map"},
    Button{"dataModule", QT_TRANSLATE_NOOP("ModulePages", "数据"), "data"},
    Button{"logModule", QT_TRANSLATE_NOOP("ModulePages", "日志"), "log"},
    Button{"alarmModule", QT_TRANSLATE_NOOP("ModulePages", "报警中心"), "alarm"},
};

} // namespace

ModulePages::ModulePages(TopBar& bar, QWidget* parent)
    : QStackedWidget(parent)
    , bar_(bar) {
    static_assert(Buttons.size() == Modules);
    setObjectName(QStringLiteral("modulePages"));
    setMinimumWidth(Narrowest);
    for (std::size_t i = 0; i < Modules; ++i)
        bar_.addModule(
            static_cast<int>(i), QLatin1String(Buttons[i].name), [text = Buttons[i].text] { return tr(text); },
            QLatin1String(Buttons[i].drawing));
    bar_.setModule(static_cast<int>(Module::Video));
    connect(&bar_, &TopBar::sigModule, this, [this](int number) { showModule(static_cast<Module>(number)); });
}

void ModulePages::setMaker(Module module, Maker maker) {
    entries_[static_cast<std::size_t>(module)].maker = std::move(maker);
}

void ModulePages::showModule(Module module) {
    Entry& entry = entries_[static_cast<std::size_t>(module)];
    if (entry.page == nullptr && entry.maker) {
        entry.page = entry.maker(this);
        addWidget(entry.page);
    }
    if (entry.page == nullptr)
        return;
    bar_.setModule(static_cast<int>(module));
    setCurrentWidget(entry.page);
}
