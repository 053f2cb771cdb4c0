#include "sensor/ui/ChartPage.h"

#include "base/Settings.h"
#include "base/ui/BarButton.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"
#include "base/ui/Worded.h"
#include "database/SqlHelp.h"
#include "sensor/ChartSetup.h"
#include "sensor/ui/ChartTile.h"
#include "sensor/ui/DatPage.h"
#include "sensor/ui/InputPicker.h"

#include <QDateTime>
#include <QDebug>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace corvanta::sensor {
namespace {
constexpr std::size_t MostMarks = 1000;
} // namespace

ChartPage::ChartPage(const AppContext& context, RecordingStorage& storage, QWidget* parent)
    : QWidget(parent)
    , context_(context)
    , chosen_(chartInputs(context.settings.get(keys::ChartInputs)))
    , tiles_(MostTiles, nullptr) {
    setObjectName(QStringLiteral("chartPage"));
    corvanta::wordedName(this, [] { return tr("图表"); });
    setProperty("page", QStringLiteral("dark"));
    setAttribute(Qt::WA_StyledBackground);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeBar());
    stack_ = new QStackedWidget(this);
    wall_ = new QWidget(stack_);
    grid_ = new QGridLayout(wall_);
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setSpacing(theme::Step);
    stack_->addWidget(wall_);
    dats_ = new DatPage(context_, storage, stack_);
    stack_->addWidget(dats_);
    column->addWidget(stack_, 1);
    connect(dats_, &DatPage::sigThresholds, this, &ChartPage::sigThresholds);
    showLayout(chartLayout(context_.settings.get(keys::ChartZoom)));
}

ChartPage::~ChartPage() = default;

QWidget* ChartPage::makeBar() {
    auto* const bar = new QWidget(this);
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(2 * theme::Step, 0, theme::Step, 0);
    row->setSpacing(theme::Step);
    for (int i = 0; i < static_cast<int>(ChartLayouts.size()); ++i) {
        const int tiles = ChartLayouts[static_cast<std::size_t>(i)].tiles();
        QToolButton* const button = barButton(
            bar, QStringLiteral("chartLayout%1").arg(tiles), [tiles] { return tr("%1 个图表").arg(tiles); },
            QStringLiteral("%1_pic").arg(tiles));
        button->setCheckable(true);
        connect(button, &QToolButton::clicked, this, [this, i] {
            showLayout(i);
            context_.settings.set(keys::ChartZoom, i);
            context_.settings.save();
        });
        layoutButtons_ += button;
        row->addWidget(button);
    }
    row->addStretch(1);
    datButton_ = barButton(
        bar, QStringLiteral("chartDats"), [] { return tr("报警数据"); }, QStringLiteral("alarm"));
    datButton_->setCheckable(true);
    connect(datButton_, &QToolButton::clicked, this,
            [this](bool on) { stack_->setCurrentWidget(on ? static_cast<QWidget*>(dats_) : wall_); });
    row->addWidget(datButton_);
    QToolButton* const report = barButton(
        bar, QStringLiteral("chartReport"), [] { return tr("数据报表"); }, QStringLiteral("export"));
    connect(report, &QToolButton::clicked, this, [this] {
        QVector<int> shown;
        for (int i = 0; i < ChartLayouts[static_cast<std::size_t>(layout_)].tiles(); ++i)
            shown += chosen_[i];
        emit sigReport(shown);
    });
    row->addWidget(report);
    return bar;
}

ChartTile* ChartPage::makeTile(int number) {
    auto* const tile = new ChartTile(number, context_.inputFields, wall_);
    connect(tile, &ChartTile::sigQuery, this, &ChartPage::sigQuery);
    connect(tile, &ChartTile::sigAdd, this, [this](int to) { pick(to, {}); });
    connect(tile, &ChartTile::sigDevice, this, &ChartPage::dropDevice);
    connect(tile, &ChartTile::sigThresholds, this, &ChartPage::sigThresholds);
    connect(tile, &ChartTile::sigClear, this, [this](int from) { choose(from, {}); });
    connect(tile, &ChartTile::sigRemove, this, [this](int from, int input) {
        QVector<int> left = chosen_[from];
        left.removeAll(input);
        choose(from, left);
    });
    tile->setMarks(marks_);
    return tile;
}

void ChartPage::showLayout(int layout) {
    layout_ = layout;
    const ChartLayout shape = ChartLayouts[static_cast<std::size_t>(layout)];
    for (int i = 0; i < MostTiles; ++i) {
        if (i >= shape.tiles()) {
            hideTile(i);
            continue;
        }
        const bool isNew = tiles_[i] == nullptr;
        if (isNew)
            tiles_[i] = makeTile(i);
        grid_->addWidget(tiles_[i], i / shape.columns, i % shape.columns);
        tiles_[i]->show();
        if (isNew) {
            applyInputs(i);
            tiles_[i]->restoreSamples(fromCacheText(context_.database.getInputData(i)));
        }
    }
    for (int i = 0; i < grid_->rowCount(); ++i)
        grid_->setRowStretch(i, i < shape.rows ? 1 : 0);
    for (int i = 0; i < grid_->columnCount(); ++i)
        grid_->setColumnStretch(i, i < shape.columns ? 1 : 0);
    for (int i = 0; i < layoutButtons_.size(); ++i)
        layoutButtons_[i]->setChecked(i == layout);
    datButton_->setChecked(false);
    stack_->setCurrentWidget(wall_);
}

void ChartPage::hideTile(int number) {
    ChartTile* const tile = tiles_[number];
    if (tile == nullptr)
        return;
    const QMap<int, Samples> kept = tile->keptSamples();
    // The first row of a tile is the one that is read, so there is no second.
    if (!kept.isEmpty() && context_.database.getInputData(number).isEmpty())
        context_.database.addInputData(number, toCacheText(kept));
    tiles_[number] = nullptr;
    tile->hide();
    tile->deleteLater();
}

void ChartPage::setInputs(const QVector<InputRecord>& inputs) {
    inputs_ = inputs;
    dats_->setInputs(inputs);
    for (int i = 0; i < MostTiles; ++i)
        applyInputs(i);
}

void ChartPage::applyInputs(int number) {
    if (tiles_[number] == nullptr)
        return;
    QVector<InputRecord> shown;
    for (const int pid : qAsConst(chosen_[number])) {
        const auto input =
            std::find_if(inputs_.begin(), inputs_.end(), [pid](const InputRecord& one) { return one.pid == pid; });
        if (input != inputs_.end()) // what is not there now may be when the next list comes
            shown += *input;
    }
    tiles_[number]->setInputs(shown);
}

void ChartPage::choose(int number, const QVector<int>& inputs) {
    chosen_[number] = inputs.mid(0, MostInputsOfAChart);
    keepSetting();
    applyInputs(number);
}

void ChartPage::keepSetting() {
    context_.settings.set(keys::ChartInputs, toSetting(chosen_));
    context_.settings.save();
}

void ChartPage::pick(int number, const QString& ipncId) {
    InputPicker picker(inputs_, {chosen_[number], MostInputsOfAChart, ipncId}, this);
    if (picker.exec() == QDialog::Accepted)
        choose(number, picker.chosen());
}

void ChartPage::dropDevice(int number, const QString& ipncId) {
    QVector<int> all = chosen_[number];
    bool hasAny = false;
    for (const InputRecord& input : qAsConst(inputs_)) {
        if (input.ipncId != ipncId)
            continue;
        hasAny = true;
        if (!all.contains(input.pid))
            all += input.pid;
    }
    if (!hasAny)
        TipDialog::tell(tr("提示"), tr("该设备没有采集输入!"), this);
    else if (all.size() <= MostInputsOfAChart)
        choose(number, all);
    else // not from inside the drag
        QMetaObject::invokeMethod(
            this, [this, number, ipncId] { pick(number, ipncId); }, Qt::QueuedConnection);
}

void ChartPage::showInputs(const QVector<int>& inputs) {
    int number = 0;
    const int tiles = ChartLayouts[static_cast<std::size_t>(layout_)].tiles();
    while (number < tiles && !chosen_[number].isEmpty())
        ++number;
    datButton_->setChecked(false);
    stack_->setCurrentWidget(wall_);
    choose(number < tiles ? number : 0, inputs);
}

void ChartPage::showDat(const QString& path) {
    datButton_->setChecked(true);
    stack_->setCurrentWidget(dats_);
    dats_->refresh();
    dats_->open(path);
}

void ChartPage::refreshDats() {
    if (dats_->isVisible())
        dats_->refresh();
}

void ChartPage::refresh(const QVector<int>& inputs) {
    for (ChartTile* const tile : qAsConst(tiles_)) {
        if (tile != nullptr)
            tile->refresh(inputs);
    }
}

void ChartPage::UpdateSensorInputData(const QString& key, const QVariantList& records) {
    const Samples samples = readSamples(records);
    for (ChartTile* const tile : qAsConst(tiles_)) {
        if (tile != nullptr)
            tile->takeRecords(key, samples);
    }
}

void ChartPage::onQueryFailed(const QString& key) {
    for (ChartTile* const tile : qAsConst(tiles_)) {
        if (tile != nullptr)
            tile->takeFailure(key);
    }
}

void ChartPage::onAlarm(const QVariantMap& message) {
    const QVariantMap alarm = message.value(QStringLiteral("alarm")).toMap();
    const QVariantMap trigger = alarm.value(QStringLiteral("trigger")).toMap();
    const QDateTime time = QDateTime::fromString(alarm.value(QStringLiteral("datetime")).toString(),
                                                 QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    const int pid = trigger.value(QStringLiteral("input")).toInt();
    if (pid <= 0 || !time.isValid())
        return; // about no input
    marks_.push_back({static_cast<double>(time.toSecsSinceEpoch()), pid,
                      trigger.value(QStringLiteral("threshold")).toInt(),
                      tr("报警: %1 %2")
                          .arg(trigger.value(QStringLiteral("name")).toString(),
                               trigger.value(QStringLiteral("value")).toString())});
    if (marks_.size() > MostMarks)
        marks_.erase(marks_.begin());
    for (ChartTile* const tile : qAsConst(tiles_)) {
        if (tile != nullptr)
            tile->setMarks(marks_);
    }
}

} // namespace corvanta::sensor
