#include "monitor/ui/settings/SettingsDialog.h"

#include "base/Settings.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"
#include "monitor/ui/settings/AlarmPage.h"
#include "monitor/ui/settings/GeneralPage.h"
#include "monitor/ui/settings/NetworkPage.h"
#include "monitor/ui/settings/OnlineMapPage.h"
#include "monitor/ui/settings/PollPage.h"
#include "monitor/ui/settings/RecordPage.h"
#include "monitor/ui/settings/StartPage.h"
#include "monitor/ui/settings/UpdatePage.h"
#include "monitor/ui/settings/VideoPage.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace theme = corvanta::theme;

namespace {

const QSize Smallest(640, 360); // px
const QSize Usual(880, 600);    // px
constexpr int ListWidth = 112;  // px, at least

} // namespace

SettingsDialog::SettingsDialog(const AppContext& context, QWidget* parent)
    : FramedDialog(tr("软件设置"), parent)
    , context_(context) {
    setObjectName(QStringLiteral("SettingsDialog"));
    setAccessibleName(tr("软件设置"));
    setSizeGripEnabled(true);
    auto* const row = new QHBoxLayout;
    row->setSpacing(4 * theme::Step);
    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("settingsPages"));
    list_->setAccessibleName(tr("设置分类"));
    list_->setIconSize(QSize(theme::IconSize, theme::IconSize));
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    row->addWidget(list_);
    stack_ = new QStackedWidget(this);
    row->addWidget(stack_, 1);
    body()->addLayout(row, 1);
    addPages();
    list_->setFixedWidth(std::max(ListWidth, list_->sizeHintForColumn(0) + 2 * list_->frameWidth()));
    addButtons();
    connect(list_, &QListWidget::currentRowChanged, stack_, &QStackedWidget::setCurrentIndex);
    list_->setCurrentRow(0);
    list_->setFocus();
    setMinimumSize(Smallest);
    const QScreen* const screen = parent != nullptr ? parent->screen() : QGuiApplication::primaryScreen();
    resize(Usual.boundedTo(screen->availableSize()));
}

void SettingsDialog::addPages() {
    addPage(new GeneralPage(context_, this));
    addPage(new StartPage(this));
    addPage(new VideoPage(this));
    addPage(new RecordPage(this));
    addPage(new PollPage(context_, this));
    addPage(new AlarmPage(this));
    addPage(new OnlineMapPage(this));
    addPage(new NetworkPage(this));
    addPage(new UpdatePage(this));
}

void SettingsDialog::addPage(SettingsPage* page) {
    page->load(context_.settings);
    auto* const area = new QScrollArea(stack_);
    area->setObjectName(page->objectName() + QStringLiteral("Area"));
    area->setAccessibleName(page->title());
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(page);
    stack_->addWidget(area);
    new QListWidgetItem(corvanta::svgIcon(page->drawing(), theme::TextOnLight), page->title(), list_);
    pages_.push_back(page);
    connect(page, &SettingsPage::sigEdited, this, &SettingsDialog::onEdited);
}

void SettingsDialog::addButtons() {
    auto* const ok = addButton(tr("确定"), QStringLiteral("settingsOk"), true);
    auto* const cancel = addButton(tr("取消"), QStringLiteral("settingsCancel"), false);
    apply_ = addButton(tr("应用"), QStringLiteral("settingsApply"), false);
    apply_->setEnabled(false);
    connect(ok, &QPushButton::clicked, this, [this] {
        if (apply())
            accept();
    });
    connect(cancel, &QPushButton::clicked, this, &SettingsDialog::reject);
    connect(apply_, &QPushButton::clicked, this, [this] {
        const QString before = context_.settings.get(corvanta::keys::Language).toString();
        if (apply() && context_.settings.get(corvanta::keys::Language).toString() != before)
            done(SayAnew);
    });
}

int SettingsDialog::page() const {
    return list_->currentRow();
}

void SettingsDialog::setPage(int page) {
    list_->setCurrentRow(page);
}

void SettingsDialog::showPage(const QString& objectName) {
    const auto isIt = [&objectName](const SettingsPage* page) {
        return page->objectName() == objectName;
    };
    const auto it = std::find_if(pages_.begin(), pages_.end(), isIt);
    if (it != pages_.end())
        list_->setCurrentRow(static_cast<int>(it - pages_.begin()));
}

bool SettingsDialog::isChanged() const {
    return std::any_of(pages_.begin(), pages_.end(), [](const SettingsPage* page) { return page->isChanged(); });
}

void SettingsDialog::onEdited() {
    showProblem(QString());
    apply_->setEnabled(isChanged());
}

void SettingsDialog::showProblemOf(int page, const QString& text) {
    list_->setCurrentRow(page);
    showProblem(text);
}

bool SettingsDialog::apply() {
    showProblem(QString());
    for (std::size_t i = 0; i < pages_.size(); ++i) {
        const auto problem = pages_[i]->isChanged() ? pages_[i]->check() : std::nullopt;
        if (problem) {
            showProblemOf(static_cast<int>(i), *problem);
            return false;
        }
    }
    QStringList keys;
    bool isWell = true;
    for (std::size_t i = 0; i < pages_.size(); ++i) {
        keys += pages_[i]->store(context_.settings);
        if (const auto problem = pages_[i]->storeElsewhere()) {
            showProblemOf(static_cast<int>(i), *problem);
            isWell = false;
        }
    }
    apply_->setEnabled(isChanged());
    if (!keys.isEmpty()) {
        context_.settings.save();
        emit sigApplied(keys);
    }
    return isWell;
}

void SettingsDialog::reject() {
    if (!isChanged() || TipDialog::ask(tr("提示"), tr("放弃修改?"), true, this))
        FramedDialog::reject();
}
