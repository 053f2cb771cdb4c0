#include "sensor/ui/ChartPlot.h"

#include "base/ui/Theme.h"
#include "base/ui/Worded.h"

#include <QApplication>
#include <QDateTime>
#include <QGraphicsLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QWheelEvent>
#include <QtCharts/QChart>
#include <QtCharts/QDateTimeAxis>
#include <QtCharts/QLineSeries>
#include <QtCharts/QValueAxis>

#include <algorithm>
#include <array>
#include <cmath>

namespace corvanta::sensor {
namespace {

constexpr double Milliseconds = 1000;
constexpr int TickWidth = 110;      // px that a time's text takes
constexpr int TickHeight = 48;      // px
constexpr int LowestFull = 110;     // px; a lower chart has no room for the texts of its axes
constexpr int AxisWidth = 76;       // px that the texts of an axis take
constexpr int NarrowestNamed = 140; // px; a narrower plot has no room for the names of thresholds
const QColor Background(66, 70, 74);
const QColor Grid(86, 90, 94);

QDateTime momentOf(double time) {
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::llround(time * Milliseconds)));
}

QString formatFor(double span) {
    struct Rule {
        double longest; // s
        const char* format;
    };
    static constexpr std::array<Rule, 5> rules{{{5, "ss.zzz"},
                                                {600, "hh:mm:ss"},
                                                {86400, "hh:mm"},
                                                {10 * 86400.0, "MM-dd hh:mm"},
                                                {400 * 86400.0, "MM-dd"}}};
    for (const Rule& rule : rules) {
        if (span <= rule.longest)
            return QLatin1String(rule.format);
    }
    return QStringLiteral("yyyy-MM");
}

/// Bounds a little beyond `extent`, on round numbers.
Extent roundBounds(Extent extent, int ticks) {
    double height = extent.high - extent.low;
    if (height <= 0)
        height = std::max(1e-9, std::abs(extent.high) * 0.1 + (extent.high == 0 ? 1 : 0));
    const double rough = height * 1.1 / std::max(1, ticks - 1);
    const double magnitude = std::pow(10.0, std::floor(std::log10(rough)));
    double step = 10 * magnitude;
    for (const double nice : {1.0, 2.0, 2.5, 5.0}) {
        if (nice * magnitude >= rough) {
            step = nice * magnitude;
            break;
        }
    }
    const double middle = (extent.low + extent.high) / 2;
    const double low = std::floor((middle - step * (ticks - 1) / 2) / step + 0.5) * step;
    return {low, low + step * (ticks - 1)};
}

QColor levelColor(int level) {
    return level >= 3 ? theme::Alarm : theme::Warning;
}

/// A point smaller than elsewhere: a chart has many texts and little room.
QFont textFont() {
    QFont font = QApplication::font();
    font.setPointSize(font.pointSize() - 1);
    return font;
}

} // namespace

ChartPlot::ChartPlot(Source source, QWidget* parent)
    : QChartView(parent)
    , source_(std::move(source))
    , time_(new QtCharts::QDateTimeAxis) {
    setObjectName(QStringLiteral("chartPlot"));
    worded(this, [this] {
        setAccessibleName(tr("曲线"));
        viewport()->update();
    });
    setRenderHint(QPainter::Antialiasing);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(NoFrame);
    setMinimumSize(80, 56);
    styleChart();
    chart()->addAxis(time_, Qt::AlignBottom);
    const double now = static_cast<double>(QDateTime::currentSecsSinceEpoch());
    setRange(now - 600, now);
}

ChartPlot::~ChartPlot() = default;

void ChartPlot::styleChart() {
    setBackgroundBrush(Background);
    chart()->setBackgroundBrush(Background);
    chart()->setBackgroundRoundness(0);
    chart()->setMargins(QMargins(theme::Step, theme::Step, theme::Step, theme::Step));
    chart()->layout()->setContentsMargins(0, 0, 0, 0);
    chart()->legend()->hide();
    time_->setGridLineColor(Grid);
    time_->setLinePenColor(theme::TileLine);
    time_->setLabelsColor(theme::TextOnDark);
    time_->setLabelsFont(textFont());
}

QColor ChartPlot::colorOf(int curve) {
    static const std::array<QColor, 8> colors{QColor(96, 180, 240),  QColor(120, 205, 150), QColor(190, 160, 240),
                                              QColor(215, 200, 150), QColor(235, 150, 195), QColor(80, 200, 205),
                                              QColor(190, 210, 100), QColor(205, 208, 212)};
    return colors[static_cast<std::size_t>(curve) % colors.size()];
}

QtCharts::QValueAxis* ChartPlot::axisOf(const QString& unit) {
    for (const Line& line : lines_) {
        if (line.curve.unit == unit)
            return line.axis;
    }
    const int axes = chart()->axes(Qt::Vertical).size();
    auto* const axis = new QtCharts::QValueAxis;
    axis->setTitleText(unit.toHtmlEscaped()); // titles of axes are taken for markup
    axis->setTitleBrush(theme::TextOnDark);
    axis->setTitleFont(textFont());
    axis->setLabelsColor(theme::TextOnDark);
    axis->setLabelsFont(textFont());
    axis->setLinePenColor(theme::TileLine);
    axis->setGridLineColor(Grid);
    axis->setGridLineVisible(axes == 0); // one grid is enough
    chart()->addAxis(axis, axes % 2 == 0 ? Qt::AlignLeft : Qt::AlignRight);
    return axis;
}

void ChartPlot::setCurves(const std::vector<Curve>& curves) {
    chart()->removeAllSeries();
    for (QtCharts::QAbstractAxis* const axis : chart()->axes(Qt::Vertical)) {
        chart()->removeAxis(axis);
        delete axis;
    }
    lines_.clear();
    for (const Curve& curve : curves) {
        auto* const series = new QtCharts::QLineSeries;
        series->setPen(QPen(colorOf(static_cast<int>(lines_.size())), 1.5));
        QtCharts::QValueAxis* const axis = axisOf(curve.unit);
        chart()->addSeries(series);
        series->attachAxis(time_);
        series->attachAxis(axis);
        lines_.push_back({curve, series, axis});
    }
    redraw();
}

void ChartPlot::setMarks(const std::vector<AlarmMark>& marks) {
    marks_ = marks;
    viewport()->update();
}

void ChartPlot::setRange(double from, double to) {
    const double length = std::clamp(to - from, ShortestSpan, LongestSpan);
    to_ = std::max(to, length);
    from_ = to_ - length;
    time_->setRange(momentOf(from_), momentOf(to_));
    redraw();
}

void ChartPlot::redraw() {
    formatTime();
    const int columns = std::max(16, static_cast<int>(chart()->plotArea().width()));
    for (Line& line : lines_) {
        const QVector<QPointF> points = thinned(source_(line.curve.pid, span()), from_, to_, columns);
        line.series->setPointsVisible(points.size() <= columns / 16);
        line.series->replace(points);
    }
    scaleValues();
    viewport()->update();
}

void ChartPlot::formatTime() {
    const bool isFull = height() >= LowestFull;
    time_->setLabelsVisible(isFull);
    time_->setFormat(formatFor(span()));
    time_->setTickCount(std::clamp(width() / TickWidth, 2, 10));
}

void ChartPlot::scaleValues() {
    const int ticks = std::clamp(height() / TickHeight, 2, 9);
    const bool hasTexts = height() >= LowestFull && width() >= 2 * AxisWidth * chart()->axes(Qt::Vertical).size();
    for (const Line& first : lines_) {
        Extent extent;
        for (const Line& line : lines_) {
            if (line.axis != first.axis)
                continue;
            for (const QPointF& point : line.series->pointsVector()) {
                if (point.x() >= from_ * Milliseconds && point.x() <= to_ * Milliseconds)
                    extent.add(point.y());
            }
        }
        if (extent.isEmpty())
            extent = {0, 1};
        // A threshold that is near is to be seen.
        const double near = std::max((extent.high - extent.low) * 0.5, std::abs(extent.high) * 0.1);
        const Extent values = extent;
        for (const Line& line : lines_) {
            for (const ThresholdLevel& level : line.curve.thresholds) {
                for (const auto& value : {level.high, level.low}) {
                    if (line.axis == first.axis && value && *value<values.high + near&& * value> values.low - near)
                        extent.add(*value);
                }
            }
        }
        const Extent bounds = roundBounds(extent, ticks);
        first.axis->setTickCount(ticks);
        first.axis->setRange(bounds.low, bounds.high);
        first.axis->setLabelsVisible(hasTexts);
        first.axis->setTitleVisible(hasTexts && !first.curve.unit.isEmpty());
    }
}

double ChartPlot::timeAt(int x) const {
    const QRectF area = chart()->plotArea();
    return from_ + (x - area.left()) / std::max(1.0, area.width()) * span();
}

std::optional<double> ChartPlot::xOf(double time) const {
    if (time < from_ || time > to_)
        return std::nullopt;
    const QRectF area = chart()->plotArea();
    return area.left() + (time - from_) / span() * area.width();
}

void ChartPlot::zoom(double factor, double about) {
    const double length = std::clamp(span() * factor, ShortestSpan, LongestSpan);
    const double part = (about - from_) / span();
    setRange(about - part * length, about + (1 - part) * length);
    emit sigRangeChanged();
}

void ChartPlot::move(double spans) {
    const double by = spans * span();
    setRange(from_ + by, to_ + by);
    emit sigRangeChanged();
}

void ChartPlot::wheelEvent(QWheelEvent* event) {
    const double steps = event->angleDelta().y() / 120.0;
    if (steps != 0)
        zoom(std::pow(0.8, steps), timeAt(event->position().toPoint().x()));
    event->accept();
}

void ChartPlot::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore(); // the menu is the tile's
        return;
    }
    setFocus(Qt::MouseFocusReason);
    dragX_ = event->x();
    dragFrom_ = from_;
    viewport()->setCursor(Qt::ClosedHandCursor);
}

void ChartPlot::mouseMoveEvent(QMouseEvent* event) {
    if (dragX_) {
        const double moved = (event->x() - *dragX_) / std::max(1.0, chart()->plotArea().width()) * span();
        setRange(dragFrom_ - moved, dragFrom_ - moved + span());
        emit sigRangeChanged();
    }
    moveCursor(timeAt(event->x()));
}

void ChartPlot::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        dragX_.reset();
        viewport()->unsetCursor();
    }
}

void ChartPlot::leaveEvent(QEvent* event) {
    QChartView::leaveEvent(event);
    cursor_.reset();
    viewport()->update();
}

void ChartPlot::moveCursor(double time) {
    cursor_ = std::clamp(time, from_, to_);
    viewport()->update();
}

void ChartPlot::keyPressEvent(QKeyEvent* event) {
    const bool isCursor = event->modifiers().testFlag(Qt::ControlModifier);
    const double middle = cursor_.value_or((from_ + to_) / 2);
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right: {
        const double side = event->key() == Qt::Key_Left ? -1 : 1;
        if (isCursor)
            moveCursor(middle + side * span() / 100);
        else
            move(side * 0.2);
        break;
    }
    case Qt::Key_PageUp:
        move(-1);
        break;
    case Qt::Key_PageDown:
        move(1);
        break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoom(0.5, middle);
        break;
    case Qt::Key_Minus:
        zoom(2, middle);
        break;
    case Qt::Key_Home:
        emit sigPresent();
        break;
    default:
        QChartView::keyPressEvent(event);
    }
}

void ChartPlot::resizeEvent(QResizeEvent* event) {
    QChartView::resizeEvent(event);
    redraw();
}

void ChartPlot::drawForeground(QPainter* painter, const QRectF& rect) {
    QChartView::drawForeground(painter, rect);
    painter->save();
    painter->setFont(textFont());
    drawThresholds(*painter);
    drawMarks(*painter);
    drawCursor(*painter);
    painter->restore();
}

void ChartPlot::drawThresholds(QPainter& painter) const {
    const QRectF area = chart()->plotArea();
    const double textHeight = painter.fontMetrics().height();
    std::vector<double> taken; // upper edges of texts
    const auto draw = [&](const Line& line, int level, double value, const QString& side) {
        const double y = chart()->mapToPosition(QPointF(from_ * Milliseconds, value), line.series).y();
        if (y < area.top() - 1 || y > area.bottom() + 1)
            return;
        painter.setPen(QPen(levelColor(level), 1, level == 2 ? Qt::DashDotLine : Qt::DashLine));
        painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
        // Above its line, or below one that is at the top; a text that would lie over another is left out.
        const double top = y - textHeight < area.top() ? y : y - textHeight;
        const bool isFree = std::none_of(taken.begin(), taken.end(),
                                         [&](double other) { return std::abs(other - top) < textHeight; });
        if (!isFree || area.width() < NarrowestNamed)
            return;
        taken.push_back(top);
        const QString text =
            tr("%1 %2级%3 %4").arg(line.curve.name, QString::number(level), side, QString::number(value, 'g', 6));
        const QRectF place(area.left() + theme::Step, top, area.width() - 2 * theme::Step, textHeight);
        painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter,
                         painter.fontMetrics().elidedText(text, Qt::ElideRight, static_cast<int>(place.width())));
    };
    for (const Line& line : lines_) {
        for (const ThresholdLevel& level : line.curve.thresholds) {
            if (level.high)
                draw(line, level.level, *level.high, tr("上限"));
            if (level.low)
                draw(line, level.level, *level.low, tr("下限"));
        }
    }
}

void ChartPlot::drawMarks(QPainter& painter) const {
    const QRectF area = chart()->plotArea();
    for (const AlarmMark& mark : marks_) {
        const auto x = xOf(mark.time);
        const bool isShown = std::any_of(lines_.begin(), lines_.end(),
                                         [&mark](const Line& line) { return line.curve.pid == mark.pid; });
        if (!x || !isShown)
            continue;
        painter.setPen(QPen(theme::Alarm, 1, Qt::DotLine));
        painter.drawLine(QPointF(*x, area.top()), QPointF(*x, area.bottom()));
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme::Alarm);
        constexpr double half = 6; // px
        const std::array<QPointF, 3> triangle{QPointF(*x - half, area.top()), QPointF(*x + half, area.top()),
                                              QPointF(*x, area.top() + 2 * half)};
        painter.drawPolygon(triangle.data(), static_cast<int>(triangle.size()));
    }
}

void ChartPlot::drawCursor(QPainter& painter) const {
    const auto x = cursor_ && !lines_.empty() ? xOf(*cursor_) : std::nullopt;
    if (!x)
        return;
    const QRectF area = chart()->plotArea();
    painter.setPen(QPen(theme::TextOnDark, 1));
    painter.drawLine(QPointF(*x, area.top()), QPointF(*x, area.bottom()));
    QVector<QPair<QColor, QString>> texts{
        {theme::TextOnDark, momentOf(*cursor_).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"))}};
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const Curve& curve = lines_[i].curve;
        const Sample* const sample = sampleAt(source_(curve.pid, span()), *cursor_);
        const QString value = sample == nullptr   ? QStringLiteral("-")
                              : !sample->isNormal ? tr("异常")
                                                  : QString::number(sample->value) + QLatin1Char(' ') + curve.unit;
        texts += {colorOf(static_cast<int>(i)), curve.name + QStringLiteral(": ") + value};
    }
    const double near = span() * 6 / std::max(1.0, area.width());
    for (const AlarmMark& mark : marks_) {
        if (std::abs(mark.time - *cursor_) <= near)
            texts += {theme::Alarm, mark.text};
    }
    const QFontMetrics metrics = painter.fontMetrics();
    int width = 0;
    for (const auto& text : qAsConst(texts))
        width = std::max(width, metrics.horizontalAdvance(text.second));
    width = std::min(width, static_cast<int>(area.width()) / 2 + 80);
    QRectF box(*x + 2 * theme::Step, area.top() + 2 * theme::Step, width + 4 * theme::Step,
               metrics.height() * texts.size() + 2 * theme::Step);
    if (box.right() > area.right())
        box.moveRight(*x - 2 * theme::Step);
    painter.setPen(theme::TileLine);
    painter.setBrush(QColor(40, 42, 45, 220));
    painter.drawRect(box);
    for (int i = 0; i < texts.size(); ++i) {
        painter.setPen(texts[i].first);
        painter.drawText(
            QPointF(box.left() + 2 * theme::Step, box.top() + theme::Step + metrics.ascent() + metrics.height() * i),
            metrics.elidedText(texts[i].second, Qt::ElideRight, width));
    }
}

} // namespace corvanta::sensor
