#include "vision/setup/DialogTask.h"

#include <QCoreApplication>

namespace corvanta::vision {

DialogTask::DialogTask(QObject* parent)
    : BackgroundThread(parent) {
    connect(this, &BackgroundThread::finished, this, &DialogTask::end, Qt::QueuedConnection);
}

void DialogTask::giveUp(std::unique_ptr<DialogTask> task) {
    if (task == nullptr || task->isOver_)
        return; // destroyed here, nothing runs
    task->disconnect(SIGNAL(sigDone()));
    task->givenUp_ = true;
    task->setParent(QCoreApplication::instance()); // owns it from now on
    (void)task.release();
}

void DialogTask::end() {
    join();
    isOver_ = true;
    if (isGivenUp())
        deleteLater();
    else
        emit sigDone();
}

} // namespace corvanta::vision
