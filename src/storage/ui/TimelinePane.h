#pragma once

#include "storage/FoundFiles.h"
#include "storage/ui/FileTexts.h"

#include <QDate>
#include <QWidget>

#include <memory>

class DayTimeline;
class QLabel;
class QStackedWidget;
class ThumbnailStrip;

/// A day of found files: the timeline, and small pictures of what the current device has on it. Both have the same
/// current file.
class TimelinePane final : public QWidget {
    Q_OBJECT
public:
    using Files = std::shared_ptr<const corvanta::storage::FoundFiles>;

    explicit TimelinePane(const corvanta::storage::DeviceNames& nameOf, QWidget* parent = nullptr);

    /// Shows a day of `files`, and there `current` if it is one of that day.
    void show(Files files, const QDate& day, int current = -1);
    using QWidget::show;

    DayTimeline& timeline() const { return *timeline_; }
    ThumbnailStrip& strip() const { return *strip_; }
    int currentFile() const;
    /// Makes a file of the day the current one.
    void setCurrentFile(int file);
    std::vector<int> selectedFiles() const;
    /// The files of the current device.
    std::vector<int> shownFiles() const;

signals:
    void sigOpen();
    /// A menu is wanted here (global).
    void sigMenu(QPoint position);

private:
    void onTimelineCurrent(int file);
    QString emptyText(const QDate& day) const;

    Files files_;
    QStackedWidget* stack_;
    DayTimeline* timeline_;
    ThumbnailStrip* strip_;
    QLabel* empty_;
};
