#pragma once

#include "map/web/ScriptCall.h"

#include <QHash>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>

namespace corvanta::map {

/// Calls that wait for the page. All that came since the last time go together, and the next ones only when the page
/// has carried those out: a page that is slower than the values are never has more before it than one text a marker.
class ScriptQueue final : public QObject {
    Q_OBJECT
public:
    /// Carries a script out in the page and then calls `done`, on the GUI thread.
    using Run = std::function<void(const QString& script, const std::function<void()>& done)>;

    explicit ScriptQueue(Run run, QObject* parent = nullptr);

    void add(const ScriptCall& call);
    /// A marker's text takes the place of the one before, if that still waits.
    void addText(int index, const ScriptCall& call);
    /// Texts that wait keep their place from now on: indices mean other markers.
    void indicesChanged() { waitingTexts_.clear(); }
    /// The page is gone, with what it was carrying out.
    void clear();

private:
    void send();

    Run run_;
    QStringList waiting_;
    QHash<int, int> waitingTexts_; ///< place in `waiting_` by marker index
    QTimer timer_;
    bool isRunning_ = false; ///< the page is at the last ones
    int page_ = 0;           ///< counts pages, so that a late answer of the one before does not count
};

} // namespace corvanta::map
