#pragma once

#include "storage/FoundFiles.h"
#include "storage/ui/FileTexts.h"

#include <QAbstractScrollArea>

#include <memory>

/// A day of files: a row for each device, from 0 to 24 o'clock; pictures are ticks, recordings bars from their
/// beginnings on. One file is the current one.
///
/// Left and right go from file to file, up and down from device to device, Home and End to the ends of a row; plus,
/// minus, and the wheel with Ctrl, stretch the day.
class DayTimeline final : public QAbstractScrollArea {
    Q_OBJECT
public:
    using Files = std::shared_ptr<const corvanta::storage::FoundFiles>;

    explicit DayTimeline(corvanta::storage::DeviceNames nameOf, QWidget* parent = nullptr);

    /// Shows a day; no file is current then.
    void show(Files files, const QDate& day);
    using QAbstractScrollArea::show;
    bool isEmpty() const { return rows_.empty(); }

    /// -1: none.
    int currentFile() const { return current_; }
    /// Makes a file of the day the current one and brings it into view; without a signal.
    void setCurrentFile(int file);
    /// The files in the row of the current one, by time; of the first row when none is current.
    std::vector<int> filesOfCurrentRow() const;
    /// Where a file is painted, in the viewport; empty when it is not of this day.
    QRect place(int file) const;

signals:
    /// The user goes to another file.
    void sigCurrent(int file);
    /// The user wants the current file opened.
    void sigOpen();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    struct Mark {
        int second = 0; ///< of the day
        int length = 0; ///< seconds; 0: a picture
        int file = 0;
    };
    struct Row {
        QString name;
        std::vector<Mark> marks; ///< by time
    };
    struct Spot {
        std::size_t row = 0;
        std::size_t mark = 0;
    };

    Row makeRow(const corvanta::storage::FoundFiles::DeviceDay& device) const;
    void updateBars();
    void zoom(int steps, int atX);
    int nameWidth() const;
    int dayWidth() const; ///< px
    int xOf(int second) const;
    int rowTop(std::size_t row) const;
    QRect placeOf(std::size_t row, const Mark& mark) const;
    bool find(int file, Spot& spot) const;
    int fileAt(const QPoint& position) const;
    void go(int file);
    void step(int marks);
    void changeRow(int rows);
    void paintAxis(QPainter& painter) const;
    void paintRow(QPainter& painter, std::size_t row) const;
    QColor colorOf(int file) const;

    corvanta::storage::DeviceNames nameOf_;
    Files files_;
    std::vector<Row> rows_;
    int current_ = -1;
    int zoom_ = 0; ///< the day is 2^zoom times as wide as the view
};
