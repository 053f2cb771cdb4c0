#include "logs/LogLoader.h"

#include <QElapsedTimer>

namespace {

constexpr int StepMs = 12; // less than the time between two pictures of a smooth stream
constexpr int RowsAtOnce = 200;
constexpr int ProgressMs = 100; // between two reports

} // namespace

LogLoader::LogLoader(QObject* parent)
    : QObject(parent) {
    timer_.setInterval(0);
    connect(&timer_, &QTimer::timeout, this, &LogLoader::step);
}

void LogLoader::start(LogQuery query) {
    abandon();
    rows_ = query.emptyRows();
    query_.emplace(std::move(query));
    sinceProgress_.start();
    timer_.start();
}

void LogLoader::stop() {
    if (isRunning())
        finish(false);
}

void LogLoader::abandon() {
    timer_.stop();
    query_.reset();
    rows_ = LogRows();
}

void LogLoader::step() {
    QElapsedTimer time;
    time.start();
    bool more = true;
    while (more && time.elapsed() < StepMs)
        more = query_->fetch(rows_, RowsAtOnce);
    if (!more) {
        finish(true);
    } else if (sinceProgress_.elapsed() >= ProgressMs) {
        sinceProgress_.start();
        emit sigProgress(rows_.rowCount());
    }
}

void LogLoader::finish(bool complete) {
    timer_.stop();
    query_.reset();
    emit sigFinished(complete);
}
