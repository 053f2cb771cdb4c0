#include "storage/ui/FileForm.h"

#include "base/DataTree.h"
#include "base/ui/Theme.h"
#include "base/ui/TimeRangeEdit.h"
#include "base/ui/Worded.h"
#include "storage/ui/CheckListBox.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <QVBoxLayout>
#include <QVariant>

namespace theme = corvanta::theme;
namespace storage = corvanta::storage;

namespace {
constexpr int OwnRange = 0; ///< in place of a number of days
}

FileForm::FileForm(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("fileForm"));
    corvanta::wordedName(this, [] { return tr("查找条件"); });
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(2 * theme::Step, 2 * theme::Step, 2 * theme::Step, 0);
    column->setSpacing(theme::Step);
    auto* const row = new QHBoxLayout;
    row->setSpacing(2 * theme::Step);
    devices_ = new CheckListBox(
        QStringLiteral("fileDevices"), [] { return tr("设备"); }, [] { return tr("全部设备"); }, this);
    row->addWidget(devices_);
    kinds_ = new CheckListBox(
        QStringLiteral("fileKinds"), [] { return tr("类别"); }, [] { return tr("全部类别"); }, this);
    corvanta::worded(kinds_, [this] {
        QList<CheckListBox::Entry> kinds;
        for (const QString& kind : corvanta::dataTree::kindsByDay())
            kinds += {kind, storage::fileTexts::kind(kind), QString()};
        kinds_->setEntries(kinds);
    });
    row->addWidget(kinds_);
    range_ = new QComboBox(this);
    range_->setObjectName(QStringLiteral("fileRange"));
    corvanta::wordedName(range_, [] { return tr("时间范围"); });
    corvanta::wordedTip(range_, [] { return tr("时间范围"); });
    for (const int days : {1, 7, 30, OwnRange})
        range_->addItem(QString(), days);
    corvanta::worded(range_, [this] {
        const QStringList texts{tr("今天"), tr("最近 7 天"), tr("最近 30 天"), tr("自定义")};
        for (int i = 0; i < texts.size(); ++i)
            range_->setItemText(i, texts[i]);
    });
    row->addWidget(range_);
    row->addStretch(1);
    search_ = new QPushButton(this);
    search_->setObjectName(QStringLiteral("fileSearch"));
    search_->setMinimumWidth(72);
    row->addWidget(search_);
    column->addLayout(row);
    own_ = new TimeRangeEdit(this);
    own_->setLastDays(1);
    own_->hide();
    column->addWidget(own_);

    connect(devices_, &CheckListBox::sigChosen, this, &FileForm::sigChanged);
    connect(kinds_, &CheckListBox::sigChosen, this, &FileForm::sigChanged);
    connect(own_, &TimeRangeEdit::sigChanged, this, &FileForm::sigChanged);
    connect(range_, qOverload<int>(&QComboBox::currentIndexChanged), this, &FileForm::onRangeChosen);
    connect(search_, &QPushButton::clicked, this, [this] {
        if (searching_)
            emit sigStop();
        else
            emit sigSearch();
    });
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* const enter = new QShortcut(QKeySequence(key), this);
        enter->setContext(Qt::WidgetWithChildrenShortcut);
        connect(enter, &QShortcut::activated, search_, &QPushButton::click);
    }
    corvanta::worded(this, [this] { setSearching(searching_); });
}

void FileForm::onRangeChosen() {
    own_->setVisible(range_->currentData().toInt() == OwnRange);
    emit sigChanged();
}

void FileForm::setDevices(const QStringList& ids, const storage::DeviceNames& nameOf) {
    QList<CheckListBox::Entry> entries;
    for (const QString& id : ids) {
        const QString name = storage::fileTexts::oneLine(nameOf(id));
        const QString shownId = storage::fileTexts::oneLine(id);
        entries += {id, name == shownId ? name : tr("%1（%2）").arg(name, shownId), shownId};
    }
    devices_->setEntries(entries);
}

storage::FileQuery FileForm::query() const {
    storage::FileQuery query;
    const int days = range_->currentData().toInt();
    if (days == OwnRange) {
        query.start = own_->start();
        query.end = own_->end();
    } else {
        const QDate today = QDate::currentDate();
        query.start = QDateTime(today.addDays(1 - days), QTime(0, 0));
        query.end = QDateTime(today, QTime(23, 59, 59, 999));
    }
    query.devices = devices_->chosen();
    query.kinds = kinds_->chosen();
    return query;
}

void FileForm::setSearching(bool searching) {
    searching_ = searching;
    search_->setText(searching ? tr("停止") : tr("查找"));
    search_->setAccessibleName(search_->text());
    search_->setProperty("primary", !searching);
    search_->style()->unpolish(search_);
    search_->style()->polish(search_);
}
