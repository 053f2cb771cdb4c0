#include "base/ui/CalendarPopup.h"

#include "base/Language.h"
#include "base/ui/Theme.h"

#include <QCalendarWidget>
#include <QDateTimeEdit>
#include <QScreen>
#include <QTextCharFormat>
#include <QVBoxLayout>

#include <algorithm>

namespace theme = corvanta::theme;

CalendarPopup::CalendarPopup(QDateTimeEdit& field)
    : QFrame(&field, Qt::Popup)
    , field_(field) {
    setObjectName(QStringLiteral("calendarPopup"));
    setAccessibleName(tr("日历"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(1, 1, 1, 1);
    auto* const calendar = new QCalendarWidget(this);
    calendar->setObjectName(QStringLiteral("calendar"));
    calendar->setAccessibleName(tr("日历"));
    calendar->setLocale(corvanta::spokenLocale());
    calendar->setFirstDayOfWeek(Qt::Monday);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->setHorizontalHeaderFormat(QCalendarWidget::ShortDayNames);
    QTextCharFormat plain; // the toolkit's red is kept for alarms
    plain.setForeground(theme::TextOnDark);
    calendar->setWeekdayTextFormat(Qt::Saturday, plain);
    calendar->setWeekdayTextFormat(Qt::Sunday, plain);
    QTextCharFormat head;
    head.setForeground(theme::FaintOnDark);
    head.setBackground(theme::Bar);
    calendar->setHeaderTextFormat(head);
    calendar->setSelectedDate(field_.date());
    column->addWidget(calendar);
    const auto take = [this](const QDate& day) {
        field_.setDate(day);
        close();
    };
    connect(calendar, &QCalendarWidget::clicked, this, take);
    connect(calendar, &QCalendarWidget::activated, this, take);
    setFocusProxy(calendar);
}

void CalendarPopup::showAtField() {
    adjustSize();
    const QRect screen = field_.screen()->availableGeometry();
    QPoint place = field_.mapToGlobal(QPoint(0, field_.height()));
    if (place.y() + height() > screen.bottom())
        place = field_.mapToGlobal(QPoint(0, -height()));
    place.setX(std::clamp(place.x(), screen.left(), std::max(screen.left(), screen.right() - width())));
    move(place);
    show();
    setFocus();
}
