#include "logs/ui/Check_Log_Widget.h"

#include "base/AppPaths.h"
#include "base/Settings.h"
#include "base/ui/BarButton.h"
#include "base/ui/FileChooser.h"
#include "base/ui/PageBar.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"
#include "base/ui/Worded.h"
#include "database/SqlHelp.h"
#include "logs/LogKinds.h"
#include "logs/ui/ExportDialog.h"
#include "logs/ui/ExportProgress.h"
#include "logs/ui/LogTableView.h"
#include "logs/ui/serchFormLog.h"

#include <QCursor>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace logs = corvanta::logs;
namespace theme = corvanta::theme;

namespace {

/// Where the settings keep the tables' column widths: lists of px, by log type.
QString widthsKey() {
    return QStringLiteral("日志列宽");
}

QString counted(int rows) {
    return QLocale(QLocale::English).toString(rows); // thousands parted by commas
}

} // namespace

Check_Log_Widget::Check_Log_Widget(const AppContext& context, QWidget* parent)
    : QWidget(parent)
    , context_(context) {
    setObjectName(QStringLiteral("logPage"));
    corvanta::wordedName(this, [] { return tr("日志"); });
    setProperty("page", QStringLiteral("dark"));
    setAttribute(Qt::WA_StyledBackground);
    build();
    connectParts();
}

Check_Log_Widget::~Check_Log_Widget() = default;

void Check_Log_Widget::build() {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* const top = new QHBoxLayout;
    top->setContentsMargins(theme::Step, 0, theme::Step, 0);
    tabs_ = new QTabBar(this);
    tabs_->setObjectName(QStringLiteral("logTabs"));
    corvanta::wordedName(tabs_, [] { return tr("日志类型"); });
    tabs_->setDrawBase(false);
    tabs_->setExpanding(false);
    tabs_->setFocusPolicy(Qt::TabFocus);
    for (int type = 0; type < static_cast<int>(logs::kinds().size()); ++type)
        tabs_->addTab(QString());
    corvanta::worded(tabs_, [this] {
        for (int type = 0; type < tabs_->count(); ++type)
            tabs_->setTabText(type, logs::tabText(type));
    });
    top->addWidget(tabs_, 1);
    QToolButton* const menu = corvanta::barButton(
        this, QStringLiteral("logMenu"), [] { return tr("显示与导出"); }, QStringLiteral("more"));
    connect(menu, &QToolButton::clicked, this, &Check_Log_Widget::onOutMenu);
    top->addWidget(menu);
    column->addLayout(top);
    form_ = new serchFormLog(this);
    column->addWidget(form_);
    stack_ = new QStackedWidget(this);
    table_ = new LogTableView(stack_);
    table_->setContextMenuPolicy(Qt::CustomContextMenu);
    stack_->addWidget(table_);
    empty_ = new QLabel(stack_);
    empty_->setObjectName(QStringLiteral("logEmpty"));
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);
    empty_->setProperty("role", QStringLiteral("faint"));
    stack_->addWidget(empty_);
    column->addWidget(stack_, 1);
    pages_ = new PageBar(this);
    pages_->setExportEnabled(false);
    column->addWidget(pages_);
}

void Check_Log_Widget::connectParts() {
    connect(tabs_, &QTabBar::currentChanged, this, [this](int type) {
        setSearchComboxIndex(type);
        onSerchForm();
    });
    connect(this, &Check_Log_Widget::sig_setTabPage, this, &Check_Log_Widget::setTabPage);
    connect(form_, &serchFormLog::sig_clicked, this, &Check_Log_Widget::onSerchForm);
    connect(form_, &serchFormLog::sig_stop, &loader_, &LogLoader::stop);
    connect(pages_, &PageBar::sigPage, this, &Check_Log_Widget::onPageForm);
    connect(table_, &LogTableView::sigPageChanged, pages_, &PageBar::setPage);
    connect(table_, &QWidget::customContextMenuRequested, this, &Check_Log_Widget::onOutMenu);
    connect(table_->horizontalHeader(), &QHeaderView::sectionResized, this, &Check_Log_Widget::keepWidths);
    connect(&loader_, &LogLoader::sigProgress, this,
            [this](int rows) { pages_->setInfo(tr("正在读取 %1 条...").arg(counted(rows))); });
    connect(&loader_, &LogLoader::sigFinished, this, &Check_Log_Widget::showRows);
    // What was found has its header with it, for exports, too.
    connect(&corvanta::LanguageNotice::instance(), &corvanta::LanguageNotice::changed, this, [this] {
        if (searchedOnce_)
            onSerchForm();
    });
}

void Check_Log_Widget::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Who comes here wants to see something.
    if (!searchedOnce_)
        onSerchForm();
}

int Check_Log_Widget::currentType() const {
    return tabs_->currentIndex();
}

void Check_Log_Widget::onSerchForm() {
    searchedOnce_ = true;
    const QVariantMap asked = form_->parameters();
    const int type = asked.value(QStringLiteral("type")).toInt();
    emit sig_setTabPage(type);
    // The old rows go first: a million of them are much, twice that is too much.
    table_->setTable(nullptr, pages_->pageRows());
    pages_->setExportEnabled(false);
    form_->setSearching(true);
    empty_->setText(tr("正在读取..."));
    stack_->setCurrentWidget(empty_);
    loader_.start(context_.database.startLogQuery(type, asked.value(QStringLiteral("start")).toDateTime(),
                                                  asked.value(QStringLiteral("end")).toDateTime(),
                                                  asked.value(QStringLiteral("allTime")).toBool(), -1, -1));
}

void Check_Log_Widget::showRows(bool complete) {
    form_->setSearching(false);
    auto table = std::make_shared<logs::Table>(logs::Table{logs::columnTexts(currentType()), loader_.takeRows()});
    const int rows = table->rows.rowCount();
    settingWidths_ = true;
    table_->setTable(std::move(table), pages_->pageRows());
    applyWidths();
    settingWidths_ = false;
    empty_->setText(emptyText());
    stack_->setCurrentIndex(rows > 0 ? 0 : 1);
    pages_->setExportEnabled(true);
    pages_->setInfo(complete ? tr("共 %1 条").arg(counted(rows)) : tr("已停止，显示前 %1 条").arg(counted(rows)));
    emit sigResult();
}

QString Check_Log_Widget::emptyText() const {
    const bool isRangeOfAlarms =
        currentType() == SqlHelp::FireLog && !form_->parameters().value(QStringLiteral("allTime")).toBool();
    return isRangeOfAlarms ? tr("没有符合条件的记录。\n报警日志请选择“全部时间”后查询。")
                           : tr("没有符合条件的记录。\n请更改查询条件后再查询。");
}

void Check_Log_Widget::onPageForm(const QString& event, const QVariant& value) {
    if (event == QLatin1String("pageRowCount"))
        table_->setPageRows(value.toInt());
    else if (event == QLatin1String("setPageRow"))
        table_->showPage(value.toInt());
    else if (event == QLatin1String("toFirstPage"))
        table_->showFirst();
    else if (event == QLatin1String("prePage"))
        table_->showPrevious();
    else if (event == QLatin1String("nextPage"))
        table_->showNext();
    else if (event == QLatin1String("tolastPage"))
        table_->showLast();
    else if (event == QLatin1String("export"))
        onOutportMenu();
}

void Check_Log_Widget::setTabPage(int type) {
    const QSignalBlocker quiet(tabs_); // the search that this belongs to is under way
    tabs_->setCurrentIndex(type);
}

void Check_Log_Widget::setSearchComboxIndex(int type) {
    form_->setType(type);
}

void Check_Log_Widget::onDefaultLayout() {
    QVariantMap widths = context_.settings.get(widthsKey()).toMap();
    widths.remove(QString::number(currentType()));
    context_.settings.set(widthsKey(), widths);
    onMenuCheck1(true);
    onMenuCheck2(true);
    onMenuCheck3(true);
    pages_->setPageRows(PageBar::DefaultPageRows);
    settingWidths_ = true;
    applyWidths();
    settingWidths_ = false;
}

void Check_Log_Widget::onOutMenu() {
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("logMenuPopup"));
    const auto addCheck = [this, &menu](const QString& text, bool checked, void (Check_Log_Widget::*slot)(bool)) {
        QAction* const action = menu.addAction(text);
        action->setCheckable(true);
        action->setChecked(checked);
        connect(action, &QAction::toggled, this, slot);
    };
    addCheck(tr("查询条件"), !form_->isHidden(), &Check_Log_Widget::onMenuCheck1);
    addCheck(tr("分页栏"), !pages_->isHidden(), &Check_Log_Widget::onMenuCheck2);
    addCheck(tr("编号列"), idsShown_, &Check_Log_Widget::onMenuCheck3);
    menu.addAction(tr("恢复默认布局"), this, &Check_Log_Widget::onDefaultLayout);
    menu.addSeparator();
    QAction* const outport = menu.addAction(tr("导出"));
    outport->setEnabled(table_->table() != nullptr);
    // By keyboard the mouse may be anywhere.
    const QPoint mouse = QCursor::pos();
    const bool isInside = rect().contains(mapFromGlobal(mouse));
    // The export runs an event loop of its own, and not inside the menu's.
    if (menu.exec(isInside ? mouse : mapToGlobal(QPoint(width() / 2, 0))) == outport)
        onOutportMenu();
}

void Check_Log_Widget::onMenuCheck1(bool shown) {
    form_->setVisible(shown);
    emit sigVisible(shown);
}

void Check_Log_Widget::onMenuCheck2(bool shown) {
    pages_->setVisible(shown);
}

void Check_Log_Widget::onMenuCheck3(bool shown) {
    idsShown_ = shown;
    table_->setColumnHidden(0, !shown);
}

void Check_Log_Widget::applyWidths() {
    table_->setDefaultWidths();
    const QVariantList kept =
        context_.settings.get(widthsKey()).toMap().value(QString::number(currentType())).toList();
    QList<int> widths;
    for (const QVariant& width : kept)
        widths += width.toInt();
    table_->setColumnWidths(widths);
    table_->setColumnHidden(0, !idsShown_);
}

void Check_Log_Widget::keepWidths() {
    if (settingWidths_ || table_->table() == nullptr)
        return;
    QVariantList list;
    const QList<int> widths = table_->columnWidths();
    for (int column = 0; column + 1 < widths.size(); ++column) // the last one fills what is left
        list += widths[column];
    QVariantMap all = context_.settings.get(widthsKey()).toMap();
    all.insert(QString::number(currentType()), list);
    context_.settings.set(widthsKey(), all);
}

void Check_Log_Widget::onOutportMenu() {
    if (table_->table() == nullptr) // a search is under way
        return;
    const QString format = ExportDialog::ask(this);
    if (!format.isEmpty())
        exportAs(format);
}

void Check_Log_Widget::exportAs(const QString& format) {
    const auto kind = format == QLatin1String("txt") ? LogExport::Format::Text : LogExport::Format::Workbook;
    const QString proposed = logs::tabText(currentType()) + QLatin1Char('.') + format;
    const QString chosen = chooseSaveFile(this, QStringLiteral("Open File"), context_.paths.root(), proposed,
                                          QStringLiteral("excel (*.%1)").arg(format));
    if (chosen.isEmpty())
        return;
    const QString file = LogExport::withSuffix(chosen, kind);
    if (QFileInfo::exists(file) &&
        !TipDialog::ask(tr("提示"), tr("文件“%1”已存在，是否替换?").arg(QFileInfo(file).fileName()), true, this))
        return;
    LogExport job(table_->table(), kind, file);
    const LogExport::State state = ExportProgress::waitFor(job, this);
    if (state != LogExport::State::Cancelled)
        TipDialog(tr("提示"), state == LogExport::State::Done ? tr("导出成功!") : tr("导出失败!"), this).exec();
}
