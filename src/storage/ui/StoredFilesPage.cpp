#include "storage/ui/StoredFilesPage.h"

#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/Settings.h"
#include "base/SizeText.h"
#include "base/ui/BarButton.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"
#include "storage/RecordingStorage.h"
#include "storage/SearchDiskThread.h"
#include "storage/StoredDevicesThread.h"
#include "storage/ui/DayBar.h"
#include "storage/ui/DriveBars.h"
#include "storage/ui/FileForm.h"
#include "storage/ui/FileTableView.h"
#include "storage/ui/ThumbnailStrip.h"
#include "storage/ui/TimelinePane.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace storage = corvanta::storage;
namespace fileTexts = corvanta::storage::fileTexts;
namespace theme = corvanta::theme;

namespace {

/// Where the settings keep the list's column widths: px.
QString widthsKey() {
    return QStringLiteral("文件列宽");
}

} // namespace

StoredFilesPage::StoredFilesPage(const AppContext& context, RecordingStorage& storage, QWidget* parent)
    : QWidget(parent)
    , context_(context)
    , storage_(storage)
    , files_(std::make_shared<const storage::FoundFiles>()) {
    setObjectName(QStringLiteral("filesPage"));
    corvanta::wordedName(this, [] { return tr("文件"); });
    setProperty("page", QStringLiteral("dark"));
    setAttribute(Qt::WA_StyledBackground);
    actions_ = new FileActions(
        storage_, [this](const QString& id) { return nameOf(id); }, this);
    build();
    connectParts();
    QList<int> widths;
    for (const QVariant& width : context_.settings.get(widthsKey()).toList())
        widths += width.toInt();
    table_->setColumnWidths(widths);
    connect(table_->horizontalHeader(), &QHeaderView::sectionResized, this, &StoredFilesPage::keepWidths);
    changeView(ListView);
}

StoredFilesPage::~StoredFilesPage() = default;

QString StoredFilesPage::nameOf(const QString& ipncid) const {
    const DeviceRecord* const device = context_.devices.device(ipncid);
    return device == nullptr ? ipncid : device->displayName();
}

void StoredFilesPage::build() {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    form_ = new FileForm(this);
    column->addWidget(form_);
    column->addWidget(buildTop());
    column->addWidget(buildViews(), 1);
    column->addWidget(buildStatus());
    column->addWidget(new DriveBars(storage_, this));
    addActions();
}

QWidget* StoredFilesPage::buildTop() {
    auto* const bar = new QWidget(this);
    bar->setObjectName(QStringLiteral("fileBar"));
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(theme::Step, 0, theme::Step, 0);
    row->setSpacing(0);
    tabs_ = new QTabBar(bar);
    tabs_->setObjectName(QStringLiteral("fileTabs"));
    corvanta::wordedName(tabs_, [] { return tr("显示方式"); });
    tabs_->setDrawBase(false);
    tabs_->setExpanding(false);
    tabs_->setFocusPolicy(Qt::TabFocus);
    tabs_->addTab(QString());
    tabs_->addTab(QString());
    corvanta::worded(tabs_, [this] {
        tabs_->setTabText(0, tr("列表"));
        tabs_->setTabText(1, tr("时间轴"));
    });
    row->addWidget(tabs_);
    day_ = new DayBar(bar);
    row->addWidget(day_);
    row->addStretch(1);
    return bar;
}

QWidget* StoredFilesPage::buildViews() {
    stack_ = new QStackedWidget(this);
    const auto names = [this](const QString& id) {
        return nameOf(id);
    };
    table_ = new FileTableView(names, stack_);
    stack_->addWidget(table_);
    timeline_ = new TimelinePane(names, stack_);
    stack_->addWidget(timeline_);
    empty_ = new QLabel(stack_);
    empty_->setObjectName(QStringLiteral("filesEmpty"));
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);
    empty_->setProperty("role", QStringLiteral("faint"));
    stack_->addWidget(empty_);
    return stack_;
}

QWidget* StoredFilesPage::buildStatus() {
    auto* const bar = new QWidget(this);
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(2 * theme::Step, 0, 2 * theme::Step, 0);
    row->setSpacing(2 * theme::Step);
    info_ = new QLabel(bar);
    info_->setObjectName(QStringLiteral("filesInfo"));
    info_->setTextFormat(Qt::PlainText);
    info_->setMinimumWidth(1);
    info_->setProperty("role", QStringLiteral("faint"));
    row->addWidget(info_, 2);
    progress_ = new QProgressBar(bar);
    progress_->setObjectName(QStringLiteral("filesProgress"));
    corvanta::wordedName(progress_, [] { return tr("进度"); });
    progress_->setTextVisible(false);
    row->addWidget(progress_, 1);
    cancel_ = new QPushButton(bar);
    cancel_->setObjectName(QStringLiteral("filesCancel"));
    corvanta::wordedText(cancel_, [] { return tr("取消"); });
    corvanta::wordedName(cancel_, [] { return tr("取消"); });
    row->addWidget(cancel_);
    progress_->hide();
    cancel_->hide();
    return bar;
}

void StoredFilesPage::addActions() {
    const auto keys = [](std::initializer_list<const char*> list) {
        QList<QKeySequence> result;
        for (const char* const key : list)
            result += QKeySequence(QLatin1String(key), QKeySequence::PortableText);
        return result;
    };
    addAction(
        QStringLiteral("fileOpen"), [] { return tr("打开"); }, QStringLiteral("picture"), keys({"Return", "Enter"}),
        [this] { openCurrent(); });
    addAction(
        QStringLiteral("fileFolder"), [] { return tr("在文件夹中显示"); }, QStringLiteral("group"),
        keys({"Ctrl+Return"}), [this] { actions_->showInFolder(choice()); });
    addAction(
        QStringLiteral("fileCopy"), [] { return tr("复制路径"); }, QStringLiteral("copy"), keys({"Ctrl+C"}),
        [this] { actions_->copyPaths(choice()); });
    addAction(
        QStringLiteral("fileDelete"), [] { return tr("删除"); }, QStringLiteral("remove"), keys({"Del"}),
        [this] { actions_->remove(choice()); });
}

void StoredFilesPage::addAction(const QString& objectName, const corvanta::Text& text, const QString& drawing,
                                const QList<QKeySequence>& keys, const std::function<void()>& act) {
    auto* const action = new QAction(this);
    corvanta::wordedText(action, text);
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, act);
    stack_->addAction(action); // its keys belong to the files, not to the form
    fileActions_ += action;
    QWidget* const bar = findChild<QWidget*>(QStringLiteral("fileBar"));
    QToolButton* const button = corvanta::barButton(bar, objectName, text, drawing);
    corvanta::wordedTip(button, [text, key = keys.first()] {
        return QStringLiteral("%1 (%2)").arg(text(), key.toString(QKeySequence::NativeText));
    });
    bar->layout()->addWidget(button);
    connect(button, &QToolButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, button, [action, button] { button->setEnabled(action->isEnabled()); });
}

void StoredFilesPage::connectParts() {
    connect(form_, &FileForm::sigSearch, this, &StoredFilesPage::search);
    connect(form_, &FileForm::sigStop, this, &StoredFilesPage::stopSearch);
    connect(form_, &FileForm::sigChanged, this, &StoredFilesPage::onChoiceChanged);
    connect(tabs_, &QTabBar::currentChanged, this, &StoredFilesPage::changeView);
    connect(day_, &DayBar::sigDay, this, &StoredFilesPage::showDay);
    connect(table_, &QTableView::doubleClicked, this, &StoredFilesPage::openCurrent);
    connect(table_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& place) { openMenu(table_->viewport()->mapToGlobal(place)); });
    connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &StoredFilesPage::updateActions);
    connect(timeline_->strip().selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &StoredFilesPage::updateActions);
    connect(timeline_, &TimelinePane::sigOpen, this, &StoredFilesPage::openCurrent);
    connect(timeline_, &TimelinePane::sigMenu, this, &StoredFilesPage::openMenu);
    connect(actions_, &FileActions::sigPlay, this, &StoredFilesPage::sigPlay);
    // An event that has passed; it keeps the words of its moment.
    connect(actions_, &FileActions::sigMessage, this,
            [this](const QString& message) { setInfo([message] { return message; }); });
    connect(&corvanta::LanguageNotice::instance(), &corvanta::LanguageNotice::changed, this, [this] {
        sayInfo();
        if (emptyText_)
            empty_->setText(emptyText_());
        showDay(day_->day());
    });
    connect(actions_, &FileActions::sigDeletionStarted, this, [this] { setWorking(true); });
    connect(actions_, &FileActions::sigDeleted, this, &StoredFilesPage::onDeleted);
    connect(cancel_, &QPushButton::clicked, this, [this] {
        stopSearch();
        actions_->cancelDeletion();
    });
    connect(&context_.events, qOverload<>(&AppEvents::sig_updateList), this, &StoredFilesPage::setDevices);
    progressTimer_.setInterval(50);
    connect(&progressTimer_, &QTimer::timeout, this, &StoredFilesPage::follow);
    for (const auto& [key, days] : {std::pair("Ctrl+PgUp", -1), std::pair("Ctrl+PgDown", 1)}) {
        auto* const shortcut = new QShortcut(QKeySequence(QLatin1String(key), QKeySequence::PortableText), this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, step = days] {
            if (tabs_->currentIndex() == TimelineView)
                day_->addDays(step);
        });
    }
}

void StoredFilesPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    listDevices();
    // Who comes here wants to see something.
    if (!searchedOnce_)
        search();
}

void StoredFilesPage::listDevices() {
    setDevices();
    if (devicesThread_ != nullptr)
        return;
    devicesThread_ = new StoredDevicesThread(storage_.searchedDrives(), this);
    connect(devicesThread_, &BackgroundThread::finished, this, [this] {
        devicesThread_->join();
        storedDevices_ = devicesThread_->devices();
        devicesThread_->deleteLater();
        devicesThread_ = nullptr;
        setDevices();
    });
    devicesThread_->start();
}

void StoredFilesPage::setDevices() {
    QStringList ids = context_.devices.ipncIds();
    for (const QString& id : qAsConst(storedDevices_)) {
        if (context_.devices.device(id) == nullptr)
            ids += id;
    }
    form_->setDevices(ids, [this](const QString& id) { return nameOf(id); });
    table_->files().renameDevices();
}

void StoredFilesPage::search() {
    dropSearch();
    searchedOnce_ = true;
    stopped_ = false;
    search_ = new SearchDiskThread(storage_.searchedDrives(), form_->query(), this);
    connect(search_, &SearchDiskThread::sigResult, this, &StoredFilesPage::onSearchEnded);
    search_->start();
    form_->setSearching(true);
    setWorking(true);
}

void StoredFilesPage::stopSearch() {
    if (search_ == nullptr)
        return;
    stopped_ = true;
    search_->cancel();
}

void StoredFilesPage::dropSearch() {
    if (search_ == nullptr)
        return;
    // It may take a moment to end, and nobody waits for it.
    search_->cancel();
    search_->disconnect(this);
    connect(search_, &SearchDiskThread::sigResult, search_, &QObject::deleteLater);
    search_ = nullptr;
    form_->setSearching(false);
    setWorking(false);
}

void StoredFilesPage::onChoiceChanged() {
    if (search_ == nullptr)
        return;
    dropSearch();
    setInfo([] { return tr("查找条件已更改，请再次查找"); });
    if (files_->count() == 0)
        setEmpty([] { return tr("查找条件已更改。\n请点击“查找”。"); });
    emit sigResult();
}

void StoredFilesPage::onSearchEnded() {
    storage::FoundFiles found(search_->takeResult());
    search_->deleteLater();
    search_ = nullptr;
    form_->setSearching(false);
    showFiles(std::move(found));
    setWorking(false);
    setInfo([this] { return stopped_ ? tr("已取消，%1").arg(foundText()) : foundText(); });
    emit sigResult();
}

QString StoredFilesPage::foundText() const {
    return tr("共 %1 个文件，%2").arg(fileTexts::count(files_->count()), corvanta::sizeText(files_->bytes()));
}

void StoredFilesPage::showFiles(storage::FoundFiles files) {
    files_ = std::make_shared<const storage::FoundFiles>(std::move(files));
    table_->show(files_);
    const QDate last = files_->lastDay();
    if (last.isValid() && files_->day(day_->day()).empty())
        day_->setDay(last);
    showDay(day_->day());
    setEmpty([] { return tr("没有找到文件。\n请更改时间、设备或类别后再查找。"); });
    changeView(tabs_->currentIndex());
}

void StoredFilesPage::showDay(const QDate& day) {
    const int row = table_->currentIndex().row();
    timeline_->show(files_, day, row < 0 ? -1 : table_->files().fileOf(row));
    updateActions();
}

void StoredFilesPage::setWorking(bool working) {
    const bool deletes = actions_->deletion() != nullptr;
    progress_->setVisible(working);
    cancel_->setVisible(working);
    form_->setEnabled(!deletes);
    if (working) {
        progressTimer_.start();
        if (files_->count() == 0)
            setEmpty([] { return tr("正在查找..."); });
        follow();
    } else {
        progressTimer_.stop();
    }
    updateActions();
}

void StoredFilesPage::follow() {
    if (const FileDeletion* const deletion = actions_->deletion()) {
        progress_->setRange(0, std::max(deletion->total(), 1));
        progress_->setValue(deletion->done());
        setInfo([done = deletion->done(), total = deletion->total()] {
            return tr("正在删除 %1 / %2").arg(fileTexts::count(done), fileTexts::count(total));
        });
    } else if (search_ != nullptr) {
        const storage::SearchProgress& search = search_->progress();
        // Until all folders are known, the bar only says that something goes on.
        progress_->setRange(0, search.folders);
        progress_->setValue(search.foldersDone);
        setInfo([folders = search.folders.load(), done = search.foldersDone.load(), found = search.found.load()] {
            return tr("文件夹 %1 / %2，找到 %3 个文件")
                .arg(fileTexts::count(done), fileTexts::count(folders), fileTexts::count(found));
        });
    }
}

void StoredFilesPage::setInfo(corvanta::Text text) {
    infoText_ = std::move(text);
    sayInfo();
}

void StoredFilesPage::sayInfo() {
    const QString text = infoText_ ? infoText_() : QString();
    info_->setText(text);
    info_->setToolTip(text);
    info_->setAccessibleName(text);
}

void StoredFilesPage::setEmpty(corvanta::Text text) {
    emptyText_ = std::move(text);
    empty_->setText(emptyText_());
}

void StoredFilesPage::changeView(int view) {
    day_->setVisible(view == TimelineView);
    if (files_->count() == 0) {
        stack_->setCurrentWidget(empty_);
    } else if (view == TimelineView) {
        // The timeline goes to where the user is in the list.
        const int row = table_->currentIndex().row();
        if (row >= 0) {
            const int file = table_->files().fileOf(row);
            day_->setDay(files_->at(file).time.date());
            timeline_->setCurrentFile(file);
        }
        stack_->setCurrentWidget(timeline_);
    } else {
        stack_->setCurrentWidget(table_);
    }
    updateActions();
}

FileActions::Choice StoredFilesPage::choice() const {
    FileActions::Choice result{files_, {}, {}, -1};
    if (stack_->currentWidget() == timeline_) {
        result.current = timeline_->currentFile();
        result.selected = timeline_->selectedFiles();
        result.shown = timeline_->shownFiles();
    } else if (stack_->currentWidget() == table_) {
        result.selected = table_->selectedFiles();
        if (table_->currentIndex().isValid() && !result.selected.empty())
            result.current = table_->files().fileOf(table_->currentIndex().row());
        for (int row = 0; row < table_->files().rowCount(); ++row)
            result.shown.push_back(table_->files().fileOf(row));
    }
    return result;
}

void StoredFilesPage::updateActions() {
    const bool isTimeline = stack_->currentWidget() == timeline_;
    const bool isAny = isTimeline ? timeline_->strip().selectionModel()->hasSelection()
                                  : stack_->currentWidget() == table_ && table_->selectionModel()->hasSelection();
    for (QAction* const action : qAsConst(fileActions_))
        action->setEnabled(isAny && actions_->deletion() == nullptr);
}

void StoredFilesPage::openCurrent() {
    const int file = actions_->open(choice());
    if (file < 0)
        return;
    if (stack_->currentWidget() == timeline_)
        timeline_->setCurrentFile(file);
    else if (table_->currentIndex().row() >= 0 && table_->files().fileOf(table_->currentIndex().row()) != file)
        table_->setCurrentIndex(table_->files().index(table_->files().rowOf(file), 0));
}

void StoredFilesPage::openMenu(const QPoint& position) {
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("fileMenu"));
    menu.addActions(fileActions_);
    menu.exec(position);
}

void StoredFilesPage::onDeleted(const QSet<QString>& paths) {
    std::vector<int> gone;
    for (int file = 0; file < files_->count(); ++file) {
        if (paths.contains(files_->at(file).path))
            gone.push_back(file);
    }
    if (!gone.empty())
        showFiles(files_->without(gone));
    setWorking(isSearching());
    form_->setSearching(isSearching());
}

void StoredFilesPage::keepWidths() {
    QVariantList list;
    for (const int width : table_->columnWidths())
        list += width;
    context_.settings.set(widthsKey(), list);
}
