#pragma once

#include "base/ui/Worded.h"

#include <QDateTime>
#include <QWidget>

class QDateTimeEdit;
class QHBoxLayout;

/// Two moments, to the second, from which and up to which something is looked for; each with a calendar.
class TimeRangeEdit final : public QWidget {
    Q_OBJECT
public:
    explicit TimeRangeEdit(QWidget* parent = nullptr);

    QDateTime start() const;
    QDateTime end() const;
    /// The last `days` days, today's with them, from midnight to the last second.
    void setLastDays(int days);

    /// Opens the calendar of one end.
    void chooseStart();
    void chooseEnd();

signals:
    void sigChanged();

private:
    QDateTimeEdit* addTime(const corvanta::Text& name, const QString& objectName, QHBoxLayout& row,
                           void (TimeRangeEdit::*choose)());

    QDateTimeEdit* start_ = nullptr;
    QDateTimeEdit* end_ = nullptr;
};
