#include "storage/ui/TimelinePane.h"

#include "base/DataTree.h"
#include "storage/ui/DayTimeline.h"
#include "storage/ui/ThumbnailStrip.h"

#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <QVariant>

TimelinePane::TimelinePane(const corvanta::storage::DeviceNames& nameOf, QWidget* parent)
    : QWidget(parent)
    , files_(std::make_shared<const corvanta::storage::FoundFiles>()) {
    auto* const outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    stack_ = new QStackedWidget(this);
    outer->addWidget(stack_);
    auto* const day = new QWidget(stack_);
    auto* const column = new QVBoxLayout(day);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    timeline_ = new DayTimeline(nameOf, day);
    column->addWidget(timeline_, 1);
    strip_ = new ThumbnailStrip(day);
    column->addWidget(strip_);
    stack_->addWidget(day);
    empty_ = new QLabel(stack_);
    empty_->setObjectName(QStringLiteral("dayEmpty"));
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);
    empty_->setProperty("role", QStringLiteral("faint"));
    stack_->addWidget(empty_);
    connect(timeline_, &DayTimeline::sigCurrent, this, &TimelinePane::onTimelineCurrent);
    connect(timeline_, &DayTimeline::sigOpen, this, &TimelinePane::sigOpen);
    connect(strip_, &ThumbnailStrip::sigCurrent, timeline_, &DayTimeline::setCurrentFile);
    connect(strip_, &QListView::doubleClicked, this, &TimelinePane::sigOpen);
    connect(timeline_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& place) { emit sigMenu(timeline_->viewport()->mapToGlobal(place)); });
    connect(strip_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& place) { emit sigMenu(strip_->viewport()->mapToGlobal(place)); });
}

void TimelinePane::show(Files files, const QDate& day, int current) {
    files_ = std::move(files);
    timeline_->show(files_, day);
    stack_->setCurrentIndex(timeline_->isEmpty() ? 1 : 0);
    empty_->setText(emptyText(day));
    timeline_->setCurrentFile(current);
    const std::vector<int> row = timeline_->filesOfCurrentRow();
    if (timeline_->currentFile() < 0 && !row.empty())
        timeline_->setCurrentFile(row.front());
    onTimelineCurrent(timeline_->currentFile());
}

void TimelinePane::onTimelineCurrent(int file) {
    strip_->show(files_, timeline_->filesOfCurrentRow());
    strip_->setCurrentFile(file);
}

QString TimelinePane::emptyText(const QDate& day) const {
    if (files_->count() == 0)
        return tr("没有找到文件。\n请更改时间、设备或类别后再查找。");
    const QDate before = files_->nearestDay(day, -1);
    const QDate nearest = before.isValid() ? before : files_->nearestDay(day, 1);
    return tr("这一天没有文件。\n最近有文件的日期是 %1。").arg(nearest.toString(corvanta::dataTree::DayFormat));
}

int TimelinePane::currentFile() const {
    return timeline_->currentFile();
}

void TimelinePane::setCurrentFile(int file) {
    timeline_->setCurrentFile(file);
    onTimelineCurrent(timeline_->currentFile());
}

std::vector<int> TimelinePane::selectedFiles() const {
    return strip_->selectedFiles();
}

std::vector<int> TimelinePane::shownFiles() const {
    return timeline_->filesOfCurrentRow();
}
