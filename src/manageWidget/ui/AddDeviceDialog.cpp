#include "manageWidget/ui/AddDeviceDialog.h"

#include "account/ui/AccountForm.h"
#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/ListRefresh.h"
#include "base/RequestBuilder.h"
#include "base/ui/Theme.h"
#include "manageWidget/AddressChecks.h"
#include "manageWidget/FlowRequest.h"
#include "manageWidget/ui/ManageSend.h"
#include "manageWidget/ui/TestPicture.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace account = corvanta::account;
namespace manage = corvanta::manage;
namespace requests = corvanta::requests;
namespace theme = corvanta::theme;
using manage::FoundDevice;
using manage::NewDevice;
using manage::ProbedCamera;

namespace {

constexpr int ProbePatience = 25000; // ms; a camera may take 20 s
constexpr int WidestColumn = 280;    // px; devices choose their names themselves
constexpr int UrlRole = Qt::UserRole + 1;
const QSize Usual(880, 520); // px

QLineEdit* secret(QLineEdit* edit) {
    edit->setEchoMode(QLineEdit::Password);
    return edit;
}

QTreeWidget* makeList(QWidget* parent, const char* objectName, const QString& name, const QStringList& columns) {
    auto* const list = new QTreeWidget(parent);
    list->setObjectName(QLatin1String(objectName));
    list->setAccessibleName(name);
    list->setHeaderLabels(columns);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    list->header()->setMaximumSectionSize(WidestColumn);
    list->header()->resizeSections(QHeaderView::ResizeToContents);
    return list;
}

} // namespace

AddDeviceDialog::AddDeviceDialog(const AppContext& context, const QString& groupId, QWidget* parent)
    : FramedDialog(tr("添加设备"), parent)
    , context_(context)
    , probing_(new FlowRequest(context.gateway, ProbePatience, this)) {
    setObjectName(QStringLiteral("AddDeviceDialog"));
    setAccessibleName(windowTitle());
    setSizeGripEnabled(true);
    auto* const row = new QHBoxLayout;
    row->setSpacing(4 * theme::Step);
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName(QStringLiteral("addWays"));
    tabs_->setAccessibleName(tr("添加方式"));
    tabs_->addTab(numberPage(), tr("设备编号"));
    tabs_->addTab(addressPage(), tr("RTSP地址"));
    tabs_->addTab(foundPage(), tr("网络发现"));
    row->addWidget(tabs_, 1);
    body()->addLayout(row, 1);
    buildPicture();
    QFormLayout* const form = account::makeForm();
    group_ = new QComboBox(this);
    group_->setObjectName(QStringLiteral("addGroup"));
    group_->setAccessibleName(tr("分组"));
    for (const GroupRecord& group : context_.devices.groups())
        group_->addItem(group.name, group.id);
    group_->setCurrentIndex(qMax(0, group_->findData(groupId)));
    form->addRow(tr("加入分组"), group_);
    body()->addLayout(form);
    save_ = addButton(tr("添加"), QStringLiteral("addSave"), true);
    connect(save_, &QPushButton::clicked, this, &AddDeviceDialog::save);
    connect(addButton(tr("取消"), QStringLiteral("addCancel"), false), &QPushButton::clicked, this, &QDialog::reject);
    connect(tabs_, &QTabWidget::currentChanged, this, &AddDeviceDialog::showChoice);
    connect(&context_.events, qOverload<QVariantMap>(&AppEvents::sig_freshlocal), this, &AddDeviceDialog::showFound);
    connect(probing_, &FlowRequest::sigDone, this, [this](const QVariantMap& reply) {
        probe_->setEnabled(true);
        showProbed(ProbedCamera::fromReply(reply.value(QStringLiteral("resp")).toMap()));
    });
    connect(probing_, &FlowRequest::sigFailed, this, [this](const QString& text) {
        probe_->setEnabled(true);
        account::tell(text, this);
    });
    showChoice();
    resize(Usual);
    ipncId_->setFocus();
}

QWidget* AddDeviceDialog::numberPage() {
    auto* const page = new QWidget;
    auto* const column = new QVBoxLayout(page);
    QFormLayout* const form = account::makeForm();
    ipncId_ = account::addField(*form, tr("设备编号"), tr("设备编号"), QStringLiteral("addIpncId"));
    ipncId_->setPlaceholderText(tr("设备标签上的编号"));
    word_ = secret(account::addField(*form, tr("验证码"), tr("验证码"), QStringLiteral("addWord")));
    word_->setPlaceholderText(tr("设备标签上的验证码"));
    ownName_ = account::addField(*form, tr("名称"), tr("名称"), QStringLiteral("addOwnName"));
    ownName_->setPlaceholderText(tr("不填写则使用设备自己的名称"));
    column->addLayout(form);
    column->addStretch(1);
    return page;
}

QWidget* AddDeviceDialog::addressPage() {
    auto* const page = new QWidget;
    auto* const row = new QHBoxLayout(page);
    row->setSpacing(4 * theme::Step);
    QFormLayout* const form = account::makeForm();
    name_ = account::addField(*form, tr("名称"), tr("名称"), QStringLiteral("addName"));
    main_ = account::addField(*form, tr("主码流"), tr("主码流地址"), QStringLiteral("addMain"));
    main_->setPlaceholderText(QStringLiteral("rtsp://192.168.1.64:554/main"));
    light_ = account::addField(*form, tr("子码流"), tr("子码流地址"), QStringLiteral("addLight"));
    light_->setPlaceholderText(tr("不填写则使用主码流"));
    user_ = account::addField(*form, tr("用户名"), tr("用户名"), QStringLiteral("addUser"));
    password_ = secret(account::addField(*form, tr("密码"), tr("密码"), QStringLiteral("addPassword")));
    // Another address is another camera, which was not probed.
    connect(main_, &QLineEdit::textEdited, this, [this] { onvif_.clear(); });
    row->addLayout(form, 1);
    return page;
}

void AddDeviceDialog::buildPicture() {
    auto* const row = static_cast<QHBoxLayout*>(tabs_->widget(1)->layout());
    auto* const column = new QVBoxLayout;
    picture_ = new TestPicture(context_, tabs_->widget(1));
    picture_->rest(tr("保存前可以先查看画面"));
    column->addWidget(picture_, 1);
    test_ = new QPushButton(tr("测试画面"), tabs_->widget(1));
    test_->setObjectName(QStringLiteral("addTest"));
    test_->setAccessibleName(tr("测试画面"));
    test_->setAutoDefault(false);
    column->addWidget(test_);
    row->addLayout(column, 1);
    connect(test_, &QPushButton::clicked, this, &AddDeviceDialog::testPicture);
    connect(picture_, &TestPicture::sigAnswered, test_, [this] { test_->setEnabled(true); });
}

QWidget* AddDeviceDialog::foundPage() {
    auto* const page = new QWidget;
    auto* const column = new QVBoxLayout(page);
    auto* const head = new QHBoxLayout;
    foundState_ = new QLabel(page);
    foundState_->setObjectName(QStringLiteral("foundState"));
    foundState_->setTextFormat(Qt::PlainText);
    head->addWidget(foundState_, 1);
    const auto button = [page](const QString& text, const char* objectName) {
        auto* const made = new QPushButton(text, page);
        made->setObjectName(QLatin1String(objectName));
        made->setAccessibleName(text);
        made->setAutoDefault(false);
        return made;
    };
    QPushButton* const refresh = button(tr("刷新"), "foundRefresh");
    head->addWidget(refresh);
    column->addLayout(head);
    foundList_ =
        makeList(page, "foundList", tr("发现的设备"), {tr("名称"), tr("地址"), tr("型号"), tr("类型"), tr("状态")});
    column->addWidget(foundList_, 2);
    auto* const row = new QHBoxLayout;
    QFormLayout* const form = account::makeForm();
    service_ = account::addField(*form, tr("摄像机地址"), tr("摄像机地址"), QStringLiteral("foundService"));
    service_->setPlaceholderText(tr("主机[:端口]"));
    foundUser_ = account::addField(*form, tr("用户名"), tr("摄像机用户名"), QStringLiteral("foundUser"));
    foundPassword_ = secret(account::addField(*form, tr("密码"), tr("摄像机密码"), QStringLiteral("foundPassword")));
    row->addLayout(form);
    auto* const right = new QVBoxLayout;
    probe_ = button(tr("探测"), "foundProbe");
    take_ = button(tr("填写编号"), "foundTake");
    right->addWidget(probe_);
    right->addWidget(take_);
    right->addStretch(1);
    row->addLayout(right);
    profiles_ = makeList(page, "foundProfiles", tr("摄像机的码流"), {tr("码流"), tr("编码"), tr("尺寸"), tr("帧率")});
    row->addWidget(profiles_, 1);
    column->addLayout(row, 1);
    connect(refresh, &QPushButton::clicked, this, &AddDeviceDialog::refreshFound);
    connect(probe_, &QPushButton::clicked, this, &AddDeviceDialog::probe);
    connect(take_, &QPushButton::clicked, this, &AddDeviceDialog::takeFound);
    connect(foundList_, &QTreeWidget::itemSelectionChanged, this, &AddDeviceDialog::showChoice);
    connect(profiles_, &QTreeWidget::itemActivated, this,
            [this](const QTreeWidgetItem* item) { takeProfile(*item); });
    return page;
}

void AddDeviceDialog::showPage(Page page) {
    tabs_->setCurrentIndex(static_cast<int>(page));
}

void AddDeviceDialog::refreshFound() {
    foundState_->setText(tr("正在搜索本地网络…"));
    corvanta::refreshLocalList(context_.gateway, context_.events, {});
}

void AddDeviceDialog::showFound(const QVariantMap& found) {
    const FoundDevice* const before = chosenFound();
    const QString chosen = before == nullptr ? QString() : before->id;
    found_ = FoundDevice::listFrom(found);
    foundList_->clear();
    for (const FoundDevice& device : qAsConst(found_)) {
        const bool isCamera = device.isOnvif || !device.url.isEmpty();
        auto* const row =
            new QTreeWidgetItem(foundList_, {device.displayName(), device.ip, device.model,
                                             device.isOnvif ? QStringLiteral("ONVIF")
                                             : isCamera     ? tr("网络摄像机")
                                                            : tr("设备"),
                                             device.isAdded ? tr("已添加") : tr("未添加")}); // the list owns it
        row->setToolTip(0, device.id.toHtmlEscaped());
        if (device.id == chosen)
            foundList_->setCurrentItem(row);
    }
    foundList_->header()->resizeSections(QHeaderView::ResizeToContents);
    foundState_->setText(found_.isEmpty() ? tr("没有发现设备，请检查网络后刷新。")
                                          : tr("发现%1个设备").arg(found_.size()));
}

const FoundDevice* AddDeviceDialog::chosenFound() const {
    const int row = foundList_->indexOfTopLevelItem(foundList_->currentItem());
    return row >= 0 && row < found_.size() ? &found_[row] : nullptr;
}

void AddDeviceDialog::showChoice() {
    const bool isFoundPage = tabs_->currentIndex() == static_cast<int>(Page::Found);
    if (isFoundPage && foundState_->text().isEmpty())
        refreshFound();
    const FoundDevice* const device = chosenFound();
    const bool isCamera = device != nullptr && (device->isOnvif || !device->url.isEmpty());
    if (device != nullptr && isFoundPage && isCamera)
        service_->setText(device->isOnvif ? device->url : device->ip);
    take_->setEnabled(device != nullptr && !isCamera && !device->isAdded);
    save_->setEnabled(!isFoundPage);
}

void AddDeviceDialog::takeFound() {
    if (const FoundDevice* const device = chosenFound()) {
        ipncId_->setText(device->id);
        ownName_->setText(device->name);
        showPage(Page::Number);
        word_->setFocus();
    }
}

void AddDeviceDialog::probe() {
    const QString address = service_->text().trimmed();
    if (const auto problem = manage::checkCameraService(address)) {
        account::tell(*problem, this);
        return;
    }
    QVariantMap parameters{{QStringLiteral("url"), address}};
    if (!foundUser_->text().isEmpty()) {
        parameters.insert(QStringLiteral("user"), foundUser_->text());
        parameters.insert(QStringLiteral("password"), foundPassword_->text());
    }
    profiles_->clear();
    probe_->setEnabled(false);
    probing_->start(requests::deviceRequest(QStringLiteral("探测网络摄像机"), parameters));
}

void AddDeviceDialog::showProbed(const ProbedCamera& camera) {
    for (const ProbedCamera::Profile& profile : camera.profiles) {
        auto* const row = new QTreeWidgetItem(
            profiles_, {profile.name, profile.codec, profile.size, QString::number(profile.fps)}); // the list owns it
        row->setData(0, UrlRole, profile.url);
        row->setDisabled(profile.url.isEmpty());
    }
    profiles_->header()->resizeSections(QHeaderView::ResizeToContents);
    main_->setText(camera.main);
    light_->setText(camera.light == camera.main ? QString() : camera.light);
    user_->setText(foundUser_->text());
    password_->setText(foundPassword_->text());
    onvif_ = service_->text().trimmed();
    const FoundDevice* const device = chosenFound();
    name_->setText(device != nullptr && !device->name.isEmpty()
                       ? device->name.left(64)
                       : (camera.manufacturer + QLatin1Char(' ') + camera.model).trimmed().left(64));
    picture_->rest(tr("保存前可以先查看画面"));
    showPage(Page::Address);
    name_->setFocus();
}

void AddDeviceDialog::takeProfile(const QTreeWidgetItem& item) {
    const QString url = item.data(0, UrlRole).toString();
    if (url.isEmpty())
        return;
    main_->setText(url);
    showPage(Page::Address);
}

NewDevice AddDeviceDialog::entered() const {
    NewDevice device;
    device.groupId = group_->currentData().toString();
    if (tabs_->currentIndex() == static_cast<int>(Page::Number)) {
        device.ipncId = ipncId_->text().trimmed();
        device.word = word_->text();
        device.name = ownName_->text().trimmed();
        return device;
    }
    device.way = onvif_.isEmpty() ? NewDevice::Way::Address : NewDevice::Way::Found;
    device.name = name_->text().trimmed();
    device.main = main_->text().trimmed();
    device.light = light_->text().trimmed();
    device.user = user_->text();
    device.password = password_->text();
    device.onvif = onvif_;
    return device;
}

void AddDeviceDialog::testPicture() {
    const NewDevice device = entered();
    if (const auto problem = manage::checkRtsp(tr("主码流地址"), device.main)) {
        account::tell(*problem, this);
        return;
    }
    test_->setEnabled(false);
    picture_->ask(device.main, device.user, device.password);
}

void AddDeviceDialog::save() {
    const NewDevice device = entered();
    if (const auto problem = manage::problem(device)) {
        account::tell(*problem, this);
        return;
    }
    manage::send(context_, this,
                 {.json = requests::accountRequest(QStringLiteral("添加设备"), manage::parameters(device)),
                  .busy = save_,
                  .done = [this, device](const QVariantMap& resp) {
                      const QString id = resp.value(QStringLiteral("ipncid"), device.ipncId).toString();
                      manage::log(context_, QStringLiteral("添加设备"), id + QLatin1Char(' ') + device.name);
                      account::tell(tr("添加成功!"), parentWidget());
                      accept();
                  }});
}
