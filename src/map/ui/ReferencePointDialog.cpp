#include "map/ui/ReferencePointDialog.h"

#include "account/ui/AccountForm.h"
#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "manageWidget/ui/ManageSend.h"
#include "map/MarkerRules.h"
#include "map/ui/MapSend.h"
#include "sensor/Samples.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <cmath>
#include <optional>
#include <utility>

namespace corvanta::map {
namespace {

enum Column { NameColumn, XColumn, YColumn };
constexpr int MostPoints = 64;
const QSize Usual(380, 320); // px
const QString Info = QStringLiteral("info");
const QString Locations = QStringLiteral("locations");

QVariantMap boardOf(const DeviceModel& devices, const MapMarker& marker) {
    const DeviceRecord* const device = devices.device(marker.ipncId);
    const QVariantList boards = device == nullptr ? QVariantList() : device->interfaces + device->subDevices();
    for (const QVariant& board : boards) {
        const QVariantMap map = board.toMap();
        if (map.value(QStringLiteral("pid")).toString() == marker.pid)
            return map;
    }
    return {};
}

std::optional<double> metresOf(const QString& text) {
    constexpr double farthest = 1e6; // m
    const auto number = sensor::readNumber(text.trimmed());
    return number && std::abs(*number) <= farthest ? number : std::nullopt;
}

} // namespace

ReferencePointDialog::ReferencePointDialog(const AppContext& context, MapDocument& document, QString mapId,
                                           const MapMarker& marker, QWidget* parent)
    : FramedDialog(tr("设置参考点坐标"), parent)
    , context_(context)
    , document_(document)
    , mapId_(std::move(mapId))
    , marker_(marker)
    , board_(boardOf(context.devices, marker)) {
    setObjectName(QStringLiteral("ReferencePointDialog"));
    setAccessibleName(windowTitle());
    setSizeGripEnabled(true);
    build();
    save_ = addButton(tr("保存"), QStringLiteral("pointSave"), true);
    save_->setEnabled(!board_.isEmpty());
    if (board_.isEmpty())
        showProblem(tr("传感器不存在!"));
    connect(save_, &QPushButton::clicked, this, &ReferencePointDialog::save);
    connect(addButton(tr("取消"), QStringLiteral("pointCancel"), false), &QPushButton::clicked, this,
            &QDialog::reject);
    resize(Usual);
}

void ReferencePointDialog::build() {
    list_ = new QTreeWidget(this);
    list_->setObjectName(QStringLiteral("pointList"));
    list_->setAccessibleName(windowTitle());
    list_->setHeaderLabels({tr("参考点"), tr("X (米)"), tr("Y (米)")});
    list_->setRootIsDecorated(false);
    list_->setEditTriggers(QAbstractItemView::AllEditTriggers);
    body()->addWidget(list_, 1);
    auto* const row = new QHBoxLayout;
    auto* const add = new QPushButton(tr("添加"), this);
    add->setObjectName(QStringLiteral("pointAdd"));
    auto* const remove = new QPushButton(tr("删除"), this);
    remove->setObjectName(QStringLiteral("pointRemove"));
    for (QPushButton* const button : {add, remove}) {
        button->setAccessibleName(button->text());
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    row->addStretch(1);
    body()->addLayout(row);
    connect(add, &QPushButton::clicked, this, [this] {
        if (list_->topLevelItemCount() < MostPoints)
            this->add(QStringLiteral("0"), QStringLiteral("0"));
    });
    connect(remove, &QPushButton::clicked, this, [this] {
        delete list_->currentItem();
        number();
    });
    for (const QPointF& point : marker_.locations)
        this->add(QString::number(point.x(), 'g', 10), QString::number(point.y(), 'g', 10));
}

void ReferencePointDialog::add(const QString& x, const QString& y) {
    auto* const item = new QTreeWidgetItem(list_, {QString(), x, y}); // the list owns it
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    list_->setCurrentItem(item);
    number();
}

void ReferencePointDialog::number() {
    for (int row = 0; row < list_->topLevelItemCount(); ++row)
        list_->topLevelItem(row)->setText(NameColumn, referenceName(row));
}

void ReferencePointDialog::save() {
    QVariantList locations;
    QVector<QPointF> points;
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* const item = list_->topLevelItem(row);
        const auto x = metresOf(item->text(XColumn));
        const auto y = metresOf(item->text(YColumn));
        if (!x || !y) {
            list_->setCurrentItem(list_->topLevelItem(row));
            account::tell(tr("坐标应为数字!"), this);
            return;
        }
        points += QPointF(*x, *y);
        locations += QVariantMap{{QStringLiteral("x"), item->text(XColumn).trimmed()},
                                 {QStringLiteral("y"), item->text(YColumn).trimmed()}};
    }
    QVariantMap info = board_.value(Info).toMap();
    info.insert(Locations, locations);
    QVariantMap board = board_;
    board.insert(Info, info);
    manage::send(context_, this,
                 {.json = requests::accountRequest(
                      QStringLiteral("提交传感器管理"),
                      {{QStringLiteral("ipncid"), marker_.ipncId}, {QStringLiteral("sensorinfo"), board}}),
                  .busy = save_,
                  .done = [this, points, locations](const QVariantMap&) {
                      MapMarker changed = marker_;
                      changed.locations = points;
                      QVariantMap told = changed.rest.value(Info).toMap();
                      told.insert(Locations, locations);
                      changed.rest.insert(Info, told);
                      logChange(context_, QStringLiteral("设置参考点坐标"), changed.name);
                      document_.putMarker(mapId_, changed);
                      account::tell(tr("保存成功!"), parentWidget());
                      accept();
                  }});
}

} // namespace corvanta::map
