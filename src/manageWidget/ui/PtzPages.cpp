#include "manageWidget/ui/PtzPages.h"

#include "account/EntryChecks.h"
#include "account/ui/AccountForm.h"
#include "base/RequestBuilder.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"
#include "base/ui/Worded.h"
#include "manageWidget/ui/ManageSend.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace account = corvanta::account;
namespace manage = corvanta::manage;
namespace requests = corvanta::requests;
namespace theme = corvanta::theme;
using manage::PtzCruise;
using manage::PtzPreset;

namespace {

constexpr int UsualStay = 10; // s

template <typename Control>
Control* named(Control* control, const char* objectName, const corvanta::Text& name) {
    control->setObjectName(QLatin1String(objectName));
    corvanta::wordedName(control, name);
    return control;
}

QTreeWidget* makeList(QWidget* parent, const char* objectName, const corvanta::Text& name,
                      std::function<QStringList()> columns) {
    auto* const list = named(new QTreeWidget(parent), objectName, name);
    corvanta::worded(list, [list, columns = std::move(columns)] { list->setHeaderLabels(columns()); });
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    list->header()->setStretchLastSection(true);
    return list;
}

void addRow(QFormLayout& form, corvanta::Text text, QWidget* field) {
    auto* const label = new QLabel; // the widget of the form owns it
    corvanta::wordedText(label, std::move(text));
    label->setBuddy(field);
    form.addRow(label, field);
}

} // namespace

PtzPage::PtzPage(const AppContext& context, QString ipncId, QWidget* parent)
    : QWidget(parent)
    , context_(context)
    , ipncId_(std::move(ipncId)) {}

void PtzPage::command(const QString& name, const QVariant& value, QPushButton* busy, const QString& what,
                      const QString& detail) {
    manage::send(context_, this,
                 {.json = requests::deviceRequest(
                      QStringLiteral("云台控制"),
                      {{QStringLiteral("ipncid"), ipncId_}, {QStringLiteral("cmdlist"), QVariantMap{{name, value}}}}),
                  .busy = busy,
                  .done = [this, what, detail](const QVariantMap&) {
                      manage::log(context_, what, ipncId_ + QLatin1Char(' ') + detail);
                      emit sigChanged();
                  }});
}

QPushButton* PtzPage::addButton(const corvanta::Text& text, const QString& objectName,
                                std::function<void()> clicked) {
    auto* const button = new QPushButton(this);
    button->setObjectName(objectName);
    corvanta::wordedText(button, text);
    corvanta::wordedName(button, text);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, std::move(clicked));
    return button;
}

PtzPresetPage::PtzPresetPage(const AppContext& context, const QString& ipncId, QWidget* parent)
    : PtzPage(context, ipncId, parent)
    , list_(makeList(
          this, "presetList", [] { return tr("预置位列表"); },
          [] {
              return QStringList{tr("编号"), tr("名称")};
          }))
    , index_(named(new QSpinBox(this), "presetIndex", [] { return tr("预置位编号"); }))
    , name_(named(new QLineEdit(this), "presetName", [] { return tr("预置位名称"); })) {
    auto* const column = new QVBoxLayout(this);
    column->setSpacing(3 * theme::Step);
    column->addWidget(list_, 1);
    QFormLayout* const form = account::makeForm();
    addRow(
        *form, [] { return tr("编号"); }, index_);
    addRow(
        *form, [] { return tr("名称"); }, name_);
    column->addLayout(form);
    auto* const row = new QHBoxLayout;
    set_ = addButton([] { return tr("设为当前位置"); }, QStringLiteral("presetSet"), [this] { set(); });
    go_ = addButton([] { return tr("转到"); }, QStringLiteral("presetGo"),
                    [this] {
                        command(QStringLiteral("ptzpresetgoto"), index_->value(), go_, QStringLiteral("转到预置位"),
                                QString::number(index_->value()));
                    });
    remove_ = addButton([] { return tr("删除"); }, QStringLiteral("presetDelete"), [this] { remove(); });
    for (QPushButton* const button : {set_, go_, remove_})
        row->addWidget(button);
    column->addLayout(row);
    connect(list_, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
        if (item == nullptr)
            return;
        index_->setValue(item->text(0).toInt());
        name_->setText(item->text(1));
    });
    connect(list_, &QTreeWidget::itemActivated, go_, &QPushButton::click);
}

void PtzPresetPage::show(int most, const QVector<PtzPreset>& presets) {
    const QSignalBlocker blocker(list_);
    const QString chosen = list_->currentItem() == nullptr ? QString() : list_->currentItem()->text(0);
    list_->clear();
    for (const PtzPreset& preset : presets) {
        auto* const row =
            new QTreeWidgetItem(list_, {QString::number(preset.index), preset.name}); // the list owns it
        if (row->text(0) == chosen)
            list_->setCurrentItem(row);
    }
    index_->setRange(1, std::max(1, most));
    setEnabled(most > 0);
}

void PtzPresetPage::set() {
    const QString name = name_->text().trimmed();
    if (const auto problem = account::checkName(name, tr("请输入名称!"))) {
        account::tell(*problem, this);
        return;
    }
    command(QStringLiteral("ptzpresetset"),
            QVariantMap{{QStringLiteral("index"), index_->value()}, {QStringLiteral("name"), name}}, set_,
            QStringLiteral("设置预置位"), QString::number(index_->value()) + QLatin1Char(' ') + name);
}

void PtzPresetPage::remove() {
    TipDialog::offer({tr("提示"), tr("确定删除预置位%1?").arg(index_->value()), tr("确定"), tr("取消"), true}, this,
                     {[this] {
                         command(QStringLiteral("ptzpresetdel"), index_->value(), remove_,
                                 QStringLiteral("删除预置位"), QString::number(index_->value()));
                     }});
}

PtzCruisePage::PtzCruisePage(const AppContext& context, const QString& ipncId, QWidget* parent)
    : PtzPage(context, ipncId, parent)
    , which_(named(new QComboBox(this), "cruiseIndex", [] { return tr("巡航路线"); }))
    , name_(named(new QLineEdit(this), "cruiseName", [] { return tr("巡航名称"); }))
    , points_(makeList(
          this, "cruisePoints", [] { return tr("巡航点"); },
          [] {
              return QStringList{tr("预置位"), tr("停留(秒)")};
          }))
    , preset_(named(new QComboBox(this), "cruisePreset", [] { return tr("预置位"); }))
    , seconds_(named(new QSpinBox(this), "cruiseSeconds", [] { return tr("停留秒数"); })) {
    seconds_->setRange(1, PtzCruise::LongestStay);
    seconds_->setValue(UsualStay);
    buildEditor();
    connect(which_, qOverload<int>(&QComboBox::currentIndexChanged), this, &PtzCruisePage::showOne);
    connect(&corvanta::LanguageNotice::instance(), &corvanta::LanguageNotice::changed, this, [this] {
        for (int row = 0; row < which_->count(); ++row)
            which_->setItemText(row, routeText(row + 1));
        const int point = points_->indexOfTopLevelItem(points_->currentItem());
        showPoints();
        points_->setCurrentItem(points_->topLevelItem(point));
    });
}

void PtzCruisePage::buildEditor() {
    auto* const column = new QVBoxLayout(this);
    column->setSpacing(3 * theme::Step);
    QFormLayout* const form = account::makeForm();
    addRow(
        *form, [] { return tr("路线"); }, which_);
    addRow(
        *form, [] { return tr("名称"); }, name_);
    column->addLayout(form);
    column->addWidget(points_, 1);
    auto* const point = new QHBoxLayout;
    point->addWidget(preset_, 1);
    point->addWidget(seconds_);
    add_ = addButton([] { return tr("添加"); }, QStringLiteral("cruiseAddPoint"), [this] { addPoint(); });
    point->addWidget(add_);
    point->addWidget(
        addButton([] { return tr("移除"); }, QStringLiteral("cruiseRemovePoint"), [this] { removePoint(); }));
    point->addWidget(
        addButton([] { return tr("上移"); }, QStringLiteral("cruisePointUp"), [this] { movePoint(-1); }));
    point->addWidget(
        addButton([] { return tr("下移"); }, QStringLiteral("cruisePointDown"), [this] { movePoint(1); }));
    column->addLayout(point);
    auto* const row = new QHBoxLayout;
    save_ = addButton([] { return tr("保存路线"); }, QStringLiteral("cruiseSave"), [this] { save(); });
    remove_ = addButton([] { return tr("删除路线"); }, QStringLiteral("cruiseDelete"),
                        [this] {
                            command(QStringLiteral("ptzcruisedel"), edited_.index, remove_,
                                    QStringLiteral("删除巡航路线"), QString::number(edited_.index));
                        });
    start_ = addButton([] { return tr("开始巡航"); }, QStringLiteral("cruiseStart"),
                       [this] {
                           command(QStringLiteral("ptzcruisestart"), edited_.index, start_,
                                   QStringLiteral("开始巡航"), QString::number(edited_.index));
                       });
    stop_ = addButton([] { return tr("停止巡航"); }, QStringLiteral("cruiseStop"),
                      [this] { command(QStringLiteral("ptzcruisestop"), 1, stop_, QStringLiteral("停止巡航"), {}); });
    for (QPushButton* const button : {save_, remove_, start_, stop_})
        row->addWidget(button);
    column->addLayout(row);
}

void PtzCruisePage::show(int most, const QVector<PtzCruise>& cruises, const QVector<PtzPreset>& presets,
                         int running) {
    const PtzCruise before = kept();
    const bool isEdited = edited_.index > 0 && (edited_.points != before.points || name_->text() != before.name);
    cruises_ = cruises;
    presets_ = presets;
    running_ = running;
    const QSignalBlocker blocker(which_);
    const int chosen = std::max(0, which_->currentIndex());
    which_->clear();
    for (int index = 1; index <= most; ++index)
        which_->addItem(routeText(index));
    which_->setCurrentIndex(std::min(chosen, which_->count() - 1));
    preset_->clear();
    for (const PtzPreset& preset : presets)
        preset_->addItem(QStringLiteral("%1  %2").arg(QString::number(preset.index), preset.name), preset.index);
    add_->setEnabled(!presets.isEmpty());
    setEnabled(most > 0);
    if (!isEdited) {
        showOne();
        return;
    }
    showButtons();
    showPoints(); // presets may have other names
}

QString PtzCruisePage::routeText(int index) const {
    const auto known =
        std::find_if(cruises_.begin(), cruises_.end(), [index](const PtzCruise& one) { return one.index == index; });
    const QString name = known == cruises_.end() ? tr("(空)") : known->name;
    const QString text = QStringLiteral("%1  %2").arg(QString::number(index), name);
    return index == running_ ? tr("%1（正在巡航）").arg(text) : text;
}

PtzCruise PtzCruisePage::kept() const {
    const auto known = std::find_if(cruises_.begin(), cruises_.end(),
                                    [this](const PtzCruise& one) { return one.index == edited_.index; });
    // The name is what the camera keeps unless another one is entered, so the same in every language.
    return known == cruises_.end() ? PtzCruise{edited_.index, QStringLiteral("路线%1").arg(edited_.index), {}}
                                   : *known;
}

void PtzCruisePage::showOne() {
    edited_.index = which_->currentIndex() + 1;
    edited_ = kept();
    name_->setText(edited_.name);
    showButtons();
    showPoints();
}

void PtzCruisePage::showButtons() {
    const bool isKept = std::any_of(cruises_.begin(), cruises_.end(),
                                    [this](const PtzCruise& one) { return one.index == edited_.index; });
    start_->setEnabled(isKept);
    remove_->setEnabled(isKept);
}

void PtzCruisePage::showPoints() {
    points_->clear();
    for (const PtzCruise::Point& point : qAsConst(edited_.points)) {
        const auto known = std::find_if(presets_.begin(), presets_.end(),
                                        [&point](const PtzPreset& one) { return one.index == point.preset; });
        const QString name = known == presets_.end() ? tr("(已删除)") : known->name;
        auto* const row =
            new QTreeWidgetItem(points_, {QStringLiteral("%1  %2").arg(QString::number(point.preset), name),
                                          QString::number(point.seconds)}); // the list owns it
        row->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    }
}

void PtzCruisePage::addPoint() {
    edited_.points += PtzCruise::Point{preset_->currentData().toInt(), seconds_->value()};
    showPoints();
}

void PtzCruisePage::removePoint() {
    const int row = points_->indexOfTopLevelItem(points_->currentItem());
    if (row < 0)
        return;
    edited_.points.removeAt(row);
    showPoints();
    points_->setCurrentItem(points_->topLevelItem(std::min(row, points_->topLevelItemCount() - 1)));
}

void PtzCruisePage::movePoint(int by) {
    const int row = points_->indexOfTopLevelItem(points_->currentItem());
    if (row < 0 || row + by < 0 || row + by >= edited_.points.size())
        return;
    edited_.points.move(row, row + by);
    showPoints();
    points_->setCurrentItem(points_->topLevelItem(row + by));
}

void PtzCruisePage::save() {
    edited_.name = name_->text().trimmed();
    name_->setText(edited_.name);
    if (const auto problem = account::checkName(edited_.name, tr("请输入名称!"))) {
        account::tell(*problem, this);
        return;
    }
    if (edited_.points.isEmpty()) {
        account::tell(tr("请至少添加一个巡航点!"), this);
        return;
    }
    command(QStringLiteral("ptzcruiseset"), edited_.toMap(), save_, QStringLiteral("设置巡航路线"),
            QString::number(edited_.index) + QLatin1Char(' ') + edited_.name);
}
