#include "storage/ui/DayBar.h"

#include "base/ui/BarButton.h"
#include "base/ui/CalendarPopup.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"

#include <QDateEdit>
#include <QHBoxLayout>
#include <QToolButton>

#include <utility>

DayBar::DayBar(QWidget* parent)
    : QWidget(parent) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    const auto addButton = [this, row](const QString& objectName, corvanta::Text text, const QString& drawing) {
        QToolButton* const button = corvanta::barButton(this, objectName, std::move(text), drawing);
        row->addWidget(button);
        return button;
    };
    connect(
        addButton(
            QStringLiteral("previousDay"), [] { return tr("前一天 (Ctrl+PgUp)"); }, QStringLiteral("page-previous")),
        &QToolButton::clicked, this, [this] { addDays(-1); });
    field_ = new QDateEdit(QDate::currentDate(), this);
    field_->setObjectName(QStringLiteral("fileDay"));
    corvanta::wordedName(field_, [] { return tr("日期"); });
    corvanta::wordedTip(field_, [] { return tr("日期"); });
    field_->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
    row->addWidget(field_);
    connect(field_, &QDateEdit::dateChanged, this, &DayBar::sigDay);
    connect(addButton(
                QStringLiteral("fileDayCalendar"), [] { return tr("选择日期"); }, QStringLiteral("calendar")),
            &QToolButton::clicked, this, [this] { (new CalendarPopup(*field_))->showAtField(); });
    connect(addButton(
                QStringLiteral("nextDay"), [] { return tr("后一天 (Ctrl+PgDn)"); }, QStringLiteral("page-next")),
            &QToolButton::clicked, this, [this] { addDays(1); });
}

QDate DayBar::day() const {
    return field_->date();
}

void DayBar::setDay(const QDate& day) {
    field_->setDate(day);
}

void DayBar::addDays(int days) {
    field_->setDate(field_->date().addDays(days));
}
