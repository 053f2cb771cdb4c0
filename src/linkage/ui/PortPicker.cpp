#include "linkage/ui/PortPicker.h"

#include "account/ui/AccountForm.h"
#include "linkage/ui/LinkageForm.h"

#include <QComboBox>
#include <QFormLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace account = corvanta::account;
namespace linkage = corvanta::linkage;

PortPicker::PortPicker(linkage::PortKind kind, const Texts& texts, const linkage::Boards& boards,
                       const std::optional<linkage::PortRef>& current, Chosen chosen, QWidget* parent)
    : FramedDialog(texts.title, parent)
    , kind_(kind)
    , noPort_(texts.noPort)
    , boards_(boards)
    , ref_(current.value_or(linkage::PortRef()))
    , chosen_(std::move(chosen)) {
    setAccessibleName(texts.title);
    setAttribute(Qt::WA_DeleteOnClose);
    QFormLayout* const form = account::makeForm();
    sensor_ = linkage::addCombo(*form, tr("传感器"), QStringLiteral("sensor"));
    port_ = linkage::addCombo(*form, texts.portLabel, QStringLiteral("port"));
    body()->addLayout(form);
    for (const linkage::Board& board : boards_.all()) {
        if (!board.ports(kind_).isEmpty())
            sensor_->addItem(board.name, board.pid);
    }
    sensor_->setCurrentIndex(sensor_->findData(ref_.ifpid));
    if (current && !boards_.has(ref_, kind_))
        showProblem(boards_.name(ref_, kind_));
    fillPorts();
    connect(sensor_, qOverload<int>(&QComboBox::currentIndexChanged), this, &PortPicker::fillPorts);
    connect(addButton(tr("保存"), QStringLiteral("pickSave"), true), &QPushButton::clicked, this, &PortPicker::save);
    connect(addButton(tr("取消"), QStringLiteral("pickCancel"), false), &QPushButton::clicked, this,
            &PortPicker::reject);
}

void PortPicker::fillPorts() {
    port_->clear();
    if (const linkage::Board* const board = boards_.board(sensor_->currentData().toInt())) {
        for (const linkage::Port& port : board->ports(kind_))
            port_->addItem(port.name, port.pid);
    }
    port_->setCurrentIndex(port_->findData(ref_.pid));
}

void PortPicker::save() {
    if (sensor_->currentIndex() < 0) {
        account::tell(tr("请选择传感器!"), this);
        return;
    }
    if (port_->currentIndex() < 0) {
        account::tell(noPort_, this);
        return;
    }
    ref_.ifpid = sensor_->currentData().toInt();
    ref_.pid = port_->currentData().toInt();
    ref_.name = boards_.name(ref_, kind_);
    chosen_(ref_);
    accept();
}

LinkageSignalConditionDialog::LinkageSignalConditionDialog(const linkage::Boards& boards,
                                                           const std::optional<linkage::PortRef>& current,
                                                           Chosen chosen, QWidget* parent)
    : PortPicker(linkage::PortKind::Input, {tr("单条件"), tr("采集输入"), tr("请选择采集输入!")}, boards, current,
                 std::move(chosen), parent) {
    setObjectName(QStringLiteral("LinkageSignalConditionDialog"));
}

LinkageSignalActionDialog::LinkageSignalActionDialog(const linkage::Boards& boards,
                                                     const std::optional<linkage::PortRef>& current, Chosen chosen,
                                                     QWidget* parent)
    : PortPicker(linkage::PortKind::Output, {tr("单动作"), tr("控制输出"), tr("请选择一个动作!")}, boards, current,
                 std::move(chosen), parent) {
    setObjectName(QStringLiteral("LinkageSignalActionDialog"));
}
