#include "monitor/ui/settings/HelpSheet.h"

#include "base/ui/Theme.h"
#include "monitor/Shortcuts.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QVariant>

namespace theme = corvanta::theme;

namespace {

const QSize Usual(760, 440);        // px
const QSize Smallest(360, 240);     // px
constexpr int TwoColumnsFrom = 640; // px

} // namespace

HelpSheet::HelpSheet(QWidget* parent)
    : FramedDialog(tr("快捷键"), parent) {
    setObjectName(QStringLiteral("HelpSheet"));
    setAccessibleName(tr("快捷键"));
    auto* const sheet = new QWidget(this);
    grid_ = new QGridLayout(sheet);
    grid_->setContentsMargins(0, 0, 2 * theme::Step, 0);
    grid_->setHorizontalSpacing(3 * theme::Step);
    grid_->setVerticalSpacing(2 * theme::Step);
    for (const corvanta::Shortcut& shortcut : corvanta::shortcuts()) {
        auto* const key = new QLabel(QCoreApplication::translate("Shortcuts", shortcut.shown), sheet);
        key->setProperty("role", QStringLiteral("key"));
        key->setAlignment(Qt::AlignCenter);
        auto* const text = new QLabel(QCoreApplication::translate("Shortcuts", shortcut.text), sheet);
        text->setWordWrap(true);
        for (QLabel* label : {key, text})
            label->setTextFormat(Qt::PlainText);
        lines_ += Line{key, text};
    }
    auto* const area = new QScrollArea(this);
    area->setObjectName(QStringLiteral("helpArea"));
    area->setAccessibleName(tr("快捷键"));
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidget(sheet);
    body()->addWidget(area, 1);
    connect(addButton(tr("关闭"), QStringLiteral("helpClose"), true), &QPushButton::clicked, this, &QDialog::accept);
    setMinimumSize(Smallest);
    const QScreen* const screen = parent != nullptr ? parent->screen() : QGuiApplication::primaryScreen();
    resize(Usual.boundedTo(screen->availableSize()));
}

void HelpSheet::resizeEvent(QResizeEvent* event) {
    FramedDialog::resizeEvent(event);
    const int wanted = width() >= TwoColumnsFrom ? 2 : 1;
    if (wanted != columns_)
        arrange(wanted);
}

void HelpSheet::arrange(int columns) {
    columns_ = columns;
    const int rows = (lines_.size() + columns - 1) / columns;
    for (int i = 0; i < lines_.size(); ++i) {
        const int left = i / rows * 2;
        grid_->addWidget(lines_[i].key, i % rows, left, Qt::AlignVCenter);
        grid_->addWidget(lines_[i].text, i % rows, left + 1, Qt::AlignVCenter);
    }
    for (int column : {1, 3})
        grid_->setColumnStretch(column, column < 2 * columns ? 1 : 0);
    for (int row = 0; row <= lines_.size(); ++row)
        grid_->setRowStretch(row, row == rows ? 1 : 0);
}
