#include "monitor/PollDraft.h"

#include "base/DeviceModel.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

template <typename List>
int moveWithin(List& list, int from, int step) {
    const int to = from + step;
    if (from < 0 || from >= list.size() || to < 0 || to >= list.size())
        return from;
    list.move(from, to);
    return to;
}

} // namespace

bool PollDraft::hasName(const QString& name) const {
    return std::any_of(entries_.begin(), entries_.end(), [&name](const PollEntry& e) { return e.name == name; });
}

int PollDraft::add() {
    QString name;
    for (int number = entries_.size() + 1; name.isEmpty() || hasName(name); ++number)
        name = QCoreApplication::translate("PollDraft", "轮屏%1").arg(number);
    entries_ += PollEntry{name, {}, {}};
    return entries_.size() - 1;
}

int PollDraft::addGroups(const DeviceModel& devices) {
    int added = 0;
    for (const GroupRecord& group : devices.groups()) {
        QStringList cameras;
        for (const QString& ipncId : devices.members(group)) {
            if (devices.device(ipncId)->isVideo())
                cameras += ipncId;
        }
        const QString name = group.name.isEmpty() ? group.id : group.name;
        if (cameras.isEmpty() || hasName(name))
            continue;
        entries_ += PollEntry{name, cameras, {}};
        ++added;
    }
    return added;
}

void PollDraft::remove(int entry) {
    if (has(entry))
        entries_.removeAt(entry);
}

int PollDraft::move(int entry, int step) {
    return moveWithin(entries_, entry, step);
}

void PollDraft::rename(int entry, const QString& name) {
    const QString readable = name.simplified();
    if (has(entry) && !readable.isEmpty())
        entries_[entry].name = readable;
}

void PollDraft::setDevice(int entry, const QString& ipncId, bool isIn) {
    if (!has(entry))
        return;
    QStringList& ids = entries_[entry].ipncIds;
    if (!isIn)
        ids.removeAll(ipncId);
    else if (!ids.contains(ipncId))
        ids += ipncId;
}

void PollDraft::removeDevice(int entry, int position) {
    if (has(entry) && position >= 0 && position < entries_[entry].ipncIds.size())
        entries_[entry].ipncIds.removeAt(position);
}

int PollDraft::moveDevice(int entry, int position, int step) {
    return has(entry) ? moveWithin(entries_[entry].ipncIds, position, step) : position;
}
