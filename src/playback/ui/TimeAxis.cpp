#include "playback/ui/TimeAxis.h"

#include "base/ui/Theme.h"
#include "base/ui/Worded.h"

#include <QDateTime>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace corvanta::playback {

namespace {

constexpr int HeaderHeight = 5 * theme::Step;
constexpr int LargestRow = 5 * theme::Step;
constexpr int SmallestRow = 3 * theme::Step;
constexpr int LowWindow = 400;    // px
constexpr int LargestNames = 112; // px
constexpr int TickDistance = 72;  // px
constexpr double ZoomStep = 1.25; // for a notch of the wheel
constexpr int Notch = 120;        // eighths of a degree

const QColor Line(92, 96, 100);
const QColor Recorded(140, 146, 152);
const QColor RecordedSelected(190, 195, 200);

} // namespace

TimeAxis::TimeAxis(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("timeAxis"));
    corvanta::wordedName(this, [] { return tr("时间轴"); });
    setFocusPolicy(Qt::ClickFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TimeAxis::setRows(std::vector<Row> rows, Span whole) {
    rows_ = std::move(rows);
    whole_ = whole;
    selected_ = 0;
    int widest = 0;
    for (const Row& row : rows_)
        widest = std::max(widest, fontMetrics().horizontalAdvance(row.name));
    namesWidth_ = std::min(widest + 4 * theme::Step, LargestNames);
    setView(roomAround(whole_));
    updateGeometry();
}

void TimeAxis::setView(Span view) {
    scale_ = AxisScale(view, width() - namesWidth_);
    update();
}

void TimeAxis::setMoment(Moment moment) {
    if (moment == moment_)
        return;
    moment_ = moment;
    // What is played stays in sight, but nothing moves under a hand that drags.
    if (!dragging_ && moment_ >= whole_.begin && moment_ <= whole_.end)
        scale_ = AxisScale(scale_.showing(moment_), scale_.width());
    setAccessibleDescription(toLocalTime(moment_).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
    update();
}

void TimeAxis::setMarks(std::optional<Moment> begin, std::optional<Moment> end) {
    begin_ = begin;
    end_ = end;
    update();
}

void TimeAxis::setSelectedRow(int row) {
    selected_ = row;
    update();
}

QSize TimeAxis::sizeHint() const {
    return {600, HeaderHeight + std::max(1, static_cast<int>(rows_.size())) * rowHeight() + theme::Step};
}

QSize TimeAxis::minimumSizeHint() const {
    return {200, sizeHint().height()};
}

/// Many cameras and low windows have lower rows, so that the pictures keep their room.
int TimeAxis::rowHeight() const {
    const bool low = parentWidget() != nullptr && parentWidget()->height() < LowWindow;
    return rows_.size() > 4 || low ? SmallestRow : LargestRow;
}

int TimeAxis::rowAt(int y) const {
    const int row = (y - HeaderHeight) / rowHeight();
    return y >= HeaderHeight && row < static_cast<int>(rows_.size()) ? row : -1;
}

QRect TimeAxis::lineOf(int row) const {
    return {namesWidth_, HeaderHeight + row * rowHeight(), width() - namesWidth_, rowHeight()};
}

void TimeAxis::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    updateGeometry(); // rows may have become lower
    setView(scale_.view());
}

void TimeAxis::seekTo(int x) {
    const int within = std::clamp(x - namesWidth_, 0, scale_.width());
    emit sigSeek(scale_.momentAt(within).count());
}

void TimeAxis::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || rows_.empty())
        return;
    if (const int row = rowAt(event->pos().y()); row >= 0)
        emit sigRowChosen(row);
    if (event->pos().x() < namesWidth_)
        return;
    dragging_ = true;
    seekTo(event->pos().x());
}

void TimeAxis::mouseMoveEvent(QMouseEvent* event) {
    if (dragging_)
        seekTo(event->pos().x());
}

void TimeAxis::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        dragging_ = false;
}

void TimeAxis::wheelEvent(QWheelEvent* event) {
    event->accept();
    if (rows_.empty())
        return;
    // Some systems turn the wheel sideways while Shift is held.
    const QPoint turned = event->angleDelta();
    const double notches = static_cast<double>(turned.y() != 0 ? turned.y() : turned.x()) / Notch;
    const int x = std::clamp(event->position().toPoint().x() - namesWidth_, 0, scale_.width());
    const Span view = scale_.view();
    if ((event->modifiers() & Qt::ShiftModifier) != 0) {
        const auto length = static_cast<double>((view.end - view.begin).count());
        const Moment shift(std::llround(-notches * length / 8));
        setView({view.begin + shift, view.end + shift});
        return;
    }
    const Span wanted = scale_.zoomed(std::pow(ZoomStep, -notches), x);
    // Farther out than everything there is nothing to see.
    const Span all = roomAround(whole_);
    setView(wanted.end - wanted.begin > all.end - all.begin ? all : wanted);
}

bool TimeAxis::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* const help = static_cast<const QHelpEvent*>(event);
    if (help->pos().x() < namesWidth_ || rows_.empty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), toLocalTime(scale_.momentAt(help->pos().x() - namesWidth_))
                                                  .toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
    return true;
}

void TimeAxis::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), theme::Bar);
    if (rows_.empty())
        return;
    paintRows(painter);
    painter.setFont(font());
    painter.setClipRect(namesWidth_, 0, width() - namesWidth_, height());
    paintTicks(painter);
    paintMarks(painter);
    paintMoment(painter);
}

void TimeAxis::paintTicks(QPainter& painter) const {
    for (const AxisScale::Tick& tick : scale_.ticks(TickDistance)) {
        const int x = namesWidth_ + scale_.xOf(tick.moment);
        painter.setPen(tick.isMidnight ? theme::FaintOnDark : Line);
        painter.drawLine(x, HeaderHeight - theme::Step, x, height());
        painter.setPen(tick.isMidnight ? theme::TextOnDark : theme::FaintOnDark);
        painter.drawText(QRect(x - TickDistance / 2, 0, TickDistance, HeaderHeight - theme::Step), Qt::AlignCenter,
                         tick.label);
    }
}

void TimeAxis::paintRows(QPainter& painter) const {
    QFont small = font();
    if (rowHeight() == SmallestRow)
        small.setPixelSize(SmallestRow - 1);
    painter.setFont(small);
    const QFontMetrics metrics(small);
    for (int number = 0; number < static_cast<int>(rows_.size()); ++number) {
        const Row& row = rows_[static_cast<std::size_t>(number)];
        const QRect line = lineOf(number);
        const bool selected = number == selected_;
        painter.setPen(selected ? theme::TextOnDark : theme::FaintOnDark);
        const QRect name(2 * theme::Step, line.top(), namesWidth_ - 3 * theme::Step, line.height());
        painter.drawText(name, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                         metrics.elidedText(row.name, Qt::ElideRight, name.width()));
        const QRect bar = line.adjusted(0, 2, 0, -2);
        painter.fillRect(bar, theme::Panel);
        for (const Span& span : row.recorded) {
            const int left = std::max(0, scale_.xOf(span.begin));
            const int right = std::min(scale_.width(), scale_.xOf(span.end));
            if (right >= 0 && left <= scale_.width()) // a short one stays visible
                painter.fillRect(namesWidth_ + left, bar.top(), std::max(1, right - left), bar.height(),
                                 selected ? RecordedSelected : Recorded);
        }
    }
}

void TimeAxis::paintMarks(QPainter& painter) const {
    QColor veil = theme::Selection;
    veil.setAlpha(70);
    const int top = HeaderHeight;
    if (begin_ && end_) {
        const int left = namesWidth_ + scale_.xOf(*begin_);
        painter.fillRect(left, top, namesWidth_ + scale_.xOf(*end_) - left, height() - top, veil);
    }
    painter.setPen(QPen(theme::Selection, 2));
    const auto bracket = [&](Moment moment, int direction) {
        const int x = namesWidth_ + scale_.xOf(moment);
        painter.drawLine(x, top, x, height() - 1);
        painter.drawLine(x, top, x + direction * theme::Step, top);
        painter.drawLine(x, height() - 1, x + direction * theme::Step, height() - 1);
    };
    if (begin_)
        bracket(*begin_, 1);
    if (end_)
        bracket(*end_, -1);
}

void TimeAxis::paintMoment(QPainter& painter) const {
    const int x = namesWidth_ + scale_.xOf(moment_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, 1.5));
    painter.drawLine(x, HeaderHeight - theme::Step, x, height());
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    const int top = HeaderHeight - 2 * theme::Step;
    painter.drawPolygon(
        QPolygon({QPoint(x - theme::Step, top), QPoint(x + theme::Step, top), QPoint(x, top + 2 * theme::Step)}));
}

} // namespace corvanta::playback
