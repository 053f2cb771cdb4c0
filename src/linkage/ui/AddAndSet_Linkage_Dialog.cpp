#include "linkage/ui/AddAndSet_Linkage_Dialog.h"

#include "account/ui/AccountForm.h"
#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ui/FaintHint.h"
#include "base/ui/SendAndReact.h"
#include "base/ui/Theme.h"
#include "linkage/LinkageLog.h"
#include "linkage/Words.h"
#include "linkage/ui/LinkageForm.h"
#include "linkage/ui/PartList.h"
#include "linkage/ui/PortPicker.h"
#include "linkage/ui/UnionDialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDebug>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <utility>

namespace account = corvanta::account;
namespace linkage = corvanta::linkage;
namespace theme = corvanta::theme;

namespace {

constexpr int LongestName = 64;
constexpr int LongestSeconds = 5; // digits of 86400
const QSize Usual(640, 400);      // px

enum Choice { AllInputs, ChosenInputs };

linkage::Boards boardsOf(const AppContext& context, const QString& ipncId) {
    const DeviceRecord* const device = context.devices.device(ipncId);
    return device == nullptr ? linkage::Boards() : linkage::Boards::of(*device);
}

/// Puts a part into a list: as a new one, or in place of the one at `row`.
template <typename T>
void put(QList<T>& parts, int row, const T& part) {
    if (row < 0)
        parts += part;
    else
        parts[row] = part;
}

template <typename T>
std::optional<T> at(const QList<T>& parts, int row) {
    return row < 0 ? std::nullopt : std::optional<T>(parts[row]);
}

QLabel* label(const QString& text, QWidget* parent) {
    auto* const result = new QLabel(text, parent);
    result->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return result;
}

} // namespace

AddAndSet_Linkage_Dialog::AddAndSet_Linkage_Dialog(const AppContext& context, linkage::LinkagePlan plan,
                                                   QWidget* parent)
    : FramedDialog(plan.id ? tr("编辑联动策略") : tr("新增联动策略"), parent)
    , context_(context)
    , plan_(std::move(plan))
    , boards_(boardsOf(context, plan_.ipncId)) {
    setObjectName(QStringLiteral("AddAndSet_Linkage_Dialog"));
    setAccessibleName(windowTitle());
    setAttribute(Qt::WA_DeleteOnClose);
    setSizeGripEnabled(true);
    body()->setSpacing(2 * theme::Step);
    body()->addLayout(makeHead());
    body()->addLayout(makeConditionRow());
    body()->addWidget(makeParts(), 1);
    body()->addLayout(makeActionRow());
    save_ = addButton(tr("保存"), QStringLiteral("planSave"), true);
    connect(save_, &QPushButton::clicked, this, &AddAndSet_Linkage_Dialog::save);
    connect(addButton(tr("取消"), QStringLiteral("planCancel"), false), &QPushButton::clicked, this,
            &AddAndSet_Linkage_Dialog::reject);
    connectConditions();
    connectActions();
    showPlan();
    loadLogics();
    resize(Usual);
    name_->setFocus();
}

QLayout* AddAndSet_Linkage_Dialog::makeHead() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(3 * theme::Step);
    name_ = new QLineEdit(this);
    name_->setObjectName(QStringLiteral("planName"));
    name_->setAccessibleName(tr("联动策略名称"));
    name_->setPlaceholderText(tr("输入联动策略名称"));
    name_->setMaxLength(LongestName);
    corvanta::faintHint(*name_);
    row->addWidget(label(tr("联动策略名称"), this));
    row->addWidget(name_, 1);
    const auto addCheck = [this, row](const QString& text, const char* objectName) {
        auto* const box = new QCheckBox(text, this);
        box->setObjectName(QLatin1String(objectName));
        box->setAccessibleName(text);
        row->addWidget(box);
        return box;
    };
    enable_ = addCheck(tr("启用联动策略"), "planEnable");
    report_ = addCheck(tr("启用通知"), "planReport");
    return row;
}

QLayout* AddAndSet_Linkage_Dialog::makeConditionRow() {
    auto* const grid = new QGridLayout;
    grid->setSpacing(2 * theme::Step);
    int column = 0;
    const auto add = [&](const QString& text, const char* objectName) {
        QComboBox* const combo = linkage::makeCombo(text, QLatin1String(objectName), this);
        grid->addWidget(new QLabel(text, this), 0, column);
        grid->addWidget(combo, 1, column);
        grid->setColumnStretch(column++, 1);
        return combo;
    };
    condition_ = add(tr("条件"), "planCondition");
    condition_->addItems({tr("全部"), tr("指定输入")});
    logic_ = add(tr("条件关系"), "planLogic");
    duration_ = add(tr("条件有效时长"), "planDuration");
    linkage::fill(*duration_, linkage::durations());
    duration_->addItem(tr("自定义"));
    ownDuration_ = new QLineEdit(this);
    ownDuration_->setObjectName(QStringLiteral("planOwnDuration"));
    ownDuration_->setAccessibleName(tr("自定义时长"));
    ownDuration_->setPlaceholderText(tr("(10～86400s)"));
    ownDuration_->setMaxLength(LongestSeconds);
    corvanta::faintHint(*ownDuration_);
    grid->addWidget(new QLabel(tr("自定义时长"), this), 0, column);
    grid->addWidget(ownDuration_, 1, column);
    grid->setColumnStretch(column++, 1);
    threshold_ = add(tr("阀值等级"), "planThreshold");
    linkage::fill(*threshold_, linkage::levels());
    connect(duration_, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &AddAndSet_Linkage_Dialog::showDuration);
    return grid;
}

QWidget* AddAndSet_Linkage_Dialog::makeParts() {
    auto* const both = new QWidget(this);
    auto* const row = new QHBoxLayout(both);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(3 * theme::Step);
    const auto addTabs = [row, both](const QString& name, const char* objectName) {
        auto* const tabs = new QTabWidget(both);
        tabs->setObjectName(QLatin1String(objectName));
        tabs->setAccessibleName(name);
        row->addWidget(tabs, 1);
        return tabs;
    };
    const auto addPage = [](QTabWidget* tabs, const QString& text, const char* objectName) {
        auto* const page = new QWidget(tabs);
        auto* const column = new QVBoxLayout(page);
        column->setContentsMargins(theme::Step, theme::Step, theme::Step, theme::Step);
        auto* const list = new PartList(QLatin1String(objectName), text, page);
        column->addWidget(list);
        tabs->addTab(page, text);
        return list;
    };
    conditions_ = addTabs(tr("条件"), "planConditions");
    inputs_ = addPage(conditions_, tr("单条件"), "input");
    inputUnions_ = addPage(conditions_, tr("组合条件"), "inputUnion");
    QTabWidget* const actions = addTabs(tr("动作"), "planActions");
    outputs_ = addPage(actions, tr("单动作"), "output");
    outputUnions_ = addPage(actions, tr("组合动作"), "outputUnion");
    return both;
}

QLayout* AddAndSet_Linkage_Dialog::makeActionRow() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(2 * theme::Step);
    outMode_ = linkage::makeCombo(tr("执行方式"), QStringLiteral("planOutMode"), this);
    linkage::fill(*outMode_, linkage::outModes());
    interval_ = linkage::makeInterval(QStringLiteral("planInterval"), this);
    row->addWidget(label(tr("执行方式"), this));
    row->addWidget(outMode_, 1);
    row->addWidget(label(tr("执行时间间隔"), this));
    row->addWidget(interval_, 1);
    row->addWidget(linkage::makeHint(tr("单位：ms"), this));
    return row;
}

void AddAndSet_Linkage_Dialog::connectConditions() {
    connect(condition_, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this](int choice) { conditions_->setEnabled(choice == ChosenInputs); });
    const auto demand = [this](int row) {
        if (row < 0)
            account::tell(tr("请选择一个条件!"), this);
        return row >= 0;
    };
    connect(inputs_, &PartList::sigAdd, this, [this] { pickInput(-1); });
    connect(inputs_, &PartList::sigEdit, this, [this, demand](int row) {
        if (demand(row))
            pickInput(row);
    });
    connect(inputs_, &PartList::sigRemove, this, [this, demand](int row) {
        if (demand(row))
            plan_.inputs.removeAt(row);
        showParts();
    });
    connect(inputUnions_, &PartList::sigAdd, this, [this] { pickInputUnion(-1); });
    connect(inputUnions_, &PartList::sigEdit, this, [this, demand](int row) {
        if (demand(row))
            pickInputUnion(row);
    });
    connect(inputUnions_, &PartList::sigRemove, this, [this, demand](int row) {
        if (demand(row))
            plan_.inputUnions.removeAt(row);
        showParts();
    });
}

void AddAndSet_Linkage_Dialog::connectActions() {
    const auto demand = [this](int row) {
        if (row < 0)
            account::tell(tr("请选择一个动作!"), this);
        return row >= 0;
    };
    connect(outputs_, &PartList::sigAdd, this, [this] { pickOutput(-1); });
    connect(outputs_, &PartList::sigEdit, this, [this, demand](int row) {
        if (demand(row))
            pickOutput(row);
    });
    connect(outputs_, &PartList::sigRemove, this, [this, demand](int row) {
        if (demand(row))
            plan_.outputs.removeAt(row);
        showParts();
    });
    connect(outputUnions_, &PartList::sigAdd, this, [this] { pickOutputUnion(-1); });
    connect(outputUnions_, &PartList::sigEdit, this, [this, demand](int row) {
        if (demand(row))
            pickOutputUnion(row);
    });
    connect(outputUnions_, &PartList::sigRemove, this, [this, demand](int row) {
        if (demand(row))
            plan_.outputUnions.removeAt(row);
        showParts();
    });
}

void AddAndSet_Linkage_Dialog::showPlan() {
    name_->setText(plan_.name);
    enable_->setChecked(!plan_.disable);
    report_->setChecked(plan_.report);
    condition_->setCurrentIndex(plan_.allInput ? AllInputs : ChosenInputs);
    conditions_->setEnabled(!plan_.allInput);
    logic_->addItems(linkage::texts(linkage::logics()));
    logic_->setCurrentIndex(plan_.logic == linkage::logics()[0].code ? 0 : 1);
    const QString duration = plan_.duration.toString();
    const int preset = linkage::indexOf(linkage::durations(), duration);
    duration_->setCurrentIndex(preset < 0 ? duration_->count() - 1 : preset);
    if (preset < 0)
        ownDuration_->setText(duration);
    threshold_->setCurrentIndex(qBound(1, plan_.threshold, 3) - 1);
    outMode_->setCurrentIndex(plan_.outMode == linkage::outModes()[0].code ? 0 : 1);
    if (plan_.interval != 0)
        interval_->setText(linkage::shownInterval(plan_.interval));
    showDuration();
    showParts();
}

void AddAndSet_Linkage_Dialog::showParts() {
    const auto rows = [](const auto& parts, auto text) {
        QStringList result;
        for (const auto& part : parts)
            result += text(part);
        return result;
    };
    inputs_->setRows(
        rows(plan_.inputs, [this](const auto& ref) { return boards_.text(ref, linkage::PortKind::Input); }));
    outputs_->setRows(
        rows(plan_.outputs, [this](const auto& ref) { return boards_.text(ref, linkage::PortKind::Output); }));
    const auto unionText = [this](const auto& part) {
        return linkage::textOf(part, boards_);
    };
    inputUnions_->setRows(rows(plan_.inputUnions, unionText));
    outputUnions_->setRows(rows(plan_.outputUnions, unionText));
}

void AddAndSet_Linkage_Dialog::showDuration() {
    ownDuration_->setEnabled(duration_->currentIndex() == duration_->count() - 1);
}

void AddAndSet_Linkage_Dialog::loadLogics() {
    // Without the service's names the usual ones stay.
    corvanta::sendAndReact(context_.gateway, corvanta::requests::accountRequest(QStringLiteral("获取下拉名称列表")),
                           this,
                           {[this](const QVariantMap& reply) {
                                const QVariantMap resp = reply.value(QStringLiteral("resp")).toMap();
                                const int chosen = logic_->currentIndex();
                                logic_->clear();
                                logic_->addItems(linkage::texts(linkage::SystemNames::fromReply(resp).logics));
                                logic_->setCurrentIndex(qMin(chosen, logic_->count() - 1));
                            },
                            [](const QString& text) {
                                qDebug() << "names of relations:" << text;
                            }});
}

void AddAndSet_Linkage_Dialog::readPlan() {
    plan_.name = name_->text();
    plan_.allInput = condition_->currentIndex() == AllInputs;
    // The first entry is "and"; whatever else the service offers, plans know one other relation.
    plan_.logic = linkage::logics()[logic_->currentIndex() == 0 ? 0 : 1].code;
    plan_.disable = !enable_->isChecked();
    plan_.report = report_->isChecked();
    const QString preset = duration_->currentData().toString();
    if (preset.isEmpty())
        plan_.duration = ownDuration_->text();
    else
        plan_.duration = preset == linkage::durations()[0].code ? QVariant(-1) : QVariant(preset);
    plan_.threshold = threshold_->currentIndex() + 1;
    plan_.outMode = outMode_->currentData().toString();
    plan_.interval = linkage::storedInterval(interval_->text());
}

void AddAndSet_Linkage_Dialog::save() {
    readPlan();
    const linkage::PlanEntry entry{interval_->text(), ownDuration_->isEnabled(), ownDuration_->text()};
    if (const auto problem = linkage::checkPlan(plan_, entry)) {
        account::tell(*problem, this);
        return;
    }
    const bool isNew = !plan_.id.has_value();
    account::send(context_, this,
                  {.operation = QStringLiteral("提交联动策略"),
                   .parameters = {{QStringLiteral("linkplan"), plan_.toMap()}},
                   .busy = save_,
                   .done = [this, isNew, name = plan_.name](const QVariantMap&) {
                       linkage::logChange(context_.operationLog, context_.gateway.phoneId(),
                                          linkage::LogSubject::Plans,
                                          isNew ? QStringLiteral("新增联动策略") : QStringLiteral("编辑联动策略"),
                                          plan_.ipncId + QLatin1Char(' ') + name);
                       account::tell(tr("保存成功!"), parentWidget());
                       emit sigSaved();
                       accept();
                   }});
}

// The pickers delete themselves, and are over this dialog: rows stay what they are meanwhile.

void AddAndSet_Linkage_Dialog::pickInput(int row) {
    const auto chosen = [this, row](const linkage::PortRef& ref) {
        put(plan_.inputs, row, ref);
        showParts();
    };
    (new LinkageSignalConditionDialog(boards_, at(plan_.inputs, row), chosen, this))->open();
}

void AddAndSet_Linkage_Dialog::pickOutput(int row) {
    const auto chosen = [this, row](const linkage::PortRef& ref) {
        put(plan_.outputs, row, ref);
        showParts();
    };
    (new LinkageSignalActionDialog(boards_, at(plan_.outputs, row), chosen, this))->open();
}

void AddAndSet_Linkage_Dialog::pickInputUnion(int row) {
    QStringList logics;
    for (int index = 0; index < logic_->count(); ++index)
        logics += logic_->itemText(index);
    const auto chosen = [this, row](const linkage::ConditionUnion& part) {
        put(plan_.inputUnions, row, part);
        showParts();
    };
    (new LinkageComboxConditionDialog(boards_, logics, at(plan_.inputUnions, row), chosen, this))->open();
}

void AddAndSet_Linkage_Dialog::pickOutputUnion(int row) {
    const auto chosen = [this, row](const linkage::ActionUnion& part) {
        put(plan_.outputUnions, row, part);
        showParts();
    };
    (new LinkageComboxlActionDialog(boards_, at(plan_.outputUnions, row), chosen, this))->open();
}
