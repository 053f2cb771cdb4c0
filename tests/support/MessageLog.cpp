#include "support/MessageLog.h"

#include <mutex>
#include <string>
#include <vector>

namespace {

std::mutex mutex;
std::vector<std::string> collected;
QtMessageHandler previous = nullptr;

void collect(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    {
        const std::lock_guard lock(mutex);
        collected.push_back(text.toStdString());
    }
    if (type != QtDebugMsg && previous != nullptr)
        previous(type, context, text);
}

} // namespace

MessageLog::MessageLog() {
    {
        const std::lock_guard lock(mutex);
        collected.clear();
    }
    previous = qInstallMessageHandler(collect);
}

MessageLog::~MessageLog() {
    qInstallMessageHandler(previous);
}

QStringList MessageLog::lines() const {
    const std::lock_guard lock(mutex);
    QStringList result;
    for (const std::string& line : collected)
        result += QString::fromStdString(line);
    return result;
}

int MessageLog::count(const QString& text) const {
    int found = 0;
    for (const QString& line : lines())
        found += line.contains(text) ? 1 : 0;
    return found;
}
