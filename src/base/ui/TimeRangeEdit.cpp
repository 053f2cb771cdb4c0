#include "base/ui/TimeRangeEdit.h"

#include "base/ui/BarButton.h"
#include "base/ui/CalendarPopup.h"
#include "base/ui/Theme.h"

#include <QDateTimeEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace theme = corvanta::theme;

TimeRangeEdit::TimeRangeEdit(QWidget* parent)
    : QWidget(parent) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(theme::Step);
    start_ = addTime([] { return tr("开始时间"); }, QStringLiteral("startTime"), *row, &TimeRangeEdit::chooseStart);
    row->addWidget(new QLabel(QStringLiteral("–"), this));
    end_ = addTime([] { return tr("结束时间"); }, QStringLiteral("endTime"), *row, &TimeRangeEdit::chooseEnd);
    row->addStretch(1);
}

QDateTimeEdit* TimeRangeEdit::addTime(const corvanta::Text& name, const QString& objectName, QHBoxLayout& row,
                                      void (TimeRangeEdit::*choose)()) {
    auto* const field = new QDateTimeEdit(this);
    field->setObjectName(objectName);
    corvanta::wordedName(field, name);
    corvanta::wordedTip(field, name);
    field->setDisplayFormat(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    row.addWidget(field);
    connect(field, &QDateTimeEdit::dateTimeChanged, this, &TimeRangeEdit::sigChanged);
    QToolButton* const button = corvanta::barButton(
        this, objectName + QStringLiteral("Calendar"), [] { return tr("选择日期"); }, QStringLiteral("calendar"));
    corvanta::wordedName(button, [name] { return tr("选择日期：%1").arg(name()); });
    connect(button, &QToolButton::clicked, this, choose);
    row.addWidget(button);
    return field;
}

QDateTime TimeRangeEdit::start() const {
    return start_->dateTime();
}

QDateTime TimeRangeEdit::end() const {
    return end_->dateTime();
}

void TimeRangeEdit::setLastDays(int days) {
    const QDate today = QDate::currentDate();
    start_->setDateTime(QDateTime(today.addDays(1 - days), QTime(0, 0)));
    end_->setDateTime(QDateTime(today, QTime(23, 59, 59)));
}

void TimeRangeEdit::chooseStart() {
    (new CalendarPopup(*start_))->showAtField();
}

void TimeRangeEdit::chooseEnd() {
    (new CalendarPopup(*end_))->showAtField();
}
