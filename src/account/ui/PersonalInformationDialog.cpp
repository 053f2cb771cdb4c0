#include "account/ui/PersonalInformationDialog.h"

#include "account/AccountLog.h"
#include "account/EntryChecks.h"
#include "account/HeadPicture.h"
#include "account/RememberedLogins.h"
#include "account/ui/AccountForm.h"
#include "account/ui/PhoneFlowPages.h"
#include "base/SdkGateway.h"
#include "base/WholeFile.h"
#include "base/ui/FileChooser.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QStandardPaths>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QVariant>

namespace account = corvanta::account;
namespace theme = corvanta::theme;

namespace {

constexpr int PreviewSide = 96; // px

QPushButton* makeButton(const QString& text, const char* objectName, QWidget* parent) {
    auto* const button = new QPushButton(text, parent);
    button->setObjectName(QLatin1String(objectName));
    button->setAccessibleName(text);
    button->setAutoDefault(false);
    return button;
}

} // namespace

PersonalInformationDialog::PersonalInformationDialog(const AppContext& context, HeadIcons& icons, QWidget* parent)
    : FramedDialog(tr("个人信息"), parent)
    , context_(context)
    , icons_(icons)
    , account_(context.gateway.phoneId()) {
    setObjectName(QStringLiteral("PersonalInformationDialog"));
    setAccessibleName(tr("个人信息"));
    auto* const tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("personTabs"));
    tabs->setAccessibleName(tr("个人信息"));
    tabs->addTab(makeInformation(tabs), tr("个人信息"));
    tabs->addTab(makePassword(tabs), tr("修改密码"));
    body()->addWidget(tabs, 1);
    unbind_ = addButton(tr("解除绑定"), QStringLiteral("unbind"), false);
    auto* const close = addButton(tr("关闭"), QStringLiteral("personClose"), false);
    connect(unbind_, &QPushButton::clicked, this, &PersonalInformationDialog::askToUnbind);
    connect(close, &QPushButton::clicked, this, &PersonalInformationDialog::reject);
    showKeptHead();
    load();
}

QWidget* PersonalInformationDialog::makeInformation(QWidget* parent) {
    auto* const page = new QWidget(parent);
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(4 * theme::Step, 4 * theme::Step, 4 * theme::Step, 4 * theme::Step);
    QFormLayout* const form = account::makeForm();
    column->addLayout(form);
    auto* const number = new QLabel(account_, page);
    number->setObjectName(QStringLiteral("personNumber"));
    number->setTextFormat(Qt::PlainText);
    number->setMinimumHeight(theme::ControlHeight);
    form->addRow(tr("当前登录账户："), number);
    auto* const nameRow = new QHBoxLayout;
    nameRow->setSpacing(2 * theme::Step);
    nickname_ = new QLineEdit(page);
    nickname_->setObjectName(QStringLiteral("nickname"));
    nickname_->setAccessibleName(tr("昵称"));
    nickname_->setMinimumWidth(220); // px
    saveNickname_ = makeButton(tr("保存"), "nicknameSave", page);
    saveNickname_->setAccessibleName(tr("保存昵称"));
    nameRow->addWidget(nickname_, 1);
    nameRow->addWidget(saveNickname_);
    form->addRow(tr("昵称："), nameRow);
    form->addRow(tr("头  像"), makeHead(page));
    column->addStretch(1);
    connect(saveNickname_, &QPushButton::clicked, this, &PersonalInformationDialog::saveNickname);
    connect(nickname_, &QLineEdit::returnPressed, this, &PersonalInformationDialog::saveNickname);
    return page;
}

QLayout* PersonalInformationDialog::makeHead(QWidget* parent) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(4 * theme::Step);
    head_ = new QLabel(parent);
    head_->setObjectName(QStringLiteral("headPreview"));
    head_->setAccessibleName(tr("头像"));
    head_->setFixedSize(PreviewSide + 2, PreviewSide + 2);
    head_->setAlignment(Qt::AlignCenter);
    row->addWidget(head_, 0, Qt::AlignTop);
    auto* const beside = new QVBoxLayout;
    beside->setSpacing(2 * theme::Step);
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(2 * theme::Step);
    auto* const choose = makeButton(tr("选择文件"), "headChoose", parent);
    saveHead_ = makeButton(tr("保存"), "headSave", parent);
    saveHead_->setAccessibleName(tr("保存头像"));
    saveHead_->setEnabled(false);
    buttons->addWidget(choose);
    buttons->addWidget(saveHead_);
    buttons->addStretch(1);
    beside->addLayout(buttons);
    for (const QString& text : {tr("图片大小：小于1M"), tr("图片格式：png/jpg")}) {
        auto* const hint = new QLabel(text, parent);
        hint->setProperty("role", QStringLiteral("hint"));
        beside->addWidget(hint);
    }
    beside->addStretch(1);
    row->addLayout(beside, 1);
    connect(choose, &QPushButton::clicked, this, &PersonalInformationDialog::chooseHead);
    connect(saveHead_, &QPushButton::clicked, this, &PersonalInformationDialog::saveHead);
    return row;
}

QWidget* PersonalInformationDialog::makePassword(QWidget* parent) {
    auto* const page = new QWidget(parent);
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(4 * theme::Step, 4 * theme::Step, 4 * theme::Step, 4 * theme::Step);
    password_ = new PhoneFlowPages(context_, account::FlowUse::ChangePassword, page);
    password_->setNumber(account_, true);
    column->addWidget(password_, 1);
    connect(password_, &PhoneFlowPages::sigDone, this, &PersonalInformationDialog::passwordChanged);
    return page;
}

void PersonalInformationDialog::load() {
    account::send(context_, this,
                  {.operation = QStringLiteral("获取个人信息"), .done = [this](const QVariantMap& resp) {
                       const QVariantMap person = resp.value(QStringLiteral("persioninfo")).toMap();
                       if (!nickname_->isModified())
                           nickname_->setText(person.value(QStringLiteral("nickname")).toString());
                   }});
}

void PersonalInformationDialog::showKeptHead() {
    const auto file = account::ownHeadFile(context_.paths, account_);
    const QImage picture = file ? account::readHeadPicture(*file, PreviewSide) : QImage();
    head_->setPixmap(
        picture.isNull()
            ? corvanta::svgIcon(QStringLiteral("user"), theme::FaintOnLight).pixmap(PreviewSide / 2, PreviewSide / 2)
            : QPixmap::fromImage(picture));
}

void PersonalInformationDialog::saveNickname() {
    const QString name = nickname_->text().trimmed();
    if (const auto problem = account::checkName(name, tr("请输入昵称!"))) {
        account::tell(*problem, this);
        return;
    }
    account::send(context_, this,
                  {.operation = QStringLiteral("设置手机昵称"),
                   .parameters = {{QStringLiteral("nickname"), name}},
                   .busy = saveNickname_,
                   .done = [this, name](const QVariantMap&) {
                       account::logChange(context_.operationLog, account_, account::Change::Nickname, name);
                       account::tell(tr("设置昵称成功!"), this);
                   }});
}

void PersonalInformationDialog::chooseHead() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    const QString file =
        chooseFile(this, tr("选择图像"), folder, QStringLiteral("Images (*.png *.bmp *.jpg *.tif *.GIF)"));
    if (!file.isEmpty())
        takeHeadFile(file);
}

void PersonalInformationDialog::takeHeadFile(const QString& file) {
    const account::CheckedHead checked = account::checkHeadPicture(file, PreviewSide);
    if (!checked.isValid()) {
        account::tell(checked.problem, this);
        return;
    }
    headFile_ = QFileInfo(file).absoluteFilePath();
    head_->setPixmap(QPixmap::fromImage(checked.picture));
    saveHead_->setEnabled(true);
}

void PersonalInformationDialog::saveHead() {
    // The file may have become another one since it was chosen.
    const account::CheckedHead checked = account::checkHeadPicture(headFile_, PreviewSide);
    if (!checked.isValid()) {
        account::tell(checked.problem, this);
        return;
    }
    account::send(context_, this,
                  {.operation = QStringLiteral("上传个人头像"),
                   .parameters = {{QStringLiteral("uploadpath"), headFile_}},
                   .busy = saveHead_,
                   .done = [this, file = headFile_](const QVariantMap&) {
                       keepHead(file);
                       account::logChange(context_.operationLog, account_, account::Change::HeadPicture,
                                          QFileInfo(file).fileName());
                       account::tell(tr("保存头像成功!"), this);
                   }});
}

void PersonalInformationDialog::keepHead(const QString& file) {
    const auto kept = account::ownHeadFile(context_.paths, account_);
    QFile chosen(file);
    if (!kept || !chosen.open(QIODevice::ReadOnly))
        return;
    if (const QString problem = corvanta::writeWholeFile(*kept, chosen.read(account::LargestHeadFile));
        !problem.isEmpty())
        qDebug() << "the head picture could not be kept:" << problem;
    icons_.ownChanged();
}

void PersonalInformationDialog::passwordChanged(const QString& number, const QString& password) {
    RememberedLogins remembered(context_.database, context_.vault);
    if (remembered.isRemembered(number))
        remembered.remember({number, password});
    password_->restart();
    account::tell(account::PhoneFlow::text(password_->flow().rules().success), this);
}

void PersonalInformationDialog::askToUnbind() {
    TipDialog::offer({.title = tr("提示"),
                      .text = tr("确定解除和当前电脑的绑定？"),
                      .accept = tr("确定"),
                      .reject = tr("取消"),
                      .destructive = true},
                     this, {.accepted = [this] {
                         unbind();
                     }});
}

void PersonalInformationDialog::unbind() {
    account::send(
        context_, this,
        {.operation = QStringLiteral("解除电脑账号绑定"), .busy = unbind_, .done = [this](const QVariantMap&) {
             account::logChange(context_.operationLog, account_, account::Change::Unbound, account_);
             emit sigUnbound();
             account::tell(tr("解除绑定成功!"), parentWidget());
             accept();
         }});
}
