#pragma once

#include <QDate>
#include <QWidget>

class QDateEdit;

/// The day that is shown: a field with a calendar, and buttons to the day before and the one after.
class DayBar final : public QWidget {
    Q_OBJECT
public:
    explicit DayBar(QWidget* parent = nullptr);

    QDate day() const;
    void setDay(const QDate& day);
    void addDays(int days);

signals:
    void sigDay(QDate day);

private:
    QDateEdit* field_;
};
