#include "sensor/ui/SensorPage.h"

#include "base/DeviceModel.h"
#include "base/Settings.h"
#include "base/ui/BarButton.h"
#include "base/ui/FaintHint.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

namespace corvanta::sensor {
namespace {

/// Where the settings keep the widths of the columns, px.
QString widthsKey() {
    return QStringLiteral("数据列宽");
}

QComboBox* makeChoice(QWidget* parent, const QString& objectName, Text name) {
    auto* const choice = new QComboBox(parent);
    choice->setObjectName(objectName);
    wordedName(choice, std::move(name));
    choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    choice->setMinimumContentsLength(8);
    return choice;
}

/// Fills a choice anew and keeps what was chosen, where that is still offered.
void refill(QComboBox& choice, const QString& all, const QVector<QPair<QString, QString>>& entries) {
    const QSignalBlocker blocker(&choice);
    const QString chosen = choice.currentData().toString();
    choice.clear();
    choice.addItem(all, QString());
    for (const auto& [id, name] : entries)
        choice.addItem(name, id);
    choice.setCurrentIndex(qMax(0, choice.findData(chosen)));
}

} // namespace

SensorPage::SensorPage(const AppContext& context, QWidget* parent)
    : QWidget(parent)
    , context_(context)
    , model_(context.inputFields)
    , filter_(model_) {
    setObjectName(QStringLiteral("sensorPage"));
    corvanta::wordedName(this, [] { return tr("数据"); });
    setProperty("page", QStringLiteral("dark"));
    setAttribute(Qt::WA_StyledBackground);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeBar());
    stack_ = new QStackedWidget(this);
    makeTable();
    stack_->addWidget(table_);
    auto* const empty = new QLabel(this);
    wordedText(empty, [] { return tr("没有采集输入。\n登录后，在设备树中右击设备，选择“传感器设置”添加传感器。"); });
    empty->setObjectName(QStringLiteral("sensorEmpty"));
    empty->setAlignment(Qt::AlignCenter);
    empty->setWordWrap(true);
    empty->setProperty("role", QStringLiteral("faint"));
    stack_->addWidget(empty);
    column->addWidget(stack_, 1);
    setInputs({});
    connect(&LanguageNotice::instance(), &LanguageNotice::changed, this, [this] {
        fillChoices();
        filter();
        table_->horizontalHeader()->viewport()->update();
        table_->viewport()->update();
    });
}

SensorPage::~SensorPage() = default;

QWidget* SensorPage::makeBar() {
    auto* const bar = new QWidget(this);
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(2 * theme::Step, theme::Step, theme::Step, theme::Step);
    row->setSpacing(2 * theme::Step);
    group_ = makeChoice(bar, QStringLiteral("sensorGroup"), [] { return tr("所属分组"); });
    device_ = makeChoice(bar, QStringLiteral("sensorDevice"), [] { return tr("设备"); });
    search_ = new QLineEdit(bar);
    search_->setObjectName(QStringLiteral("sensorSearch"));
    corvanta::wordedName(search_, [] { return tr("搜索采集输入"); });
    corvanta::wordedHint(search_, [] { return tr("搜索"); });
    search_->setClearButtonEnabled(true);
    faintHint(*search_);
    count_ = new QLabel(bar);
    count_->setObjectName(QStringLiteral("sensorCount"));
    count_->setProperty("role", QStringLiteral("faint"));
    QToolButton* const report = barButton(
        bar, QStringLiteral("sensorReport"), [] { return tr("数据报表"); }, QStringLiteral("export"));
    row->addWidget(group_);
    row->addWidget(device_);
    row->addWidget(search_, 1);
    row->addWidget(count_);
    row->addWidget(report);
    connect(group_, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] {
        fillChoices();
        filter();
    });
    connect(device_, qOverload<int>(&QComboBox::currentIndexChanged), this, &SensorPage::filter);
    connect(search_, &QLineEdit::textChanged, this, &SensorPage::filter);
    connect(report, &QToolButton::clicked, this, [this] { emit sigReport(selected()); });
    return bar;
}

void SensorPage::makeTable() {
    table_ = new QTableView(stack_);
    table_->setObjectName(QStringLiteral("sensorTable"));
    corvanta::wordedName(table_, [] { return tr("采集输入列表"); });
    table_->setModel(&filter_);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setAlternatingRowColors(true);
    table_->setShowGrid(false);
    table_->setWordWrap(false);
    table_->setTabKeyNavigation(false);
    table_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table_->setContextMenuPolicy(Qt::CustomContextMenu);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->verticalHeader()->setDefaultSectionSize(theme::ControlHeight);
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->horizontalHeader()->setHighlightSections(false);
    table_->horizontalHeader()->setMinimumSectionSize(48);
    table_->horizontalHeader()->setSortIndicator(SensorTableModel::Number, Qt::AscendingOrder);
    table_->setSortingEnabled(true);
    restoreWidths();
    connect(table_->horizontalHeader(), &QHeaderView::sectionResized, this, &SensorPage::keepWidths);
    connect(table_, &QWidget::customContextMenuRequested, this, &SensorPage::showMenu);
    connect(table_, &QAbstractItemView::activated, this, [this] { emit sigChart(selected()); });
}

void SensorPage::setInputs(const QVector<InputRecord>& inputs) {
    model_.setInputs(inputs);
    fillChoices();
    filter();
    stack_->setCurrentIndex(inputs.isEmpty() ? 1 : 0);
}

void SensorPage::fillChoices() {
    QVector<QPair<QString, QString>> groups;
    QVector<QPair<QString, QString>> devices;
    const QString group = group_->currentData().toString();
    for (const InputRecord& input : model_.inputs()) {
        const QPair<QString, QString> ofGroup{input.groupId, input.group};
        const QPair<QString, QString> ofDevice{input.ipncId, input.device};
        if (!input.groupId.isEmpty() && !groups.contains(ofGroup))
            groups += ofGroup;
        // Inputs of a device follow one another.
        if ((group.isEmpty() || group == input.groupId) && (devices.isEmpty() || devices.constLast() != ofDevice))
            devices += ofDevice;
    }
    refill(*group_, tr("全部分组"), groups);
    refill(*device_, tr("全部设备"), devices);
}

void SensorPage::filter() {
    filter_.setFilter(group_->currentData().toString(), device_->currentData().toString(), search_->text().trimmed());
    const int all = model_.rowCount();
    const int shown = filter_.rowCount();
    count_->setText(shown == all ? tr("共 %1 个").arg(all) : tr("%1 / %2 个").arg(shown).arg(all));
}

QVector<int> SensorPage::selected() const {
    QVector<int> inputs;
    const QModelIndexList rows = table_->selectionModel()->selectedRows();
    for (const QModelIndex& row : rows)
        inputs += row.data(SensorTableModel::PidRole).toInt();
    return inputs;
}

void SensorPage::showMenu(const QPoint& place) {
    const QVector<int> inputs = selected();
    const InputRecord* const current = model_.input(filter_.mapToSource(table_->currentIndex()).row());
    if (inputs.isEmpty() || current == nullptr)
        return;
    const InputRecord input = *current; // the lists may change while the menu is open
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("sensorMenu"));
    menu.setAccessibleName(tr("采集输入菜单"));
    const auto add = [&menu](const char* name, const QString& text, auto&& chosen) {
        QAction* const action = menu.addAction(text);
        action->setObjectName(QLatin1String(name));
        QObject::connect(action, &QAction::triggered, &menu, std::forward<decltype(chosen)>(chosen));
    };
    add("sensorChart", tr("显示图表"), [this, inputs] { emit sigChart(inputs); });
    add("sensorRead", tr("立即读取"), [this, inputs] { emit sigRead(inputs); });
    add("sensorExport", tr("数据报表"), [this, inputs] { emit sigReport(inputs); });
    menu.addSeparator();
    add("sensorSettings", tr("传感器设置"), [this, input] { emit sigSettings(input.ipncId, input.sensorPid); });
    add("sensorThresholds", tr("阈值设置"), [this, input] { emit sigThresholds(input.pid); });
    menu.exec(table_->viewport()->mapToGlobal(place));
}

void SensorPage::restoreWidths() {
    static constexpr int defaults[] = {56, 100, 140, 120, 120, 88, 72, 60, 176, 176}; // px
    const QVariantList kept = context_.settings.get(widthsKey()).toList();
    for (int column = 0; column < SensorTableModel::ColumnCount; ++column) {
        const int width = kept.value(column).toInt();
        table_->setColumnWidth(column, width >= 24 && width <= 2000 ? width : defaults[column]);
    }
}

void SensorPage::keepWidths() {
    QVariantList widths;
    for (int column = 0; column < SensorTableModel::ColumnCount; ++column)
        widths += table_->columnWidth(column);
    context_.settings.set(widthsKey(), widths);
}

} // namespace corvanta::sensor
