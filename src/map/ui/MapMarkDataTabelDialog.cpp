#include "map/ui/MapMarkDataTabelDialog.h"

#include "base/AppEvents.h"
#include "base/InputFields.h"
#include "base/ui/Worded.h"
#include "map/SensorIndex.h"
#include "map/ui/MapTables.h"

#include <QDateTime>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <utility>

namespace corvanta::map {
namespace {
enum Column { NumberColumn, SensorColumn, InputColumn, ValueColumn, UnitColumn, StateColumn, TimeColumn };
constexpr int Beat = 200;    // ms
const QSize Usual(760, 320); // px
} // namespace

MapMarkDataTabelDialog::MapMarkDataTabelDialog(const AppContext& context, const MapMarker& marker, QWidget* parent)
    : FramedDialog({}, parent)
    , context_(context)
    , marker_(marker)
    , list_(new QTreeWidget(this)) {
    setObjectName(QStringLiteral("MapMarkDataTabelDialog"));
    setSizeGripEnabled(true);
    auto* const name = new QLabel(marker.name.left(100).simplified(), this);
    name->setObjectName(QStringLiteral("mapDataName"));
    name->setTextFormat(Qt::PlainText);
    name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    body()->addWidget(name);
    list_->setObjectName(QStringLiteral("mapData"));
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    list_->header()->setStretchLastSection(true);
    body()->addWidget(list_, 1);
    auto* const close = addButton({}, QStringLiteral("mapDataClose"), true);
    wordedText(close, [] { return tr("关闭"); });
    wordedName(close, [] { return tr("关闭"); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    beat_.setSingleShot(true);
    beat_.setInterval(Beat);
    connect(&beat_, &QTimer::timeout, this, [this] {
        const QSet<int> rows = std::exchange(changed_, {});
        for (const int row : rows)
            showValues(row);
    });
    connect(&context_.events, &AppEvents::sig_UpdateSensorInputData, this,
            [this](const QString&, const QVariantList& values) { onValues(values); });
    connect(&context_.events, &AppEvents::sig_updateSensorList, this, &MapMarkDataTabelDialog::fill);
    worded(this, [this] { setWords(); });
    resize(Usual);
}

void MapMarkDataTabelDialog::setWords() {
    setWindowTitle(tr("表格数据"));
    setAccessibleName(windowTitle());
    list_->setAccessibleName(windowTitle());
    list_->setHeaderLabels(
        {tr("编号"), tr("传感器"), tr("采集输入"), tr("数值"), tr("单位"), tr("通讯"), tr("读取时间")});
    fill(); // states have words
    fitColumns(*list_, TimeColumn);
}

void MapMarkDataTabelDialog::fill() {
    changed_.clear();
    list_->clear();
    inputs_ = SensorIndex(context_.devices).inputsOf(marker_);
    for (int i = 0; i < inputs_.size(); ++i) {
        const sensor::InputRecord& input = inputs_[i];
        auto* const row = new QTreeWidgetItem( // the list owns it
            list_, {QString::number(i + 1), input.sensor, input.name, QString(), input.unit});
        row->setTextAlignment(ValueColumn, Qt::AlignRight | Qt::AlignVCenter);
        showValues(i);
    }
    showProblem(inputs_.isEmpty() ? tr("该传感器没有采集输入") : QString());
}

void MapMarkDataTabelDialog::showValues(int index) {
    QTreeWidgetItem* const row = list_->topLevelItem(index);
    if (row == nullptr)
        return;
    const sensor::InputNow now = sensor::nowOf(inputs_[index], context_.inputFields);
    row->setText(ValueColumn, now.value ? QString::number(*now.value) : QString());
    row->setText(StateColumn, !now.isNormal ? QString() : *now.isNormal ? tr("正常") : tr("异常"));
    row->setText(TimeColumn,
                 now.latest
                     ? QDateTime::fromSecsSinceEpoch(*now.latest).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"))
                     : QString());
}

void MapMarkDataTabelDialog::onValues(const QVariantList& values) {
    for (const QVariant& entry : values) {
        const int pid = entry.toMap().value(QStringLiteral("pid")).toInt();
        for (int i = 0; i < inputs_.size(); ++i) {
            if (inputs_[i].pid == pid)
                changed_.insert(i);
        }
    }
    if (!changed_.isEmpty() && !beat_.isActive())
        beat_.start();
}

} // namespace corvanta::map
