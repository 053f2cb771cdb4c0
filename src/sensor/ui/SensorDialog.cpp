#include "sensor/ui/SensorDialog.h"

#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "base/ServiceWords.h"
#include "base/ui/TipDialog.h"
#include "manageWidget/ui/ManageSend.h"
#include "sensor/ui/BoardDialog.h"
#include "sensor/ui/SensorSend.h"
#include "vision/ui/LaserSetDialog.h"
#include "vision/ui/QRcodeInputsetDialog.h"

#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvanta::sensor {
namespace {

QString textOf(const QVariantMap& map, const char* key) {
    return map.value(QLatin1String(key)).toString();
}

/// Of a board whose inputs are measured by the device's camera.
bool isMeasured(const QString& type) {
    return type == QLatin1String("QR") || type == QLatin1String("LASER");
}

QString plain(QString text) {
    return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

} // namespace

SensorDialog::SensorDialog(const AppContext& context, const QString& ipncId, QWidget* parent)
    : FramedDialog(tr("传感器设置"), parent)
    , context_(context)
    , ipncId_(ipncId) {
    setObjectName(QStringLiteral("SensorDialog"));
    setAccessibleName(tr("传感器设置"));
    const DeviceRecord* const device = context_.devices.device(ipncId);
    auto* const name = new QLabel(device == nullptr ? ipncId : device->displayName(), this);
    name->setTextFormat(Qt::PlainText);
    body()->addWidget(name);
    list_ = new QTreeWidget(this);
    list_->setObjectName(QStringLiteral("boardList"));
    list_->setAccessibleName(tr("传感器列表"));
    list_->setHeaderLabels({tr("名称"), tr("类型"), tr("通信接口"), tr("采集输入"), tr("控制输出"), tr("状态")});
    list_->setRootIsDecorated(false);
    list_->setMinimumSize(520, 140);                       // px
    static constexpr int widths[] = {140, 88, 88, 72, 72}; // px
    for (int column = 0; column < 5; ++column)
        list_->header()->resizeSection(column, widths[column]);
    body()->addWidget(list_, 1);
    state_ = new QLabel(tr("正在读取传感器类型..."), this);
    state_->setObjectName(QStringLiteral("hint"));
    state_->setWordWrap(true);
    body()->addWidget(state_);
    add_ = addButton(tr("新增"), QStringLiteral("boardAdd"), false);
    new_ = new QMenu(add_);
    new_->setObjectName(QStringLiteral("boardNew"));
    new_->setAccessibleName(tr("新增传感器"));
    add_->setMenu(new_);
    edit_ = addButton(tr("编辑"), QStringLiteral("boardEdit"), false);
    remove_ = addButton(tr("删除"), QStringLiteral("boardRemove"), false);
    measure_ = addButton(tr("测距配置"), QStringLiteral("boardMeasure"), false);
    connect(measure_, &QPushButton::clicked, this, &SensorDialog::measure);
    connect(addButton(tr("关闭"), QStringLiteral("boardClose"), false), &QPushButton::clicked, this,
            &QDialog::reject);
    connect(edit_, &QPushButton::clicked, this, [this] {
        if (const QVariantMap* const board = current())
            edit(QVariantMap(*board));
    });
    connect(remove_, &QPushButton::clicked, this, &SensorDialog::remove);
    connect(list_, &QTreeWidget::currentItemChanged, this, &SensorDialog::showButtons);
    connect(list_, &QTreeWidget::itemActivated, edit_, &QPushButton::click);
    connect(&context_.events, &AppEvents::sig_updateSensorList, this, &SensorDialog::fill);
    fill();
    readTypes();
    readInterfaces();
}

void SensorDialog::readTypes() {
    manage::send(context_, this,
                 {.json = requests::accountRequest(QStringLiteral("获取传感器模板")),
                  .done =
                      [this](const QVariantMap& resp) {
                          types_ = SensorTypes::fromReply(resp);
                          fillMenu();
                          fill();
                      },
                  .failed =
                      [this](const QString& text) {
                          state_->setText(text);
                      }});
}

void SensorDialog::readInterfaces() {
    manage::send(
        context_, this,
        {.json = requests::accountRequest(QStringLiteral("获取通信接口"), {{QStringLiteral("ipncid"), ipncId_}}),
         .done = [this](const QVariantMap& resp) { interfaces_ = resp.value(QStringLiteral("interfaces")).toList(); },
         .failed =
             [this](const QString& text) {
                 state_->setText(text);
             }});
}

void SensorDialog::fillMenu() {
    new_->clear();
    for (const BoardTemplate& one : qAsConst(types_.templates)) {
        QVariantMap board = newBoard(*types_.type(one.type));
        for (auto value = one.board.begin(); value != one.board.end(); ++value)
            board.insert(value.key(), value.value());
        board.remove(QStringLiteral("pid"));
        new_->addAction(plain(tr("模板：%1").arg(one.name)), this, [this, board] { edit(board); });
    }
    new_->addSeparator();
    for (const SensorType& type : qAsConst(types_.types))
        new_->addAction(plain(serviceWord(type.name)), this, [this, board = newBoard(type)] { edit(board); });
}

void SensorDialog::fill() {
    const QVariantMap* const kept = current();
    const int chosen = kept == nullptr ? 0 : kept->value(QStringLiteral("pid")).toInt();
    const DeviceRecord* const device = context_.devices.device(ipncId_);
    boards_ = device == nullptr ? QVector<QVariantMap>() : boardsOf(*device);
    list_->clear();
    for (const QVariantMap& board : qAsConst(boards_)) {
        const SensorType* const type = types_.type(textOf(board, "type"));
        const QVariant online = board.value(QStringLiteral("online"));
        new QTreeWidgetItem(
            list_, {textOf(board, "name"), type == nullptr ? textOf(board, "type") : serviceWord(type->name),
                    textOf(board, "ifname"), QString::number(board.value(QStringLiteral("input")).toList().size()),
                    QString::number(board.value(QStringLiteral("output")).toList().size()),
                    !online.isValid() ? QString()
                    : online.toBool() ? tr("在线")
                                      : tr("离线")});
    }
    select(chosen);
    if (!types_.types.isEmpty())
        state_->setText(boards_.isEmpty() ? tr("该设备还没有传感器，请点击“新增”") : QString());
    showButtons();
}

void SensorDialog::select(int pid) {
    for (int row = 0; row < boards_.size(); ++row) {
        if (boards_[row].value(QStringLiteral("pid")).toInt() == pid)
            list_->setCurrentItem(list_->topLevelItem(row));
    }
}

const QVariantMap* SensorDialog::current() const {
    const int row = list_->indexOfTopLevelItem(list_->currentItem());
    return row >= 0 && row < boards_.size() ? &boards_[row] : nullptr;
}

void SensorDialog::showButtons() {
    const QVariantMap* const board = current();
    add_->setEnabled(!types_.types.isEmpty());
    edit_->setEnabled(board != nullptr && types_.type(textOf(*board, "type")) != nullptr);
    remove_->setEnabled(board != nullptr);
    const DeviceRecord* const device = context_.devices.device(ipncId_);
    measure_->setVisible(board != nullptr && isMeasured(textOf(*board, "type")));
    measure_->setEnabled(device != nullptr && device->isAdmin);
}

void SensorDialog::measure() {
    const QVariantMap* const board = current();
    if (board == nullptr)
        return;
    QDialog* const dialog = textOf(*board, "type") == QLatin1String("QR")
                                ? static_cast<QDialog*>(new vision::QRcodeInputsetDialog(context_, ipncId_, this))
                                : new vision::LaserSetDialog(context_, ipncId_, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose); // this dialog may be closed meanwhile, with all that lies over it
    dialog->open();
}

void SensorDialog::edit(const QVariantMap& board) {
    const SensorType* const type = types_.type(textOf(board, "type"));
    if (type == nullptr)
        return;
    QStringList free;
    for (const QVariant& entry : qAsConst(interfaces_)) {
        const QVariantMap one = entry.toMap();
        if (textOf(one, "type") == type->type && !one.value(QStringLiteral("used")).toBool())
            free += textOf(one, "ifname");
    }
    BoardDialog dialog(context_, {ipncId_, board, *type, free}, this);
    if (dialog.exec() == QDialog::Accepted)
        readInterfaces();
}

void SensorDialog::remove() {
    const QVariantMap* const board = current();
    if (board == nullptr)
        return;
    const int pid = board->value(QStringLiteral("pid")).toInt();
    const QString name = textOf(*board, "name");
    const QString text = tr("确定删除传感器“%1”? 其采集输入和数据记录也会被删除。").arg(name.left(64));
    TipDialog::offer(
        {tr("删除传感器"), text, tr("删除"), tr("取消"), true}, this, {[this, pid, name] {
            manage::send(
                context_, this,
                {.json = requests::accountRequest(QStringLiteral("删除传感器"), {{QStringLiteral("ipncid"), ipncId_},
                                                                                 {QStringLiteral("pid"), pid}}),
                 .busy = remove_,
                 .done = [this, pid, name](const QVariantMap&) {
                     logChange(context_, QStringLiteral("删除传感器"), ipncId_ + QLatin1Char(' ') + name);
                     emit context_.events.sig_DeleteMapIcon(QString::number(pid));
                     readInterfaces();
                 }});
        }});
}

} // namespace corvanta::sensor
