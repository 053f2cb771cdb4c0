#pragma once

#include "sensor/InputRecords.h"
#include "sensor/Samples.h"
#include "sensor/Thinning.h"

#include <QColor>
#include <QtCharts/QChartView>

#include <functional>
#include <optional>
#include <vector>

QT_CHARTS_BEGIN_NAMESPACE
class QAbstractAxis;
class QDateTimeAxis;
class QLineSeries;
class QValueAxis;
QT_CHARTS_END_NAMESPACE

namespace corvanta::sensor {

/// An alarm on the line of time.
struct AlarmMark {
    double time = 0; ///< epoch, s
    int pid = 0;
    int level = 0;
    QString text;
};

/// Lines of values over time: one axis of values a unit, thresholds as lines, alarms as marks, and a cursor at which
/// the values of all lines are read. Zoomed by the wheel, moved by dragging; the keyboard does the same (arrows,
/// plus, minus, Home to the present, with Ctrl the cursor).
///
/// Draws what is visible only, thinned to the width in pixels. The samples stay with who owns them.
class ChartPlot final : public QtCharts::QChartView {
    Q_OBJECT
public:
    struct Curve {
        int pid = 0;
        QString name;
        QString unit;
        std::vector<ThresholdLevel> thresholds;
    };
    /// The samples of an input for a view of so many seconds; they stay valid until the next redraw.
    using Source = std::function<const Samples&(int pid, double span)>;

    ChartPlot(Source source, QWidget* parent = nullptr);
    ~ChartPlot() override;

    void setCurves(const std::vector<Curve>& curves);
    static QColor colorOf(int curve);
    void setMarks(const std::vector<AlarmMark>& marks);

    /// What is seen, epoch in seconds.
    void setRange(double from, double to);
    double from() const { return from_; }
    double to() const { return to_; }
    double span() const { return to_ - from_; }
    /// Draws anew after the samples have changed.
    void redraw();

    /// Makes the span `factor` times as long, about a moment that stays where it is.
    void zoom(double factor, double about);
    /// Moves by so many spans.
    void move(double spans);

    static constexpr double ShortestSpan = 0.05; ///< s
    static constexpr double LongestSpan = 30 * 366 * 86400.0;

signals:
    /// The user has changed what is seen.
    void sigRangeChanged();
    /// The user wants to see the present.
    void sigPresent();

protected:
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void drawForeground(QPainter* painter, const QRectF& rect) override;

private:
    struct Line {
        Curve curve;
        QtCharts::QLineSeries* series; ///< the chart's
        QtCharts::QValueAxis* axis;    ///< likewise; shared by the lines of a unit
    };

    void styleChart();
    QtCharts::QValueAxis* axisOf(const QString& unit);
    void formatTime();
    void scaleValues();
    double timeAt(int x) const;
    std::optional<double> xOf(double time) const;
    void drawThresholds(QPainter& painter) const;
    void drawMarks(QPainter& painter) const;
    void drawCursor(QPainter& painter) const;
    void moveCursor(double time);

    Source source_;
    QtCharts::QDateTimeAxis* time_;
    std::vector<Line> lines_;
    std::vector<AlarmMark> marks_;
    double from_ = 0;
    double to_ = 1;
    std::optional<double> cursor_; ///< epoch, s
    std::optional<int> dragX_;     ///< where a drag began, px
    double dragFrom_ = 0;
};

} // namespace corvanta::sensor
