#pragma once

#include <QWidget>

/// Says in a corner of a video tile that its device is being recorded: a red dot and how long it has been. While the
/// recording waits for its stream or a disk the dot is an amber ring. Hidden while nothing is recorded.
class RecordMark final : public QWidget {
    Q_OBJECT
public:
    enum class Kind { None, Waiting, Recording };

    explicit RecordMark(QWidget* parent);

    /// `seconds` since the recording began, below 0 when it has not. Returns whether it covers another area now.
    bool show(Kind kind, qint64 seconds);
    /// Puts itself into the lower right corner of `area` (parent's coordinates), as small as it can.
    void placeIn(const QRect& area);

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QSize wanted() const;
    void sayName();

    Kind kind_ = Kind::None;
    QString time_;
    QRect area_;
};
