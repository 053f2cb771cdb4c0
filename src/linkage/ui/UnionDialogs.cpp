#include "linkage/ui/UnionDialogs.h"

#include "account/ui/AccountForm.h"
#include "linkage/Words.h"
#include "linkage/ui/LinkageForm.h"
#include "linkage/ui/PartList.h"
#include "linkage/ui/PortPicker.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace account = corvanta::account;
namespace linkage = corvanta::linkage;
using linkage::PortKind;

UnionDialog::UnionDialog(PortKind kind, Texts texts, const linkage::Boards& boards, QList<linkage::PortRef> refs,
                         QWidget* parent)
    : FramedDialog(texts.title, parent)
    , kind_(kind)
    , texts_(std::move(texts))
    , boards_(boards)
    , refs_(std::move(refs)) {
    setAccessibleName(texts_.title);
    setAttribute(Qt::WA_DeleteOnClose);
    list_ = new PartList(QStringLiteral("union"), texts_.list, this);
    list_->setMinimumWidth(360); // px
    body()->addWidget(list_, 1);
    connect(list_, &PartList::sigAdd, this, [this] { pick(-1); });
    connect(list_, &PartList::sigEdit, this, [this](int row) {
        if (row < 0)
            account::tell(texts_.noneChosen, this);
        else
            pick(row);
    });
    connect(list_, &PartList::sigRemove, this, [this](int row) {
        if (row < 0) {
            account::tell(texts_.noneChosen, this);
            return;
        }
        refs_.removeAt(row);
        fill();
    });
    fill();
}

void UnionDialog::addButtons() {
    connect(addButton(tr("保存"), QStringLiteral("unionSave"), true), &QPushButton::clicked, this, [this] {
        if (refs_.isEmpty())
            account::tell(texts_.empty, this);
        else if (save())
            accept();
    });
    connect(addButton(tr("取消"), QStringLiteral("unionCancel"), false), &QPushButton::clicked, this,
            &UnionDialog::reject);
}

void UnionDialog::pick(int row) {
    const auto current = row < 0 ? std::nullopt : std::optional(refs_[row]);
    const auto chosen = [this, row](const linkage::PortRef& ref) {
        if (row < 0)
            refs_ += ref;
        else
            refs_[row] = ref;
        fill();
    };
    // They delete themselves.
    if (kind_ == PortKind::Input)
        (new LinkageSignalConditionDialog(boards_, current, chosen, this))->open();
    else
        (new LinkageSignalActionDialog(boards_, current, chosen, this))->open();
}

void UnionDialog::fill() {
    QStringList rows;
    for (const linkage::PortRef& ref : qAsConst(refs_))
        rows += boards_.text(ref, kind_);
    list_->setRows(rows);
}

LinkageComboxConditionDialog::LinkageComboxConditionDialog(const linkage::Boards& boards, const QStringList& logics,
                                                           const std::optional<linkage::ConditionUnion>& current,
                                                           Chosen chosen, QWidget* parent)
    : UnionDialog(PortKind::Input, {tr("组合条件"), tr("条件"), tr("请先添加条件!"), tr("请选择一个条件!")}, boards,
                  current ? current->inputs : QList<linkage::PortRef>(), parent)
    , condition_(current.value_or(linkage::ConditionUnion()))
    , chosen_(std::move(chosen)) {
    setObjectName(QStringLiteral("LinkageComboxConditionDialog"));
    QFormLayout* const form = account::makeForm();
    logic_ = linkage::addCombo(*form, tr("条件关系"), QStringLiteral("unionLogic"));
    logic_->addItems(logics);
    logic_->setCurrentIndex(condition_.logic == linkage::logics()[0].code ? 0 : 1);
    body()->addLayout(form);
    addButtons();
}

bool LinkageComboxConditionDialog::save() {
    condition_.inputs = refs();
    condition_.logic = linkage::logics()[logic_->currentIndex() == 0 ? 0 : 1].code;
    chosen_(condition_);
    return true;
}

LinkageComboxlActionDialog::LinkageComboxlActionDialog(const linkage::Boards& boards,
                                                       const std::optional<linkage::ActionUnion>& current,
                                                       Chosen chosen, QWidget* parent)
    : UnionDialog(PortKind::Output, {tr("组合动作"), tr("动作"), tr("请先添加动作!"), tr("请选择一个动作!")}, boards,
                  current ? current->outputs : QList<linkage::PortRef>(), parent)
    , action_(current.value_or(linkage::ActionUnion()))
    , chosen_(std::move(chosen)) {
    setObjectName(QStringLiteral("LinkageComboxlActionDialog"));
    QFormLayout* const form = account::makeForm();
    outMode_ = linkage::addCombo(*form, tr("执行方式"), QStringLiteral("unionOutMode"));
    linkage::fill(*outMode_, linkage::outModes());
    outMode_->setCurrentIndex(action_.outMode == linkage::outModes()[0].code ? 0 : 1);
    interval_ = linkage::makeInterval(QStringLiteral("unionInterval"), this);
    if (action_.interval != 0)
        interval_->setText(linkage::shownInterval(action_.interval));
    form->addRow(tr("执行时间间隔"), interval_);
    form->addRow(QString(), linkage::makeHint(tr("单位：ms"), this));
    body()->addLayout(form);
    addButtons();
}

bool LinkageComboxlActionDialog::save() {
    action_.outputs = refs();
    action_.outMode = outMode_->currentData().toString();
    if (const auto problem = linkage::checkInterval(action_.outMode, interval_->text())) {
        account::tell(*problem, this);
        return false;
    }
    action_.interval = linkage::storedInterval(interval_->text());
    chosen_(action_);
    return true;
}
