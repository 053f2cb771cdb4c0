#include "map/ui/MapMangerMarkDialog.h"

#include "account/ui/AccountForm.h"
#include "base/RequestBuilder.h"
#include "base/ui/Theme.h"
#include "manageWidget/ui/ManageSend.h"
#include "map/MarkerRules.h"
#include "map/SensorIndex.h"
#include "map/ui/MapIcons.h"
#include "map/ui/MapSend.h"
#include "map/ui/MapSetIocnDialog.h"
#include "map/ui/MapTables.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace corvanta::map {
namespace {

enum Column { NumberColumn, DeviceColumn, SensorColumn, InputColumn, ShownColumn };
constexpr int IconSide = 32;     // px
constexpr int LongestName = 64;  // characters
constexpr int SmallestList = 48; // px
const QSize Usual(520, 420);     // px

QString coordinateText(double number) {
    return QString::number(number, 'g', 10);
}

/// What was entered; where that still reads as it was shown, the number behind it, which may have more digits.
double coordinateOf(const QLineEdit& edit, double before) {
    const QString text = edit.text().trimmed();
    return text == coordinateText(before) ? before : text.toDouble();
}

} // namespace

MapMangerMarkDialog::MapMangerMarkDialog(const AppContext& context, MapDocument& document, const MapRecord& map,
                                         const MapMarker& marker, QWidget* parent)
    : FramedDialog(tr("设置标记参数"), parent)
    , context_(context)
    , document_(document)
    , map_(map)
    , marker_(marker)
    , inputs_(SensorIndex(context.devices).inputsOf(marker)) {
    setObjectName(QStringLiteral("MapMangerMarkDialog"));
    setAccessibleName(windowTitle());
    setSizeGripEnabled(true);
    build();
    save_ = addButton(tr("保存"), QStringLiteral("markSave"), true);
    connect(save_, &QPushButton::clicked, this, &MapMangerMarkDialog::save);
    connect(addButton(tr("取消"), QStringLiteral("markCancel"), false), &QPushButton::clicked, this,
            &QDialog::reject);
    resize(Usual);
    name_->setFocus();
}

void MapMangerMarkDialog::build() {
    const bool isOnline = map_.type == MapType::Online;
    QFormLayout* const form = account::makeForm();
    form->setVerticalSpacing(2 * theme::Step); // it fits into the smallest window
    name_ = account::addField(*form, tr("显示名称"), tr("显示名称"), QStringLiteral("markName"));
    name_->setMaxLength(std::max(LongestName, marker_.name.size())); // what is there is not cut
    name_->setText(marker_.name);
    form->addRow(tr("显示方式"), buildModes());
    form->addRow(isOnline ? tr("经度") : tr("X坐标"), buildPlace(isOnline));
    form->addRow(tr("标记图标"), buildIcon());
    body()->addLayout(form);
    showDatas_ = new QCheckBox(tr("显示数据"), this);
    showDatas_->setObjectName(QStringLiteral("markShowDatas"));
    showDatas_->setChecked(marker_.showDatas);
    isUpdate_ = new QCheckBox(tr("实时更新"), this);
    isUpdate_->setObjectName(QStringLiteral("markIsUpdate"));
    isUpdate_->setChecked(marker_.isUpdate);
    for (QCheckBox* const box : {showDatas_, isUpdate_})
        box->setAccessibleName(box->text());
    auto* const row = new QHBoxLayout;
    row->addWidget(showDatas_);
    row->addWidget(isUpdate_);
    row->addStretch(1);
    body()->addLayout(row);
    buildInputs();
}

QWidget* MapMangerMarkDialog::buildPlace(bool isOnline) {
    auto* const holder = new QWidget(this);
    auto* const row = new QHBoxLayout(holder);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(3 * theme::Step);
    first_ = new QLineEdit(coordinateText(isOnline ? marker_.lng : marker_.x), holder);
    first_->setObjectName(QStringLiteral("markFirst"));
    first_->setAccessibleName(isOnline ? tr("经度") : tr("X坐标"));
    second_ = new QLineEdit(coordinateText(isOnline ? marker_.lat : marker_.y), holder);
    second_->setObjectName(QStringLiteral("markSecond"));
    second_->setAccessibleName(isOnline ? tr("纬度") : tr("Y坐标"));
    row->addWidget(first_, 1);
    row->addWidget(new QLabel(second_->accessibleName(), holder));
    row->addWidget(second_, 1);
    return holder;
}

QWidget* MapMangerMarkDialog::buildModes() {
    auto* const modes = new QWidget(this);
    auto* const row = new QHBoxLayout(modes);
    row->setContentsMargins(0, 0, 0, 0);
    always_ = new QRadioButton(tr("总是显示"), modes);
    always_->setObjectName(QStringLiteral("markAlways"));
    mouseIn_ = new QRadioButton(tr("鼠标移入显示"), modes);
    mouseIn_->setObjectName(QStringLiteral("markMouseIn"));
    for (QRadioButton* const button : {always_, mouseIn_}) {
        button->setAccessibleName(button->text());
        row->addWidget(button);
    }
    row->addStretch(1);
    (marker_.showMode == ShowMode::MouseIn ? mouseIn_ : always_)->setChecked(true);
    return modes;
}

QWidget* MapMangerMarkDialog::buildIcon() {
    auto* const holder = new QWidget(this);
    auto* const row = new QHBoxLayout(holder);
    row->setContentsMargins(0, 0, 0, 0);
    icon_ = new QLabel(holder);
    icon_->setObjectName(QStringLiteral("markIcon"));
    icon_->setFixedSize(IconSide, IconSide);
    row->addWidget(icon_);
    auto* const choose = new QPushButton(tr("设置图标"), holder);
    choose->setObjectName(QStringLiteral("markSetIcon"));
    auto* const usual = new QPushButton(tr("默认图标"), holder);
    usual->setObjectName(QStringLiteral("markUsualIcon"));
    for (QPushButton* const button : {choose, usual}) {
        button->setAccessibleName(button->text());
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    row->addStretch(1);
    const auto take = [this](const MapIcon& icon) {
        marker_.icon = icon.fileName;
        marker_.iconName = icon.fileName;
        marker_.iconPublic = icon.isPublic;
        marker_.iconPath = icon.filePath;
        showIcon();
    };
    connect(usual, &QPushButton::clicked, this, [take] { take({}); });
    connect(choose, &QPushButton::clicked, this, [this, take] {
        auto* const library = new MapSetIocnDialog(context_, document_, this);
        library->setAttribute(Qt::WA_DeleteOnClose);
        connect(library, &MapSetIocnDialog::sigChosen, this, take);
        library->open();
    });
    showIcon();
    return holder;
}

void MapMangerMarkDialog::showIcon() {
    icon_->setPixmap(markerIcon(marker_).pixmap(QSize(IconSide, IconSide)));
    icon_->setAccessibleName(marker_.icon.isEmpty() ? tr("默认图标") : marker_.iconName);
}

void MapMangerMarkDialog::buildInputs() {
    list_ = new QTreeWidget(this);
    list_->setObjectName(QStringLiteral("markInputs"));
    list_->setAccessibleName(tr("显示数据"));
    list_->setHeaderLabels({tr("编号"), tr("设备"), tr("传感器"), tr("采集输入"), tr("是否显示")});
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    list_->setMinimumHeight(SmallestList);
    for (int i = 0; i < inputs_.size(); ++i) {
        const sensor::InputRecord& input = inputs_[i];
        auto* const row = new QTreeWidgetItem( // the list owns it
            list_, {QString::number(i + 1), input.device, input.sensor, input.name});
        const bool isShown = !marker_.inputs || marker_.inputs->contains(input.pid);
        row->setCheckState(ShownColumn, isShown ? Qt::Checked : Qt::Unchecked);
    }
    fitColumns(*list_, ShownColumn);
    connect(list_, &QTreeWidget::itemActivated, this, [](QTreeWidgetItem* row) {
        const bool wasShown = row->checkState(ShownColumn) == Qt::Checked;
        row->setCheckState(ShownColumn, wasShown ? Qt::Unchecked : Qt::Checked);
    });
    list_->setEnabled(marker_.showDatas);
    connect(showDatas_, &QCheckBox::toggled, list_, &QWidget::setEnabled);
    body()->addWidget(list_, 1);
}

MapMarker MapMangerMarkDialog::entered() const {
    MapMarker result = marker_;
    result.name = name_->text().trimmed();
    result.showDatas = showDatas_->isChecked();
    result.isUpdate = isUpdate_->isChecked();
    result.showMode = mouseIn_->isChecked() ? ShowMode::MouseIn : ShowMode::Always;
    if (map_.type == MapType::Online) {
        result.lng = coordinateOf(*first_, marker_.lng);
        result.lat = coordinateOf(*second_, marker_.lat);
    } else {
        result.x = coordinateOf(*first_, marker_.x);
        result.y = coordinateOf(*second_, marker_.y);
    }
    QList<int> shown;
    for (int i = 0; i < inputs_.size(); ++i) {
        if (list_->topLevelItem(i)->checkState(ShownColumn) == Qt::Checked)
            shown += inputs_[i].pid;
    }
    // All of them, those to come included, as long as nobody has left one out.
    if (shown.size() < inputs_.size() || marker_.inputs)
        result.inputs = shown;
    return result;
}

void MapMangerMarkDialog::save() {
    if (const auto problem = checkMarker(name_->text(), first_->text(), second_->text(), map_.type)) {
        account::tell(*problem, this);
        return;
    }
    const MapMarker changed = entered();
    manage::send(context_, this,
                 {.json = requests::accountRequest(QStringLiteral("提交地图传感器"), markerParameters(map_, changed)),
                  .busy = save_,
                  .done = [this, changed](const QVariantMap&) {
                      logChange(context_, QStringLiteral("设置标记参数"), changed.name);
                      document_.putMarker(map_.id, changed);
                      account::tell(tr("保存成功!"), parentWidget());
                      accept();
                  }});
}

} // namespace corvanta::map
