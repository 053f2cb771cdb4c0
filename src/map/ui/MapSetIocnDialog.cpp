#include "map/ui/MapSetIocnDialog.h"

#include "account/ui/AccountForm.h"
#include "base/AppEvents.h"
#include "base/RequestBuilder.h"
#include "base/ui/FileChooser.h"
#include "base/ui/PlainToolTip.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"
#include "manageWidget/ui/ManageSend.h"
#include "map/ui/MapIcons.h"
#include "map/ui/MapSend.h"
#include "map/ui/UploadBar.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStandardPaths>
#include <QTabWidget>
#include <QVBoxLayout>

namespace corvanta::map {
namespace {

constexpr int NameRole = Qt::UserRole + 1;
constexpr int PublicRole = Qt::UserRole + 2;
constexpr int IconSide = 48;              // px
constexpr int CellWidth = 112;            // px
constexpr int CellHeight = 84;            // px
constexpr qint64 LargestIcon = 1LL << 20; // bytes; what the service takes
constexpr qint64 MostPixels = 1024LL * 1024;
const QSize Usual(480, 380); // px

} // namespace

MapSetIocnDialog::MapSetIocnDialog(const AppContext& context, MapDocument& document, QWidget* parent)
    : FramedDialog(tr("图标库"), parent)
    , context_(context)
    , document_(document)
    , tabs_(new QTabWidget(this)) {
    setObjectName(QStringLiteral("MapSetIocnDialog"));
    setAccessibleName(windowTitle());
    setSizeGripEnabled(true);
    tabs_->setObjectName(QStringLiteral("iconTabs"));
    tabs_->setAccessibleName(windowTitle());
    tabs_->addTab(buildLibrary(), tr("图片库"));
    tabs_->addTab(buildLocal(), tr("本地图片"));
    body()->addWidget(tabs_, 1);
    connect(addButton(tr("设置"), QStringLiteral("iconSet"), true), &QPushButton::clicked, this,
            &MapSetIocnDialog::choose);
    delete_ = addButton(tr("删除"), QStringLiteral("iconDelete"), false);
    connect(delete_, &QPushButton::clicked, this, &MapSetIocnDialog::askToDelete);
    connect(addButton(tr("取消"), QStringLiteral("iconCancel"), false), &QPushButton::clicked, this,
            &QDialog::reject);
    connect(&document_, &MapDocument::sigIconsChanged, this, &MapSetIocnDialog::fill);
    fill();
    resize(Usual);
}

QWidget* MapSetIocnDialog::buildLibrary() {
    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("iconList"));
    list_->setAccessibleName(tr("图片库"));
    list_->setViewMode(QListView::IconMode);
    list_->setResizeMode(QListView::Adjust);
    list_->setMovement(QListView::Static);
    list_->setIconSize(QSize(IconSide, IconSide));
    list_->setGridSize(QSize(CellWidth, CellHeight));
    list_->setUniformItemSizes(true);
    list_->setTextElideMode(Qt::ElideMiddle);
    connect(list_, &QListWidget::itemActivated, this, &MapSetIocnDialog::choose);
    return list_;
}

QWidget* MapSetIocnDialog::buildLocal() {
    auto* const page = new QWidget(this);
    auto* const column = new QVBoxLayout(page);
    auto* const row = new QHBoxLayout;
    path_ = new QLineEdit(page);
    path_->setObjectName(QStringLiteral("iconPath"));
    path_->setAccessibleName(tr("图标文件"));
    path_->setReadOnly(true);
    path_->setPlaceholderText(tr("png或jpg图片，不超过1MB"));
    auto* const open = new QPushButton(tr("选择文件"), page);
    open->setObjectName(QStringLiteral("iconBrowse"));
    upload_ = new QPushButton(tr("上传文件"), page);
    upload_->setObjectName(QStringLiteral("iconUpload"));
    for (QPushButton* const button : {open, upload_}) {
        button->setAccessibleName(button->text());
        button->setAutoDefault(false);
    }
    row->addWidget(path_, 1);
    row->addWidget(open);
    row->addWidget(upload_);
    column->addLayout(row);
    preview_ = new QLabel(page);
    preview_->setObjectName(QStringLiteral("iconPreview"));
    preview_->setAlignment(Qt::AlignCenter);
    column->addWidget(preview_, 1);
    bar_ = new UploadBar(context_.gateway, page);
    column->addWidget(bar_);
    connect(open, &QPushButton::clicked, this, &MapSetIocnDialog::browse);
    connect(upload_, &QPushButton::clicked, this, &MapSetIocnDialog::upload);
    connect(bar_, &UploadBar::sigEnded, this, [this] { upload_->setEnabled(true); });
    connect(bar_, &UploadBar::sigFailed, this, [this](const QString& text) { account::tell(text, this); });
    connect(bar_, &UploadBar::sigDone, this, [this] {
        logChange(context_, QStringLiteral("上传图标"), QFileInfo(path_->text()).fileName());
        account::tell(tr("上传图标成功!"), this);
        emit context_.events.sig_updateIconlist();
        tabs_->setCurrentIndex(0);
    });
    return page;
}

void MapSetIocnDialog::fill() {
    const QListWidgetItem* const before = list_->currentItem();
    const QString name = before == nullptr ? QString() : before->data(NameRole).toString();
    list_->clear();
    for (const MapIcon& icon : document_.icons()) {
        const QPixmap picture = readIcon(icon.filePath, 2 * IconSide);
        auto* const item = new QListWidgetItem( // the list owns it
            picture.isNull() ? usualIcon(QStringLiteral("map-sensor")) : QIcon(picture), icon.fileName, list_);
        item->setData(NameRole, icon.fileName);
        item->setData(PublicRole, icon.isPublic);
        item->setToolTip(plainToolTip(icon.isPublic ? tr("%1（公共图标）").arg(icon.fileName) : icon.fileName));
        if (icon.fileName == name)
            list_->setCurrentItem(item);
    }
}

const MapIcon* MapSetIocnDialog::selected() const {
    const auto chosen = list_->selectedItems();
    return tabs_->currentIndex() != 0 || chosen.isEmpty()
               ? nullptr
               : document_.icon(chosen[0]->data(NameRole).toString(), chosen[0]->data(PublicRole).toBool());
}

void MapSetIocnDialog::choose() {
    const MapIcon* const icon = selected();
    if (icon == nullptr) {
        account::tell(tr("请选择要设置的图标!"), this);
        return;
    }
    emit sigChosen(*icon);
    accept();
}

void MapSetIocnDialog::browse() {
    const QString path =
        chooseFile(this, tr("选择文件"), QStandardPaths::writableLocation(QStandardPaths::PicturesLocation),
                   QStringLiteral("Image Files(*.png *.jpg)"));
    if (path.isEmpty())
        return;
    path_->setText(path);
    preview_->setPixmap(readIcon(path, 2 * IconSide));
}

void MapSetIocnDialog::upload() {
    const QString path = path_->text();
    if (path.isEmpty()) {
        account::tell(tr("请先选择要添加的图标!"), this);
        return;
    }
    if (document_.icon(QFileInfo(path).fileName(), false) != nullptr) {
        account::tell(tr("已经添加该图标!"), this);
        return;
    }
    const QString problem = pictureProblem(path, LargestIcon, MostPixels);
    if (!problem.isEmpty()) {
        account::tell(problem, this);
        return;
    }
    upload_->setEnabled(false);
    bar_->start(path, QStringLiteral("icons"));
}

void MapSetIocnDialog::askToDelete() {
    const MapIcon* const icon = selected();
    if (icon == nullptr) {
        account::tell(tr("请选择要删除的图标!"), this);
        return;
    }
    if (icon->isPublic) {
        account::tell(tr("公共图标无法删除!"), this);
        return;
    }
    TipDialog::offer({.title = tr("提示"),
                      .text = tr("确定删除图标“%1”?").arg(icon->fileName.left(60)),
                      .accept = tr("确定"),
                      .reject = tr("取消"),
                      .destructive = true},
                     this, {.accepted = [this, name = icon->fileName] {
                         deleteIcon(name);
                     }});
}

void MapSetIocnDialog::deleteIcon(const QString& fileName) {
    manage::send(context_, this,
                 {.json = requests::accountRequest(
                      QStringLiteral("删除用户文件"),
                      {{QStringLiteral("type"), QStringLiteral("icons")}, {QStringLiteral("filename"), fileName}}),
                  .busy = delete_,
                  .done = [this, fileName](const QVariantMap&) {
                      logChange(context_, QStringLiteral("删除图标"), fileName);
                      account::tell(tr("删除图标成功!"), this);
                      emit context_.events.sig_updateIconlist();
                  }});
}

} // namespace corvanta::map
