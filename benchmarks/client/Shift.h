#pragma once

#include <QString>

#include <functional>

struct AppContext;
class MonitorMainUI;

/// What an operator does in a shift beside looking at videos, by commands:
///
///     signout           signed-out             nobody's devices are left
///     return            signed-in CAMERAS      the account that was there; its cameras have their tiles again
///     layout R C        laid
///     zoom INDEX        laid                   a tile alone, and at the second time all again
///     reopen COUNT      reopened               asks for what is closed of tiles 0..COUNT-1
///     painting COUNT    painting               each of tiles 0..COUNT-1 has got a new picture since
///     record COUNT      recording COUNT        tiles 0..COUNT-1; answered when all have files
///     unrecord          recording 0            all files are complete
///     page NAME         page                   "video", "chart", "map", "data", "log", "alarm", "files", "playback"
///     charts COUNT      page                   the charts' page with the first inputs, one a chart
///     maps COUNT        page                   the maps' page with the first maps
///
/// GUI thread.
class Shift final {
public:
    using Done = std::function<bool()>;
    using Answer = std::function<QString()>;
    /// Waits for `done`, then says what `answer` returns.
    using Waiting = std::function<void(Done done, Answer answer)>;

    /// All outlive it.
    Shift(MonitorMainUI& window, const AppContext& context, Waiting answerWhen);

    /// False for a line that is none of these commands.
    bool obey(const QString& line);

private:
    void signOut();
    void comeBack();
    void record(int count);
    void stopRecording();
    void reopen(int count);
    void awaitPictures(int count);
    void showPage(const QString& name);
    void showCharts(int count);
    void showMaps(int count);

    MonitorMainUI& window_;
    const AppContext& context_;
    Waiting answerWhen_;
};
