#include "logs/ui/serchFormLog.h"

#include "base/ui/Theme.h"
#include "base/ui/TimeRangeEdit.h"
#include "base/ui/Worded.h"
#include "logs/LogKinds.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace theme = corvanta::theme;
namespace logs = corvanta::logs;

serchFormLog::serchFormLog(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("searchForm"));
    corvanta::wordedName(this, [] { return tr("查询条件"); });
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(2 * theme::Step, 2 * theme::Step, 2 * theme::Step, theme::Step);
    column->setSpacing(theme::Step);
    auto* const first = new QHBoxLayout;
    first->setSpacing(2 * theme::Step);
    type_ = new QComboBox(this);
    type_->setObjectName(QStringLiteral("logType"));
    corvanta::wordedName(type_, [] { return tr("日志类型"); });
    for (int type = 0; type < static_cast<int>(logs::kinds().size()); ++type)
        type_->addItem(QString(), type);
    corvanta::worded(type_, [this] {
        for (int i = 0; i < type_->count(); ++i)
            type_->setItemText(i, logs::tabText(type_->itemData(i).toInt()));
    });
    first->addWidget(type_);
    allTime_ = new QCheckBox(this);
    allTime_->setObjectName(QStringLiteral("allTime"));
    corvanta::wordedText(allTime_, [] { return tr("全部时间"); });
    corvanta::wordedName(allTime_, [] { return tr("全部时间"); });
    first->addWidget(allTime_);
    first->addStretch(1);
    search_ = new QPushButton(this);
    search_->setObjectName(QStringLiteral("searchButton"));
    search_->setMinimumWidth(88);
    first->addWidget(search_);
    column->addLayout(first);

    range_ = new TimeRangeEdit(this);
    column->addWidget(range_);

    connect(type_, qOverload<int>(&QComboBox::currentIndexChanged), this, &serchFormLog::sig_typeChosen);
    connect(allTime_, &QCheckBox::toggled, this, &serchFormLog::enableRange);
    connect(search_, &QPushButton::clicked, this, [this] {
        if (searching_)
            emit sig_stop();
        else
            emit sig_clicked();
    });
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* const enter = new QShortcut(QKeySequence(key), this);
        enter->setContext(Qt::WidgetWithChildrenShortcut);
        connect(enter, &QShortcut::activated, search_, &QPushButton::click);
    }
    corvanta::worded(this, [this] { setSearching(searching_); });
    reset();
}

QVariantMap serchFormLog::parameters() const {
    return {{QStringLiteral("type"), type()},
            {QStringLiteral("start"), range_->start()},
            {QStringLiteral("end"), range_->end()},
            {QStringLiteral("allTime"), allTime_->isChecked()}};
}

int serchFormLog::type() const {
    return type_->currentData().toInt();
}

void serchFormLog::setType(int type) {
    const QSignalBlocker quiet(type_);
    type_->setCurrentIndex(type_->findData(type));
}

void serchFormLog::setSearching(bool searching) {
    searching_ = searching;
    search_->setText(searching ? tr("停止") : tr("查询"));
    search_->setAccessibleName(search_->text());
    search_->setProperty("primary", !searching);
}

void serchFormLog::reset() {
    constexpr int Days = 7; // what most look for happened lately
    range_->setLastDays(Days);
    setType(0);
    allTime_->setChecked(true);
    enableRange();
}

void serchFormLog::enableRange() {
    range_->setEnabled(!allTime_->isChecked());
}

void serchFormLog::onStartTimeComboxclicked() {
    range_->chooseStart();
}

void serchFormLog::onendTimeComboxclicked() {
    range_->chooseEnd();
}
