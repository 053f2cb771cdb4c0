#include "storage/ui/DayTimeline.h"

#include "base/DataTree.h"
#include "base/ui/PlainToolTip.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <cstdlib>

namespace theme = corvanta::theme;
namespace storage = corvanta::storage;
namespace dataTree = corvanta::dataTree;

namespace {

constexpr int Day = 24 * 3600;
constexpr int AxisHeight = 6 * theme::Step;
constexpr int RowHeight = theme::ControlHeight;
constexpr int LargestZoom = 8; ///< a minute is some 50 px or more
constexpr int TickWidth = 2;
constexpr int MostMarks = 1 << 30; ///< more than any row has
const QColor LocalRecording(126, 156, 182);
const QColor DeviceRecording(138, 150, 138);

} // namespace

DayTimeline::DayTimeline(storage::DeviceNames nameOf, QWidget* parent)
    : QAbstractScrollArea(parent)
    , nameOf_(std::move(nameOf))
    , files_(std::make_shared<const storage::FoundFiles>()) {
    setObjectName(QStringLiteral("fileTimeline"));
    corvanta::wordedName(this, [] { return tr("时间轴"); });
    setFocusPolicy(Qt::StrongFocus);
    setContextMenuPolicy(Qt::CustomContextMenu);
    viewport()->setAutoFillBackground(false);
    setMinimumHeight(AxisHeight + RowHeight);
    horizontalScrollBar()->setSingleStep(40);
    verticalScrollBar()->setSingleStep(RowHeight);
}

void DayTimeline::show(Files files, const QDate& day) {
    files_ = std::move(files);
    rows_.clear();
    current_ = -1;
    for (const storage::FoundFiles::DeviceDay& device : files_->day(day))
        rows_.push_back(makeRow(device));
    updateBars();
    viewport()->update();
}

DayTimeline::Row DayTimeline::makeRow(const storage::FoundFiles::DeviceDay& device) const {
    Row row;
    row.name = storage::fileTexts::oneLine(nameOf_(device.ipncid));
    std::vector<std::size_t> recordings; // marks, of both kinds
    for (const int file : device.files) {
        const QTime time = files_->at(file).time.time();
        if (!files_->at(file).isPicture())
            recordings.push_back(row.marks.size());
        row.marks.push_back({QTime(0, 0).secsTo(time), 0, file});
    }
    for (const QString& kind : {dataTree::LocalRecord, dataTree::DeviceRecord}) {
        std::vector<std::size_t> ofKind;
        std::vector<int> starts;
        for (const std::size_t mark : recordings) {
            if (files_->at(row.marks[mark].file).kind == kind) {
                ofKind.push_back(mark);
                starts.push_back(row.marks[mark].second);
            }
        }
        const std::vector<int> lengths = storage::assumedLengths(starts);
        for (std::size_t i = 0; i < ofKind.size(); ++i)
            row.marks[ofKind[i]].length = std::max(lengths[i], 1);
    }
    return row;
}

int DayTimeline::nameWidth() const {
    return std::clamp(viewport()->width() / 4, 64, 160);
}

int DayTimeline::dayWidth() const {
    return std::max(viewport()->width() - nameWidth() - 2 * theme::Step, 1) << zoom_;
}

int DayTimeline::xOf(int second) const {
    return nameWidth() + static_cast<int>(qint64(second) * dayWidth() / Day) - horizontalScrollBar()->value();
}

int DayTimeline::rowTop(std::size_t row) const {
    return AxisHeight + static_cast<int>(row) * RowHeight - verticalScrollBar()->value();
}

QRect DayTimeline::placeOf(std::size_t row, const Mark& mark) const {
    const int x = xOf(mark.second);
    if (mark.length == 0)
        return {x, rowTop(row) + theme::Step, TickWidth, RowHeight - 2 * theme::Step};
    const int width = std::max(xOf(mark.second + mark.length) - x, TickWidth);
    return {x, rowTop(row) + 2 * theme::Step, width, RowHeight - 4 * theme::Step};
}

bool DayTimeline::find(int file, Spot& spot) const {
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        const auto& marks = rows_[row].marks;
        const auto mark = std::lower_bound(marks.begin(), marks.end(), file,
                                           [](const Mark& one, int position) { return one.file < position; });
        if (mark != marks.end() && mark->file == file) {
            spot = {row, static_cast<std::size_t>(mark - marks.begin())};
            return true;
        }
    }
    return false;
}

QRect DayTimeline::place(int file) const {
    Spot spot;
    return find(file, spot) ? placeOf(spot.row, rows_[spot.row].marks[spot.mark]) : QRect();
}

std::vector<int> DayTimeline::filesOfCurrentRow() const {
    if (rows_.empty())
        return {};
    Spot spot;
    find(current_, spot); // none: the first row
    std::vector<int> result;
    for (const Mark& mark : rows_[spot.row].marks)
        result.push_back(mark.file);
    return result;
}

void DayTimeline::updateBars() {
    const QSize view = viewport()->size();
    horizontalScrollBar()->setPageStep(view.width() - nameWidth());
    horizontalScrollBar()->setRange(0, dayWidth() + nameWidth() + 2 * theme::Step - view.width());
    verticalScrollBar()->setPageStep(view.height() - AxisHeight);
    verticalScrollBar()->setRange(
        0, std::max(0, static_cast<int>(rows_.size()) * RowHeight + AxisHeight - view.height()));
}

void DayTimeline::setCurrentFile(int file) {
    Spot spot;
    if (!find(file, spot))
        return;
    current_ = file;
    const storage::FileRecord& record = files_->at(file);
    setAccessibleDescription(
        QStringLiteral("%1 %2 %3")
            .arg(rows_[spot.row].name, storage::fileTexts::time(record), storage::fileTexts::kind(record.kind)));
    const QRect mark = placeOf(spot.row, rows_[spot.row].marks[spot.mark]);
    const int left = nameWidth();
    if (mark.left() < left || mark.left() > viewport()->width() - 2 * theme::Step)
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + mark.left() -
                                        (left + viewport()->width()) / 2);
    if (rowTop(spot.row) < AxisHeight)
        verticalScrollBar()->setValue(verticalScrollBar()->value() + rowTop(spot.row) - AxisHeight);
    else if (rowTop(spot.row) + RowHeight > viewport()->height())
        verticalScrollBar()->setValue(verticalScrollBar()->value() + rowTop(spot.row) + RowHeight -
                                      viewport()->height());
    viewport()->update();
}

void DayTimeline::go(int file) {
    if (file < 0 || file == current_)
        return;
    setCurrentFile(file);
    emit sigCurrent(file);
}

int DayTimeline::fileAt(const QPoint& position) const {
    constexpr int Reach = 6; // px; a tick is narrow
    const int offset = position.y() - rowTop(0);
    if (position.y() < AxisHeight || position.x() < nameWidth() || offset < 0)
        return -1;
    const auto row = static_cast<std::size_t>(offset / RowHeight);
    if (row >= rows_.size())
        return -1;
    int best = -1;
    int bestDistance = Reach + 1;
    for (const Mark& mark : rows_[row].marks) {
        const QRect place = placeOf(row, mark);
        const bool isInside = position.x() >= place.left() && position.x() <= place.right();
        const int distance =
            isInside ? (mark.length == 0 ? 0 : 1) // a tick lies over a bar
                     : std::min(std::abs(position.x() - place.left()), std::abs(position.x() - place.right())) + 1;
        if (distance < bestDistance) {
            best = mark.file;
            bestDistance = distance;
        }
    }
    return best;
}

void DayTimeline::mousePressEvent(QMouseEvent* event) {
    go(fileAt(event->pos()));
}

void DayTimeline::mouseDoubleClickEvent(QMouseEvent* event) {
    const int file = fileAt(event->pos());
    go(file);
    if (file >= 0 && event->button() == Qt::LeftButton)
        emit sigOpen();
}

void DayTimeline::step(int marks) {
    if (rows_.empty())
        return;
    Spot spot;
    const bool isThere = find(current_, spot);
    const auto& row = rows_[spot.row].marks;
    const int last = static_cast<int>(row.size()) - 1;
    const int mark = isThere ? std::clamp(static_cast<int>(spot.mark) + marks, 0, last) : 0;
    go(row[static_cast<std::size_t>(mark)].file);
}

void DayTimeline::changeRow(int rows) {
    Spot spot;
    if (!find(current_, spot)) {
        step(0);
        return;
    }
    const int wanted = static_cast<int>(spot.row) + rows;
    if (wanted < 0 || wanted >= static_cast<int>(rows_.size()))
        return;
    const int second = rows_[spot.row].marks[spot.mark].second;
    const auto& marks = rows_[static_cast<std::size_t>(wanted)].marks;
    const auto nearest = std::min_element(marks.begin(), marks.end(), [second](const Mark& one, const Mark& other) {
        return std::abs(one.second - second) < std::abs(other.second - second);
    });
    go(nearest->file);
}

void DayTimeline::zoom(int steps, int atX) {
    const int wanted = std::clamp(zoom_ + steps, 0, LargestZoom);
    if (wanted == zoom_)
        return;
    // The moment under the pointer stays there.
    const qint64 offset = atX - nameWidth() + horizontalScrollBar()->value();
    const qint64 moved = wanted > zoom_ ? offset << (wanted - zoom_) : offset >> (zoom_ - wanted);
    zoom_ = wanted;
    updateBars();
    horizontalScrollBar()->setValue(static_cast<int>(moved - atX + nameWidth()));
    viewport()->update();
}

void DayTimeline::keyPressEvent(QKeyEvent* event) {
    const QRect current = place(current_);
    const int middle = current.isNull() ? (nameWidth() + viewport()->width()) / 2 : current.left();
    switch (event->key()) {
    case Qt::Key_Left:
        step(-1);
        break;
    case Qt::Key_Right:
        step(1);
        break;
    case Qt::Key_Up:
        changeRow(-1);
        break;
    case Qt::Key_Down:
        changeRow(1);
        break;
    case Qt::Key_Home:
        step(-MostMarks);
        break;
    case Qt::Key_End:
        step(MostMarks);
        break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoom(1, middle);
        break;
    case Qt::Key_Minus:
        zoom(-1, middle);
        break;
    default:
        event->ignore(); // the page has keys, too
    }
}

void DayTimeline::wheelEvent(QWheelEvent* event) {
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        zoom(event->angleDelta().y() > 0 ? 1 : -1, static_cast<int>(event->position().x()));
        event->accept();
    } else {
        QAbstractScrollArea::wheelEvent(event);
    }
}

void DayTimeline::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    updateBars();
}

void DayTimeline::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void DayTimeline::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

bool DayTimeline::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    const int file = fileAt(help->pos());
    if (file < 0) {
        QToolTip::hideText();
        return true;
    }
    const storage::FileRecord& record = files_->at(file);
    QToolTip::showText(
        help->globalPos(),
        corvanta::plainToolTip(QStringLiteral("%1\n%2\n%3")
                                   .arg(storage::fileTexts::time(record), storage::fileTexts::kind(record.kind),
                                        storage::fileTexts::oneLine(record.name))),
        this);
    return true;
}

QColor DayTimeline::colorOf(int file) const {
    const storage::FileRecord& record = files_->at(file);
    if (record.isPicture())
        return record.kind == dataTree::Image ? theme::Alarm : theme::TextOnDark;
    return record.kind == dataTree::LocalRecord ? LocalRecording : DeviceRecording;
}

void DayTimeline::paintAxis(QPainter& painter) const {
    const int width = viewport()->width();
    painter.fillRect(QRect(0, 0, width, AxisHeight), theme::Bar);
    const int label = fontMetrics().horizontalAdvance(QStringLiteral("00:00")) + 4 * theme::Step;
    int stepMinutes = 360;
    for (const int minutes : {1, 5, 10, 15, 30, 60, 120, 180, 360}) {
        if (qint64(dayWidth()) * minutes * 60 / Day >= label) {
            stepMinutes = minutes;
            break;
        }
    }
    painter.setClipRect(nameWidth(), 0, width - nameWidth(), viewport()->height());
    for (int minute = 0; minute <= 24 * 60; minute += stepMinutes) {
        const int x = xOf(minute * 60);
        if (x < nameWidth() - label || x > width + label)
            continue;
        painter.setPen(QColor(92, 96, 100));
        painter.drawLine(x, AxisHeight - theme::Step, x, viewport()->height());
        painter.setPen(theme::FaintOnDark);
        const QString text = QStringLiteral("%1:%2")
                                 .arg(minute / 60, 2, 10, QLatin1Char('0'))
                                 .arg(minute % 60, 2, 10, QLatin1Char('0'));
        if (minute < 24 * 60) // there is no room for it at the end
            painter.drawText(QRect(x + 3, 0, label, AxisHeight - theme::Step), Qt::AlignLeft | Qt::AlignVCenter,
                             text);
    }
    painter.setClipping(false);
}

void DayTimeline::paintRow(QPainter& painter, std::size_t row) const {
    const int top = rowTop(row);
    Spot spot;
    const bool hasCurrent = find(current_, spot) && spot.row == row;
    if (hasCurrent)
        painter.fillRect(QRect(0, top, viewport()->width(), RowHeight), QColor(255, 255, 255, 14));
    painter.setPen(theme::TextOnDark);
    const QRect nameRect(2 * theme::Step, top, nameWidth() - 3 * theme::Step, RowHeight);
    painter.drawText(nameRect, Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(rows_[row].name, Qt::ElideRight, nameRect.width()));
    painter.setPen(QColor(82, 86, 90));
    painter.drawLine(0, top + RowHeight - 1, viewport()->width(), top + RowHeight - 1);
    painter.setClipRect(QRect(nameWidth(), AxisHeight, viewport()->width(), viewport()->height()));
    // Bars first, so that ticks lie over them. What falls on the same place is painted once.
    for (const bool ticks : {false, true}) {
        QRect last;
        QColor lastColor;
        for (const Mark& mark : rows_[row].marks) {
            if ((mark.length == 0) != ticks)
                continue;
            QRect place = placeOf(row, mark);
            const QColor color = colorOf(mark.file);
            if (place.right() < nameWidth() || place.left() > viewport()->width() ||
                (place == last && color == lastColor))
                continue;
            last = place;
            lastColor = color;
            if (place.width() > 3)
                place.adjust(0, 0, -1, 0); // one recording ends where the next begins
            painter.fillRect(place, color);
        }
    }
    if (hasCurrent) {
        const QRect place = placeOf(row, rows_[row].marks[spot.mark]).adjusted(-2, -2, 1, 1);
        painter.setPen(QPen(hasFocus() ? theme::Selection : theme::TextOnDark, 2));
        painter.drawRect(place);
    }
    painter.setClipping(false);
}

void DayTimeline::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), QColor(66, 70, 74));
    paintAxis(painter);
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        const int top = rowTop(row);
        if (top + RowHeight <= AxisHeight || top >= viewport()->height())
            continue;
        painter.save();
        painter.setClipRect(QRect(0, AxisHeight, viewport()->width(), viewport()->height() - AxisHeight));
        paintRow(painter, row);
        painter.restore();
    }
}
