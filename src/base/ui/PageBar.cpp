#include "base/ui/PageBar.h"

#include "base/ui/BarButton.h"
#include "base/ui/Theme.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>

#include <utility>

namespace theme = corvanta::theme;

PageBar::PageBar(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("pageBar"));
    corvanta::wordedName(this, [] { return tr("分页栏"); });
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(2 * theme::Step, theme::Step, theme::Step, theme::Step);
    row->setSpacing(theme::Step);
    info_ = new QLabel(this);
    info_->setObjectName(QStringLiteral("pageInfo"));
    info_->setTextFormat(Qt::PlainText);
    info_->setMinimumWidth(1);
    info_->setProperty("role", QStringLiteral("faint"));
    row->addWidget(info_, 1);

    rows_ = new QComboBox(this);
    rows_->setObjectName(QStringLiteral("pageRows"));
    for (const int count : {20, 50, 100, 500, 0})
        rows_->addItem(QString(), count);
    corvanta::worded(rows_, [this] {
        rows_->setAccessibleName(tr("每页行数"));
        rows_->setToolTip(rows_->accessibleName());
        for (int i = 0; i < rows_->count(); ++i) {
            const int count = rows_->itemData(i).toInt();
            rows_->setItemText(i, count == 0 ? tr("全部") : tr("%1 行/页").arg(count));
        }
    });
    rows_->setCurrentIndex(rows_->findData(DefaultPageRows));
    row->addWidget(rows_);
    connect(rows_, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { emit sigPage(QStringLiteral("pageRowCount"), pageRows()); });

    addButton(
        "toFirstPage", QStringLiteral("firstPage"), [] { return tr("第一页"); }, QStringLiteral("page-first"));
    addButton(
        "prePage", QStringLiteral("previousPage"), [] { return tr("上一页"); }, QStringLiteral("page-previous"));
    page_ = new QSpinBox(this);
    page_->setObjectName(QStringLiteral("pageNumber"));
    corvanta::wordedName(page_, [] { return tr("页码"); });
    corvanta::wordedTip(page_, [] { return tr("页码"); });
    page_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    page_->setMinimum(1);
    page_->setFixedWidth(64);
    page_->setKeyboardTracking(false); // a number counts when it is written whole
    row->addWidget(page_);
    connect(page_, qOverload<int>(&QSpinBox::valueChanged), this,
            [this](int page) { emit sigPage(QStringLiteral("setPageRow"), page); });
    pages_ = new QLabel(this);
    pages_->setObjectName(QStringLiteral("pageCount"));
    row->addWidget(pages_);
    addButton(
        "nextPage", QStringLiteral("nextPage"), [] { return tr("下一页"); }, QStringLiteral("page-next"));
    addButton(
        "tolastPage", QStringLiteral("lastPage"), [] { return tr("最后一页"); }, QStringLiteral("page-last"));
    addButton(
        "export", QStringLiteral("exportButton"), [] { return tr("导出"); }, QStringLiteral("export"));
    const auto buttons = findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
    toBegin_ = buttons.mid(0, 2);
    toEnd_ = buttons.mid(2, 2);
    export_ = buttons.last();
    setPage(1, 1);
}

void PageBar::addButton(const char* event, const QString& objectName, corvanta::Text text, const QString& drawing) {
    QToolButton* const button = corvanta::barButton(this, objectName, std::move(text), drawing);
    layout()->addWidget(button);
    connect(button, &QToolButton::clicked, this, [this, event] { emit sigPage(QLatin1String(event), QVariant()); });
}

int PageBar::pageRows() const {
    return rows_->currentData().toInt();
}

void PageBar::setPageRows(int rows) {
    const int index = rows_->findData(rows);
    if (index >= 0)
        rows_->setCurrentIndex(index);
}

void PageBar::setPage(int page, int pageCount) {
    const QSignalBlocker quiet(page_); // being told is no event
    page_->setMaximum(pageCount);
    page_->setValue(page);
    page_->setEnabled(pageCount > 1);
    pages_->setText(QStringLiteral("/ %1").arg(pageCount));
    for (QToolButton* const button : qAsConst(toBegin_))
        button->setEnabled(page > 1);
    for (QToolButton* const button : qAsConst(toEnd_))
        button->setEnabled(page < pageCount);
}

void PageBar::setInfo(const QString& text) {
    info_->setText(text);
    info_->setToolTip(text);
    info_->setAccessibleName(text);
}

void PageBar::setExportEnabled(bool enabled) {
    export_->setEnabled(enabled);
}
