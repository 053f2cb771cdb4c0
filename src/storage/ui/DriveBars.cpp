#include "storage/ui/DriveBars.h"

#include "base/SizeText.h"
#include "base/ui/PlainToolTip.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"
#include "storage/RecordingStorage.h"
#include "storage/ui/FileTexts.h"

#include <QDir>
#include <QHBoxLayout>
#include <QPainter>

#include <algorithm>

namespace theme = corvanta::theme;
namespace fileTexts = corvanta::storage::fileTexts;

namespace {
constexpr int BarHeight = theme::Step;
const QColor Groove(58, 62, 66);
const QColor Used(126, 156, 182);
} // namespace

DriveBar::DriveBar(const QString& drive, QWidget* parent)
    : QWidget(parent)
    , drive_(drive) {
    setObjectName(QStringLiteral("driveBar"));
    connect(&corvanta::LanguageNotice::instance(), &corvanta::LanguageNotice::changed, this, &DriveBar::sayState);
}

QString DriveBar::text() const {
    const QString name = fileTexts::oneLine(QDir::toNativeSeparators(drive_));
    if (!space_)
        return tr("%1 不可用").arg(name);
    return tr("%1 可用 %2 / %3")
        .arg(name, corvanta::sizeText(static_cast<qint64>(space_->free)),
             corvanta::sizeText(static_cast<qint64>(space_->total)));
}

void DriveBar::setSpace(const std::optional<Space>& space, std::uint64_t threshold) {
    space_ = space;
    threshold_ = threshold;
    sayState();
}

void DriveBar::sayState() {
    setAccessibleName(text());
    const QString limit =
        tr("剩余空间不超过 %1 时不再写入新文件").arg(corvanta::sizeText(static_cast<qint64>(threshold_)));
    setToolTip(corvanta::plainToolTip(space_ ? text() + QLatin1Char('\n') + limit
                                             : text() + QLatin1Char('\n') + tr("请检查磁盘是否已连接")));
    updateGeometry();
    update();
}

QSize DriveBar::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()) + theme::Step, fontMetrics().height() + BarHeight + theme::Step};
}

QSize DriveBar::minimumSizeHint() const {
    return {48, sizeHint().height()};
}

void DriveBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect words(0, 0, width(), height() - BarHeight - 2);
    painter.setPen(space_ ? theme::FaintOnDark : theme::Warning);
    // The end says more than the beginning of a long path.
    painter.drawText(words, Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(text(), Qt::ElideLeft, words.width()));
    const QRect groove(0, height() - BarHeight - 1, width(), BarHeight);
    painter.fillRect(groove, Groove);
    if (!space_ || space_->total == 0)
        return;
    const double total = static_cast<double>(space_->total);
    const auto xOf = [&groove, total](std::uint64_t free) {
        return groove.width() - static_cast<int>(groove.width() * std::min(1.0, static_cast<double>(free) / total));
    };
    const bool isFull = space_->free <= threshold_;
    painter.fillRect(QRect(groove.left(), groove.top(), xOf(space_->free), groove.height()),
                     isFull ? theme::Warning : Used);
    const int mark = std::clamp(xOf(threshold_), 0, groove.width() - 2);
    painter.fillRect(QRect(mark, groove.top() - 1, 2, groove.height() + 2), theme::TextOnDark);
}

DriveBars::DriveBars(const RecordingStorage& storage, QWidget* parent)
    : QWidget(parent)
    , storage_(storage) {
    setObjectName(QStringLiteral("driveBars"));
    corvanta::wordedName(this, [] { return tr("磁盘空间"); });
    row_ = new QHBoxLayout(this);
    row_->setContentsMargins(2 * theme::Step, 0, 2 * theme::Step, theme::Step);
    row_->setSpacing(4 * theme::Step);
    timer_.setInterval(Interval);
    connect(&timer_, &QTimer::timeout, this, &DriveBars::refresh);
}

void DriveBars::refresh() {
    constexpr std::uint64_t Mebibyte = 1 << 20;
    const DiskProbe& disks = storage_.disks();
    const QStringList present = disks.drives();
    const QStringList drives = storage_.searchedDrives();
    const bool areSame = std::equal(bars_.begin(), bars_.end(), drives.begin(), drives.end(),
                                    [](const DriveBar* bar, const QString& drive) { return bar->drive() == drive; });
    if (!areSame) {
        qDeleteAll(bars_);
        bars_.clear();
        for (const QString& drive : drives) {
            bars_ += new DriveBar(drive, this);
            row_->addWidget(bars_.last(), 1);
        }
    }
    for (DriveBar* const bar : qAsConst(bars_)) {
        // A drive that is gone may leave its folder behind, with the space of another one.
        const bool isThere = present.contains(bar->drive());
        const auto free = isThere ? disks.freeBytes(bar->drive()) : std::nullopt;
        const auto total = isThere ? disks.totalBytes(bar->drive()) : std::nullopt;
        bar->setSpace(free && total ? std::optional(DriveBar::Space{*free, *total}) : std::nullopt,
                      static_cast<std::uint64_t>(storage_.shownThreshold()) * Mebibyte);
    }
}

void DriveBars::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh();
    timer_.start();
}

void DriveBars::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    timer_.stop();
}
