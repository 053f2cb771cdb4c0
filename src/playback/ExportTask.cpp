#include "playback/ExportTask.h"

namespace corvanta::playback {

ExportTask::ExportTask(QObject* parent)
    : QObject(parent) {}

ExportTask::~ExportTask() {
    cancel();
    if (thread_.joinable())
        thread_.join();
}

void ExportTask::start(std::vector<ClipPart> parts, std::filesystem::path target) {
    thread_ = std::thread([this, parts = std::move(parts), target = std::move(target)] {
        const ExportResult result = exportClip(parts, target, [this](double done) { return report(done); });
        queue_.post([this, result] {
            result_ = result;
            emit sigDone();
        });
    });
}

void ExportTask::cancel() {
    cancelled_.store(true);
}

bool ExportTask::report(double done) {
    const int percent = static_cast<int>(done * 100);
    if (percent != percent_) {
        percent_ = percent;
        queue_.post([this, percent] { emit sigProgress(percent); });
    }
    return !cancelled_.load();
}

} // namespace corvanta::playback
