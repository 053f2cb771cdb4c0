#include "update/ui/UpdateProgressView.h"

#include "base/ui/Theme.h"
#include "base/ui/Worded.h"
#include "update/ProgressText.h"

#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace corvanta::update {
namespace {

constexpr int Whole = 1000;   // permille
constexpr int LowestBar = 12; // px

} // namespace

UpdateProgressView::UpdateProgressView(UpdateDownload& download, Shape shape, QWidget* parent)
    : QWidget(parent)
    , download_(download)
    , what_(new QLabel(this))
    , howFar_(new QLabel(this))
    , bar_(new QProgressBar(this)) {
    setObjectName(QStringLiteral("updateProgress"));
    corvanta::wordedName(this, [] { return tr("更新进度"); });
    setAttribute(Qt::WA_StyledBackground);
    what_->setObjectName(QStringLiteral("updateFile"));
    howFar_->setObjectName(QStringLiteral("updateFigures"));
    for (QLabel* const label : {what_, howFar_})
        label->setTextFormat(Qt::PlainText);
    what_->setMinimumWidth(1);
    bar_->setObjectName(QStringLiteral("updateBar"));
    corvanta::wordedName(bar_, [] { return tr("更新进度"); });
    bar_->setTextVisible(false);
    bar_->setFixedHeight(LowestBar);
    auto* const cancel = new QPushButton(this);
    cancel->setObjectName(QStringLiteral("updateCancel"));
    corvanta::wordedText(cancel, [] { return tr("取消更新"); });
    corvanta::wordedName(cancel, [] { return tr("取消更新"); });
    cancel->setAutoDefault(false);
    arrange(shape, *cancel);
    connect(cancel, &QPushButton::clicked, &download_, &UpdateDownload::cancel);
    connect(&download_, &UpdateDownload::sigStateChanged, this, &UpdateProgressView::refresh);
    connect(&download_, &UpdateDownload::sigProgress, this, &UpdateProgressView::refresh);
    corvanta::worded(this, [this] { refresh(); });
}

void UpdateProgressView::arrange(Shape shape, QWidget& cancel) {
    auto* const grid = new QGridLayout(this);
    grid->setHorizontalSpacing(3 * theme::Step);
    grid->setVerticalSpacing(theme::Step);
    grid->setColumnStretch(0, 1);
    if (shape == Shape::Strip) {
        grid->setContentsMargins(3 * theme::Step, theme::Step, 3 * theme::Step, theme::Step);
        grid->addWidget(what_, 0, 0);
        grid->addWidget(howFar_, 0, 1, Qt::AlignRight);
        grid->addWidget(bar_, 1, 0, 1, 2);
        grid->addWidget(&cancel, 0, 2, 2, 1, Qt::AlignVCenter);
    } else {
        grid->setContentsMargins(0, 2 * theme::Step, 0, 0);
        grid->addWidget(what_, 0, 0, 1, 2);
        grid->addWidget(bar_, 1, 0);
        grid->addWidget(&cancel, 1, 1, 2, 1, Qt::AlignVCenter);
        grid->addWidget(howFar_, 2, 0);
    }
}

void UpdateProgressView::refresh() {
    const ProgressText text = progressText(download_.state(), download_.progress());
    setVisible(download_.state() != UpdateDownload::State::Idle);
    whatText_ = text.what;
    howFar_->setText(text.howFar);
    howFar_->setAccessibleName(text.howFar);
    bar_->setRange(0, text.permille < 0 ? 0 : Whole);
    bar_->setValue(text.permille);
    elide();
}

void UpdateProgressView::elide() {
    what_->setText(what_->fontMetrics().elidedText(whatText_, Qt::ElideMiddle, what_->width()));
    what_->setAccessibleName(whatText_);
}

void UpdateProgressView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    elide();
}

} // namespace corvanta::update
