#pragma once

#include "playback/AxisScale.h"
#include "playback/Timeline.h"

#include <QStringList>
#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

namespace corvanta::playback {

/// The line of time below the pictures: a row for each camera with what it has recorded, the present moment, the
/// marked range. Dragging on it seeks, the wheel zooms, with Shift it moves. GUI thread.
class TimeAxis final : public QWidget {
    Q_OBJECT
public:
    explicit TimeAxis(QWidget* parent = nullptr);

    /// One camera's line.
    struct Row {
        QString name;
        std::vector<Span> recorded;
    };
    /// Shows all of `whole`.
    void setRows(std::vector<Row> rows, Span whole);
    void setMoment(Moment moment);
    /// Either mark may be missing.
    void setMarks(std::optional<Moment> begin, std::optional<Moment> end);
    void setSelectedRow(int row);

    const AxisScale& scale() const { return scale_; }
    /// Where the line of time begins, px from the left.
    int lineLeft() const { return namesWidth_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void sigSeek(qint64 microseconds);
    void sigRowChosen(int row);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void setView(Span view);
    void seekTo(int x);
    int rowAt(int y) const;
    int rowHeight() const;
    QRect lineOf(int row) const;
    void paintTicks(QPainter& painter) const;
    void paintRows(QPainter& painter) const;
    void paintMarks(QPainter& painter) const;
    void paintMoment(QPainter& painter) const;

    std::vector<Row> rows_;
    AxisScale scale_;
    Span whole_;
    Moment moment_{0};
    std::optional<Moment> begin_;
    std::optional<Moment> end_;
    int namesWidth_ = 0; ///< px, left of the line of time
    int selected_ = 0;
    bool dragging_ = false;
};

} // namespace corvanta::playback
