#include "linkage/ui/NewSet_Linkage_Dialog.h"

#include "account/ui/AccountForm.h"
#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ui/PlainToolTip.h"
#include "base/ui/SendAndReact.h"
#include "base/ui/TipDialog.h"
#include "linkage/LinkageLog.h"
#include "linkage/ui/AddAndSet_Linkage_Dialog.h"

#include <QDebug>
#include <QPushButton>
#include <QTreeWidget>

#include <utility>

namespace account = corvanta::account;
namespace linkage = corvanta::linkage;

namespace {

const QSize Usual(760, 420); // px

enum Column { NumberColumn, NameColumn, ConditionColumn, RelationColumn, DurationColumn, LevelColumn, ActionColumn };

} // namespace

NewSet_Linkage_Dialog::NewSet_Linkage_Dialog(const AppContext& context, const QString& ipncId, QWidget* parent)
    : ListDialog(context, tr("联动设置"),
                 {tr("编号"), tr("联动策略名称"), tr("条件"), tr("条件关系"), tr("条件有效时长"), tr("阀值等级"),
                  tr("动作"), tr("执行方式"), tr("执行时间间隔")},
                 tr("还没有联动策略，点击“新增”新建一个"), parent)
    , ipncId_(ipncId) {
    setObjectName(QStringLiteral("NewSet_Linkage_Dialog"));
    list().setSelectionMode(QAbstractItemView::SingleSelection);
    list().setColumnWidth(NumberColumn, 56); // px
    list().setColumnWidth(ConditionColumn, 200);
    list().setColumnWidth(ActionColumn, 160);
    auto* const add = addButton(tr("新增"), QStringLiteral("planAdd"), false);
    auto* const change = addButton(tr("编辑"), QStringLiteral("planEdit"), false);
    delete_ = addButton(tr("删除"), QStringLiteral("planDelete"), false);
    connect(add, &QPushButton::clicked, this, [this] {
        linkage::LinkagePlan plan;
        plan.ipncId = ipncId_;
        openEditor(plan);
    });
    const auto edit = [this] {
        if (const linkage::LinkagePlan* const plan = demandPlan())
            openEditor(*plan);
    };
    connect(change, &QPushButton::clicked, this, edit);
    connect(&list(), &QTreeWidget::itemActivated, this, edit);
    connect(delete_, &QPushButton::clicked, this, &NewSet_Linkage_Dialog::askToDelete);
    connect(&context.events, qOverload<QVariantList, QVariantMap>(&AppEvents::sig_updateList), this,
            &NewSet_Linkage_Dialog::onUpdateTable);
    connect(this, &NewSet_Linkage_Dialog::sig_updateSensorList, &context.events, &AppEvents::sig_updateSensorList);
    resize(Usual);
    onUpdateTable();
    load();
}

void NewSet_Linkage_Dialog::onUpdateTable() {
    if (const DeviceRecord* const device = context().devices.device(ipncId_))
        showPlans(linkage::LinkagePlan::listOf(device->linkages));
}

void NewSet_Linkage_Dialog::load() {
    const std::string json =
        corvanta::requests::accountRequest(QStringLiteral("获取联动策略"), {{QStringLiteral("ipncid"), ipncId_}});
    // What the device's record holds is shown already; the service may know more.
    corvanta::sendAndReact(context().gateway, json, this,
                           {[this](const QVariantMap& reply) {
                                const QVariant plans =
                                    reply.value(QStringLiteral("resp")).toMap().value(QStringLiteral("linkplans"));
                                if (plans.type() == QVariant::List)
                                    showPlans(linkage::LinkagePlan::listOf(plans.toList()));
                            },
                            [](const QString& text) {
                                qDebug() << "plans:" << text;
                            }});
}

void NewSet_Linkage_Dialog::showPlans(QList<linkage::LinkagePlan> plans) {
    plans_ = std::move(plans);
    const DeviceRecord* const device = context().devices.device(ipncId_);
    const linkage::Boards boards = device == nullptr ? linkage::Boards() : linkage::Boards::of(*device);
    const QString name = device == nullptr ? ipncId_ : device->displayName();
    beginFill();
    for (int index = 0; index < plans_.size(); ++index) {
        const linkage::LinkagePlan& plan = plans_[index];
        const linkage::PlanTexts texts = linkage::textsOf(plan, name, boards);
        QTreeWidgetItem* const row = addRow(
            QString::number(index), {QString::number(index + 1), plan.name, texts.conditions, texts.relation,
                                     texts.duration, texts.threshold, texts.actions, texts.outMode, texts.interval});
        for (const Column column : {NameColumn, ConditionColumn, ActionColumn})
            row->setToolTip(column, corvanta::plainToolTip(row->text(column)));
    }
    endFill();
}

const linkage::LinkagePlan* NewSet_Linkage_Dialog::demandPlan() {
    const QTreeWidgetItem* const row = demandOne(tr("请选择一个策略!"));
    return row == nullptr ? nullptr : &plans_.at(keyOf(*row).toInt());
}

void NewSet_Linkage_Dialog::openEditor(const linkage::LinkagePlan& plan) {
    auto* const editor = new AddAndSet_Linkage_Dialog(context(), plan, this); // deletes itself
    connect(editor, &AddAndSet_Linkage_Dialog::sigSaved, this, [this] {
        load();
        emit sig_updateSensorList();
    });
    editor->open();
}

void NewSet_Linkage_Dialog::askToDelete() {
    const linkage::LinkagePlan* const plan = demandPlan();
    if (plan == nullptr)
        return;
    TipDialog::offer({.title = tr("提示"),
                      .text = tr("确定删除联动策略?"),
                      .accept = tr("确定"),
                      .reject = tr("取消"),
                      .destructive = true},
                     this, {.accepted = [this, plan = *plan] {
                         sendDelete(plan);
                     }});
}

void NewSet_Linkage_Dialog::sendDelete(const linkage::LinkagePlan& plan) {
    account::send(
        context(), this,
        {.operation = QStringLiteral("删除联动策略"),
         .parameters = {{QStringLiteral("ipncid"), ipncId_}, {QStringLiteral("linkplanid"), plan.id.value_or(0)}},
         .busy = delete_,
         .done = [this, name = plan.name](const QVariantMap&) {
             linkage::logChange(context().operationLog, context().gateway.phoneId(), linkage::LogSubject::Plans,
                                QStringLiteral("删除联动策略"), ipncId_ + QLatin1Char(' ') + name);
             account::tell(tr("删除成功!"), this);
             load();
             emit sig_updateSensorList();
         }});
}
