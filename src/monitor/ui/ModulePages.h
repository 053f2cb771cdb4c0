#pragma once

#include <QStackedWidget>

#include <array>
#include <functional>

class TopBar;

/// The modules of the main window, in the order of their buttons.
enum class Module { Video, Playback, Files, Chart, Map, Data, Log, Alarm };

/// The pages of the modules, one at a time. A page is made when it is first wanted. GUI thread.
class ModulePages final : public QStackedWidget {
    Q_OBJECT
public:
    /// Makes a page as a child of `parent`.
    using Maker = std::function<QWidget*(QWidget* parent)>;

    /// Gives `bar` its buttons and follows them. It outlives the pages.
    ModulePages(TopBar& bar, QWidget* parent);

    /// Before the module is first shown.
    void setMaker(Module module, Maker maker);
    /// Shows a module's page and marks its button.
    void showModule(Module module);

private:
    static constexpr std::size_t Modules = 8;
    struct Entry {
        QWidget* page = nullptr; ///< null until it is wanted
        Maker maker;
    };

    TopBar& bar_;
    std::array<Entry, Modules> entries_;
};
