#pragma once

#include "base/BackgroundThread.h"

#include <atomic>
#include <memory>

namespace corvanta::vision {

/// Work in the background for a dialog that may be closed meanwhile. A derived class joins in its destructor.
class DialogTask : public BackgroundThread {
    Q_OBJECT
public:
    explicit DialogTask(QObject* parent = nullptr);

    /// Gives a task up without waiting for it: it tells nothing any more, ends at its next pause, and is destroyed
    /// then (or with the application). Null is ignored. GUI thread.
    static void giveUp(std::unique_ptr<DialogTask> task);

signals:
    /// It is over; in the GUI thread, after the thread was joined. Its receivers may destroy the task later, not now.
    void sigDone();

protected:
    /// Asked between pieces of work; any thread.
    bool isGivenUp() const { return givenUp_.load(); }

private:
    void end();

    std::atomic<bool> givenUp_{false};
    bool isOver_ = false; ///< the GUI thread has heard of the end
};

} // namespace corvanta::vision
