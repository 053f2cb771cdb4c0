#pragma once

#include <QFrame>

class QDateTimeEdit;

/// A calendar under a date field: a day that is chosen goes into the field, whose time of day stays. Deletes itself
/// when it closes.
class CalendarPopup final : public QFrame {
    Q_OBJECT
public:
    explicit CalendarPopup(QDateTimeEdit& field);

    /// Shows it under the field, or over it where the screen ends.
    void showAtField();

private:
    QDateTimeEdit& field_;
};
