#include "sensor/ui/BoardDialog.h"

#include "account/ui/AccountForm.h"
#include "base/RequestBuilder.h"
#include "base/ui/TipDialog.h"
#include "manageWidget/ui/ManageSend.h"
#include "sensor/Samples.h"
#include "sensor/ui/FieldForm.h"
#include "sensor/ui/PortDialog.h"
#include "sensor/ui/SensorSend.h"
#include "sensor/ui/WriteDialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvanta::sensor {
namespace {

constexpr int LongestName = 64;

QString textOf(const QVariantMap& map, const char* key) {
    return map.value(QLatin1String(key)).toString();
}

int pidOf(const QVariant& port) {
    return port.toMap().value(QStringLiteral("pid")).toInt();
}

} // namespace

BoardDialog::BoardDialog(const AppContext& context, const Subject& subject, QWidget* parent)
    : FramedDialog(subject.board.contains(QStringLiteral("pid")) ? tr("编辑传感器") : tr("新增传感器"), parent)
    , context_(context)
    , subject_(subject) {
    setObjectName(QStringLiteral("BoardDialog"));
    setAccessibleName(windowTitle());
    inputs_.list = subject_.board.value(QStringLiteral("input")).toList();
    outputs_.isInput = false;
    outputs_.list = subject_.board.value(QStringLiteral("output")).toList();
    auto* const tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("boardTabs"));
    tabs->setAccessibleName(tr("传感器的设置"));
    tabs->addTab(makeParameters(), tr("参数"));
    tabs->addTab(makePorts(inputs_), tr("采集输入"));
    tabs->addTab(makePorts(outputs_), tr("控制输出"));
    body()->addWidget(tabs, 1);
    save_ = addButton(tr("保存"), QStringLiteral("boardSave"), true);
    connect(save_, &QPushButton::clicked, this, &BoardDialog::save);
    connect(addButton(tr("取消"), QStringLiteral("boardCancel"), false), &QPushButton::clicked, this,
            &QDialog::reject);
    resize(560, 340); // px
}

QWidget* BoardDialog::makeParameters() {
    auto* const inside = new QWidget(this);
    inside->setObjectName(QStringLiteral("dialogBody")); // as light as the dialog
    auto* const column = new QVBoxLayout(inside);
    QFormLayout* const form = account::makeForm();
    name_ = account::addField(*form, tr("名称"), tr("名称"), QStringLiteral("boardName"));
    name_->setText(textOf(subject_.board, "name"));
    interface_ = new QComboBox(inside);
    interface_->setObjectName(QStringLiteral("boardInterface"));
    interface_->setAccessibleName(tr("通信接口"));
    QStringList names = subject_.interfaces;
    const QString own = textOf(subject_.board, "ifname");
    if (!names.contains(own) && (!own.isEmpty() || names.isEmpty()))
        names.prepend(own);
    interface_->addItems(names);
    if (!own.isEmpty())
        interface_->setCurrentText(own);
    form->addRow(tr("通信接口"), interface_);
    column->addLayout(form);
    fields_ = new FieldForm(subject_.type.fields, subject_.board.value(QStringLiteral("params")).toMap(), inside);
    column->addWidget(fields_);
    column->addStretch(1);
    auto* const scroll = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("boardScroll"));
    scroll->setAccessibleName(tr("传感器参数"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setWidget(inside);
    return scroll;
}

QPushButton* BoardDialog::portButton(const QString& text, const QString& objectName) {
    auto* const button = new QPushButton(text, this);
    button->setObjectName(objectName);
    button->setAccessibleName(text);
    button->setAutoDefault(false);
    return button;
}

QWidget* BoardDialog::makePorts(Ports& ports) {
    const QString kind = ports.isInput ? QStringLiteral("input") : QStringLiteral("output");
    auto* const page = new QWidget(this);
    auto* const column = new QVBoxLayout(page);
    ports.view = new QTreeWidget(page);
    ports.view->setObjectName(kind + QStringLiteral("List"));
    ports.view->setAccessibleName(ports.isInput ? tr("采集输入列表") : tr("控制输出列表"));
    ports.view->setHeaderLabels({tr("名称"), tr("数值"), tr("单位"), tr("通讯")});
    ports.view->setRootIsDecorated(false);
    ports.view->setMinimumHeight(96); // px
    ports.view->header()->resizeSection(0, 200);
    column->addWidget(ports.view, 1);
    auto* const row = new QHBoxLayout;
    QPushButton* const add = portButton(tr("新增"), kind + QStringLiteral("Add"));
    ports.edit = portButton(tr("编辑"), kind + QStringLiteral("Edit"));
    ports.remove = portButton(tr("删除"), kind + QStringLiteral("Remove"));
    ports.use = portButton(ports.isInput ? tr("立即读取") : tr("立即写入"), kind + QStringLiteral("Use"));
    for (QPushButton* const button : {add, ports.edit, ports.remove, ports.use})
        row->addWidget(button);
    row->addStretch(1);
    column->addLayout(row);
    connect(add, &QPushButton::clicked, this, [this, &ports] { editPort(ports, -1); });
    connect(ports.edit, &QPushButton::clicked, this,
            [this, &ports] { editPort(ports, ports.view->indexOfTopLevelItem(ports.view->currentItem())); });
    connect(ports.remove, &QPushButton::clicked, this, [this, &ports] { removePort(ports); });
    connect(ports.use, &QPushButton::clicked, this, [this, &ports] { ports.isInput ? read(ports) : write(ports); });
    connect(ports.view, &QTreeWidget::itemDoubleClicked, ports.edit, &QPushButton::click);
    connect(ports.view, &QTreeWidget::currentItemChanged, this, [this, &ports] { showButtons(ports); });
    fill(ports);
    return page;
}

void BoardDialog::fill(Ports& ports) {
    const int row = ports.view->indexOfTopLevelItem(ports.view->currentItem());
    ports.view->clear();
    for (const QVariant& entry : qAsConst(ports.list)) {
        const QVariantMap port = entry.toMap();
        const auto value = readNumber(port.value(QStringLiteral("value")));
        const bool isKnown = port.contains(QStringLiteral("state"));
        new QTreeWidgetItem(ports.view,
                            {textOf(port, "name"), value ? numberText(*value) : QString(), textOf(port, "unit"),
                             !isKnown                                      ? QString()
                             : textOf(port, "state") == QLatin1String("1") ? tr("正常")
                                                                           : tr("异常")});
    }
    if (ports.view->topLevelItemCount() > 0)
        ports.view->setCurrentItem(ports.view->topLevelItem(qBound(0, row, ports.view->topLevelItemCount() - 1)));
    showButtons(ports);
}

void BoardDialog::showButtons(Ports& ports) {
    const int row = ports.view->indexOfTopLevelItem(ports.view->currentItem());
    ports.edit->setEnabled(row >= 0);
    ports.remove->setEnabled(row >= 0);
    ports.use->setEnabled(row >= 0 && pidOf(ports.list.value(row)) > 0); // what is stored can be used
}

void BoardDialog::editPort(Ports& ports, int row) {
    const QVector<Field>& fields = ports.isInput ? subject_.type.inputFields : subject_.type.outputFields;
    // It is stored, so the same in every language.
    const QString name =
        (ports.isInput ? QStringLiteral("输入%1") : QStringLiteral("输出%1")).arg(ports.list.size() + 1);
    const QVariantMap port = row >= 0 ? ports.list.value(row).toMap() : newPort(fields, name, ports.isInput);
    PortDialog dialog(context_, {subject_.ipncId, port, fields, ports.isInput}, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (row >= 0)
        ports.list[row] = dialog.port();
    else
        ports.list += dialog.port();
    fill(ports);
    if (row < 0)
        ports.view->setCurrentItem(ports.view->topLevelItem(ports.list.size() - 1));
}

void BoardDialog::removePort(Ports& ports) {
    const int row = ports.view->indexOfTopLevelItem(ports.view->currentItem());
    if (row < 0)
        return;
    const QString name = textOf(ports.list.value(row).toMap(), "name");
    const QString text =
        pidOf(ports.list.value(row)) > 0 ? tr("确定删除“%1”? 保存后，其数据记录也会被删除。") : tr("确定删除“%1”?");
    if (!TipDialog::ask(tr("删除"), text.arg(name.left(LongestName)), true, this))
        return;
    ports.list.removeAt(row);
    fill(ports);
}

void BoardDialog::read(const Ports& ports) {
    const int row = ports.view->indexOfTopLevelItem(ports.view->currentItem());
    const int pid = pidOf(ports.list.value(row));
    readNow(context_, this, subject_.ipncId, pid, ports.use, [this, pid](const QVariantMap& answer) {
        for (QVariant& entry : inputs_.list) {
            QVariantMap port = entry.toMap();
            if (pidOf(port) != pid)
                continue;
            for (const char* const key : {"value", "state", "time"}) {
                if (answer.contains(QLatin1String(key)))
                    port.insert(QLatin1String(key), answer.value(QLatin1String(key)));
            }
            entry = port;
        }
        fill(inputs_);
    });
}

void BoardDialog::write(const Ports& ports) {
    const int row = ports.view->indexOfTopLevelItem(ports.view->currentItem());
    const QVariantMap port = ports.list.value(row).toMap();
    WriteDialog dialog(context_,
                       {subject_.ipncId, pidOf(port), name_->text() + QStringLiteral(" / ") + textOf(port, "name"),
                        textOf(port, "unit")},
                       this);
    dialog.exec();
}

QVariantMap BoardDialog::board() const {
    QVariantMap board = subject_.board;
    board.insert(QStringLiteral("name"), name_->text().trimmed());
    board.insert(QStringLiteral("ifname"), interface_->currentText());
    board.insert(QStringLiteral("params"), fields_->values());
    board.insert(QStringLiteral("input"), inputs_.list);
    board.insert(QStringLiteral("output"), outputs_.list);
    return board;
}

void BoardDialog::save() {
    std::optional<QString> problem = fields_->problem();
    if (name_->text().trimmed().isEmpty() || name_->text().size() > LongestName)
        problem = tr("名称应为1到%1个字符!").arg(LongestName);
    showProblem(problem.value_or(QString()));
    if (problem)
        return;
    const QVariantMap entered = board();
    manage::send(
        context_, this,
        {.json =
             requests::accountRequest(QStringLiteral("提交传感器管理"), {{QStringLiteral("ipncid"), subject_.ipncId},
                                                                         {QStringLiteral("sensorinfo"), entered}}),
         .busy = save_,
         .done = [this, entered](const QVariantMap&) {
             const QString what = entered.contains(QStringLiteral("pid")) ? QStringLiteral("编辑传感器")
                                                                          : QStringLiteral("新增传感器");
             logChange(context_, what,
                       QStringLiteral("%1 %2，采集输入 %3 个，控制输出 %4 个")
                           .arg(subject_.ipncId, textOf(entered, "name"), QString::number(inputs_.list.size()),
                                QString::number(outputs_.list.size())));
             accept();
         }});
}

} // namespace corvanta::sensor
