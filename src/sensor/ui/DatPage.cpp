#include "sensor/ui/DatPage.h"

#include "base/DeviceModel.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"
#include "sensor/ui/ChartTile.h"
#include "storage/RecordingStorage.h"

#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace corvanta::sensor {
namespace {
constexpr int PathRole = Qt::UserRole + 1;
} // namespace

DatPage::DatPage(const AppContext& context, RecordingStorage& storage, QWidget* parent)
    : QWidget(parent)
    , context_(context)
    , storage_(storage) {
    setObjectName(QStringLiteral("datPage"));
    corvanta::wordedName(this, [] { return tr("报警数据"); });
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const splitter = new QSplitter(this);
    splitter->setChildrenCollapsible(false);
    list_ = new QTreeWidget(splitter);
    list_->setObjectName(QStringLiteral("datList"));
    corvanta::wordedName(list_, [] { return tr("报警数据文件"); });
    worded(list_, [this] { list_->setHeaderLabels({tr("时间"), tr("设备"), tr("文件")}); });
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setMinimumWidth(120);            // px
    list_->header()->resizeSection(0, 168); // px
    list_->header()->resizeSection(1, 100); // px
    auto* const right = new QWidget(splitter);
    auto* const rightColumn = new QVBoxLayout(right);
    rightColumn->setContentsMargins(0, 0, 0, 0);
    hint_ = new QLabel(right);
    hint_->setObjectName(QStringLiteral("datHint"));
    hint_->setAlignment(Qt::AlignCenter);
    hint_->setWordWrap(true);
    hint_->setTextFormat(Qt::PlainText);
    hint_->setProperty("role", QStringLiteral("faint"));
    chart_ = new ChartTile(-1, context_.inputFields, right);
    chart_->setObjectName(QStringLiteral("datChart"));
    corvanta::wordedName(chart_, [] { return tr("报警数据图表"); });
    chart_->hide();
    rightColumn->addWidget(hint_, 1);
    rightColumn->addWidget(chart_, 1);
    splitter->setSizes({340, 600});
    column->addWidget(splitter);
    connect(list_, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
        if (item != nullptr)
            showFile(item->data(0, PathRole).toString());
    });
    connect(chart_, &ChartTile::sigThresholds, this, &DatPage::sigThresholds);
    connect(&LanguageNotice::instance(), &LanguageNotice::changed, this, [this] {
        if (isVisible())
            refresh();
    });
}

void DatPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh();
}

void DatPage::refresh() {
    const QTreeWidgetItem* const current = list_->currentItem();
    const QString chosen = current == nullptr ? QString() : current->data(0, PathRole).toString();
    const QVector<StoredDat> files = storedDats(storage_.searchedDrives());
    list_->clear();
    for (const StoredDat& file : files) {
        const DeviceRecord* const device = context_.devices.device(file.ipncId);
        auto* const item =
            new QTreeWidgetItem(list_, {file.time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")),
                                        device == nullptr ? file.ipncId : device->displayName(), file.name});
        item->setData(0, PathRole, file.path);
    }
    hint_->setText(files.isEmpty() ? tr("没有报警数据。发生阈值报警时，设备会保存报警前后的数据。")
                                   : tr("请在列表中选择一个文件"));
    open(chosen);
}

void DatPage::open(const QString& path) {
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
        QTreeWidgetItem* const item = list_->topLevelItem(row);
        if (item->data(0, PathRole).toString() == path)
            list_->setCurrentItem(item);
    }
}

void DatPage::showFile(const QString& path) {
    QFile file(path);
    const auto samples = file.open(QIODevice::ReadOnly) ? readDatFile(file) : std::nullopt;
    chart_->setVisible(samples.has_value());
    hint_->setVisible(!samples);
    if (!samples) {
        hint_->setText(tr("该文件不是报警数据，或无法读取。"));
        return;
    }
    QVector<InputRecord> shown;
    for (auto one = samples->begin(); one != samples->end(); ++one) {
        const auto known = std::find_if(inputs_.begin(), inputs_.end(),
                                        [&one](const InputRecord& input) { return input.pid == one.key(); });
        InputRecord input;
        input.pid = one.key();
        input.name = tr("采集输入 %1").arg(one.key());
        shown += known == inputs_.end() ? input : *known;
    }
    chart_->showFixed(shown, *samples);
}

} // namespace corvanta::sensor
