#pragma once

#include "base/ScreenPoll.h"

class DeviceModel;

/// The entries of the screen polling while they are edited: a value. Positions outside a list change nothing.
class PollDraft final {
public:
    PollDraft() = default;
    explicit PollDraft(QList<PollEntry> entries)
        : entries_(std::move(entries)) {}

    const QList<PollEntry>& entries() const { return entries_; }

    /// Adds an empty entry whose name no other has; returns its position.
    int add();
    /// Adds an entry for each group that has cameras and whose name no entry has yet; returns how many.
    int addGroups(const DeviceModel& devices);
    void remove(int entry);
    /// Moves an entry to the place of its neighbour `step` further; returns where it is then.
    int move(int entry, int step);
    /// A name without anything that can be read changes nothing.
    void rename(int entry, const QString& name);

    /// Puts a device at the end of an entry, or takes it out wherever it stands in it.
    void setDevice(int entry, const QString& ipncId, bool isIn);
    void removeDevice(int entry, int position);
    /// As `move`, for a device within its entry.
    int moveDevice(int entry, int position, int step);

private:
    bool has(int entry) const { return entry >= 0 && entry < entries_.size(); }
    bool hasName(const QString& name) const;

    QList<PollEntry> entries_;
};
