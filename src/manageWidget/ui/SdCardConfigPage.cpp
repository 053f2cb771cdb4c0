#include "manageWidget/ui/SdCardConfigPage.h"

#include "account/ui/AccountForm.h"
#include "base/RequestBuilder.h"
#include "base/SizeText.h"
#include "base/ui/FileChooser.h"
#include "manageWidget/FlowRequest.h"
#include "manageWidget/ui/ManageSend.h"

#include <QComboBox>
#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <initializer_list>

namespace account = corvanta::account;
namespace manage = corvanta::manage;
namespace requests = corvanta::requests;
using manage::SdFile;

namespace {

constexpr int FileRole = Qt::UserRole + 1;
constexpr int ListSeconds = 10; // for the device to list its files
constexpr int Whole = 100;      // %
constexpr qint64 MegaByte = 1048576;
const QString DayFormat = QStringLiteral("yyyy-MM-dd");

/// A name in the folder that no file has.
QString freePath(const QString& folder, const QString& name) {
    const QFileInfo wanted(folder + QLatin1Char('/') + name);
    QString path = wanted.absoluteFilePath();
    for (int number = 2; QFileInfo::exists(path); ++number)
        path = QStringLiteral("%1/%2 (%3).%4")
                   .arg(wanted.absolutePath(), wanted.completeBaseName(), QString::number(number), wanted.suffix());
    return path;
}

} // namespace

SdCardConfigPage::SdCardConfigPage(const ConfigTarget& target, QWidget* parent)
    : ConfigPage(target, parent)
    , loading_(new FlowRequest(target.context.gateway, 0, this)) {
    addSection(tr("容量"));
    auto* const row = new QHBoxLayout;
    used_ = new QProgressBar(this);
    used_->setObjectName(QStringLiteral("sdUsed"));
    used_->setAccessibleName(tr("SD卡已用空间"));
    used_->setTextVisible(false);
    room_ = new QLabel(this);
    room_->setObjectName(QStringLiteral("sdRoom"));
    room_->setTextFormat(Qt::PlainText);
    format_ = addButton(tr("格式化"), QStringLiteral("sdFormat"), [this] { format(); });
    row->addWidget(used_, 1);
    row->addWidget(room_);
    row->addWidget(format_);
    column()->addLayout(row);
    addSection(tr("文件"));
    buildFiles();
    buildDownload();
    connect(loading_, &FlowRequest::sigProgress, this, [this](qint64 done, qint64 total) {
        bar_->setValue(total > 0 ? static_cast<int>(done * Whole / total) : 0);
        progress_->setText(QStringLiteral("%1 / %2").arg(corvanta::sizeText(done), corvanta::sizeText(total)));
    });
    connect(loading_, &FlowRequest::sigDone, this, [this] { nextDownload(); });
    connect(loading_, &FlowRequest::sigFailed, this, [this](const QString& text) {
        endDownload(tr("下载失败"));
        account::tell(text, this);
    });
    showButtons();
}

void SdCardConfigPage::buildFiles() {
    auto* const row = new QHBoxLayout;
    up_ = addButton(tr("上一级"), QStringLiteral("sdUp"), [this] { openFolder(manage::folderAbove(folder_)); });
    folderText_ = new QLabel(QStringLiteral("/"), this);
    folderText_->setTextFormat(Qt::PlainText);
    kind_ = new QComboBox(this);
    kind_->setObjectName(QStringLiteral("sdKind"));
    kind_->setAccessibleName(tr("文件类型"));
    kind_->addItem(tr("全部"), QString());
    kind_->addItem(tr("录像"), QStringLiteral("video"));
    kind_->addItem(tr("图片"), QStringLiteral("image"));
    date_ = new QLineEdit(this);
    date_->setObjectName(QStringLiteral("sdDate"));
    date_->setAccessibleName(tr("日期"));
    date_->setPlaceholderText(DayFormat);
    list_ = addButton(tr("查询"), QStringLiteral("sdList"), [this] { list(); });
    row->addWidget(up_);
    row->addWidget(folderText_, 1);
    row->addWidget(kind_);
    row->addWidget(date_);
    row->addWidget(list_);
    column()->addLayout(row);
    files_ = new QTreeWidget(this);
    files_->setObjectName(QStringLiteral("sdFiles"));
    files_->setAccessibleName(tr("SD卡文件"));
    files_->setHeaderLabels({tr("名称"), tr("时间"), tr("大小"), tr("类型")});
    files_->setRootIsDecorated(false);
    files_->setUniformRowHeights(true);
    files_->setAllColumnsShowFocus(true);
    files_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    files_->setMinimumHeight(160); // px
    column()->addWidget(files_, 1);
    connect(files_, &QTreeWidget::itemSelectionChanged, this, &SdCardConfigPage::showButtons);
    connect(files_, &QTreeWidget::itemActivated, this, [this](const QTreeWidgetItem* item) {
        const SdFile& file = shown_[item->data(0, FileRole).toInt()];
        if (file.isFolder)
            openFolder(file.path);
    });
}

void SdCardConfigPage::buildDownload() {
    auto* const row = new QHBoxLayout;
    bar_ = new QProgressBar(this);
    bar_->setObjectName(QStringLiteral("sdBar"));
    bar_->setAccessibleName(tr("下载进度"));
    bar_->setTextVisible(false);
    progress_ = new QLabel(this);
    progress_->setObjectName(QStringLiteral("sdProgress"));
    progress_->setTextFormat(Qt::PlainText);
    cancel_ = addButton(tr("取消下载"), QStringLiteral("sdCancel"), [this] {
        loading_->cancel();
        endDownload(tr("已取消"));
    });
    download_ = addButton(tr("下载"), QStringLiteral("sdDownload"), [this] { download(); });
    delete_ = addButton(tr("删除"), QStringLiteral("sdDelete"), [this] { remove(); });
    row->addWidget(bar_, 2);
    row->addWidget(progress_, 1); // takes the room while there is no bar
    row->addWidget(cancel_);
    row->addWidget(download_);
    row->addWidget(delete_);
    column()->addLayout(row);
}

void SdCardConfigPage::showButtons() {
    const bool isLoading = loading_->isRunning();
    bool hasFile = false;
    for (const SdFile& file : chosen())
        hasFile = hasFile || !file.isFolder;
    for (QWidget* const field : std::initializer_list<QWidget*>{list_, kind_, date_, files_})
        field->setEnabled(target().isOnline);
    up_->setEnabled(target().isOnline && !folder_.isEmpty());
    download_->setEnabled(hasFile && !isLoading);
    delete_->setEnabled(canWrite() && hasFile && !isLoading);
    format_->setEnabled(canWrite() && !isLoading);
    cancel_->setVisible(isLoading);
    bar_->setVisible(isLoading);
}

void SdCardConfigPage::read() {
    run(QStringLiteral("获取SD卡信息"), {}, nullptr, [this](const QVariantMap& resp) {
        const QVariantMap values = resp.value(QStringLiteral("getcmds")).toMap();
        if (!values.value(QStringLiteral("sdinsert")).toBool()) {
            room_->setText(tr("没有SD卡"));
            used_->setValue(0);
            format_->setEnabled(false);
            return;
        }
        const qint64 used = values.value(QStringLiteral("sdused")).toLongLong() * MegaByte;
        const qint64 left = values.value(QStringLiteral("sdleft")).toLongLong() * MegaByte;
        used_->setValue(used + left > 0 ? static_cast<int>(used * Whole / (used + left)) : 0);
        room_->setText(tr("已用%1，剩余%2").arg(corvanta::sizeText(used), corvanta::sizeText(left)));
        list();
    });
}

void SdCardConfigPage::openFolder(const QString& folder) {
    folder_ = folder;
    folderText_->setText(folder_.isEmpty() ? QStringLiteral("/") : folder_);
    list();
}

void SdCardConfigPage::list() {
    const QString day = date_->text().trimmed();
    if (!day.isEmpty() && !QDate::fromString(day, DayFormat).isValid()) {
        account::tell(tr("日期格式应为 年-月-日，例如2026-01-31!"), this);
        return;
    }
    QVariantMap wanted{{QStringLiteral("kind"), kind_->currentData().toString()}};
    if (!day.isEmpty())
        wanted.insert(QStringLiteral("date"), day);
    run(QStringLiteral("获取SD卡文件列表"),
        {{QStringLiteral("sdlist"), wanted},
         {QStringLiteral("filepathvalue"), folder_},
         {QStringLiteral("timeout"), ListSeconds}},
        list_, [this](const QVariantMap& resp) { showFiles(resp.value(QStringLiteral("sdlist"))); });
}

void SdCardConfigPage::showFiles(const QVariant& sdlist) {
    shown_ = SdFile::listFrom(sdlist);
    files_->setSortingEnabled(false);
    files_->clear();
    for (int number = 0; number < shown_.size(); ++number) {
        const SdFile& file = shown_[number];
        auto* const row =
            new QTreeWidgetItem(files_, {file.name, file.time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")),
                                         file.isFolder ? QString() : corvanta::sizeText(file.size),
                                         file.isFolder                         ? tr("文件夹")
                                         : file.kind == QLatin1String("video") ? tr("录像")
                                         : file.kind == QLatin1String("image") ? tr("图片")
                                                                               : file.kind}); // the list owns it
        row->setData(0, FileRole, number);
        row->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
    }
    files_->header()->resizeSections(QHeaderView::ResizeToContents);
    showButtons();
}

QVector<SdFile> SdCardConfigPage::chosen() const {
    QVector<SdFile> files;
    const QList<QTreeWidgetItem*> rows = files_->selectedItems();
    for (const QTreeWidgetItem* const row : rows)
        files += shown_[row->data(0, FileRole).toInt()];
    return files;
}

void SdCardConfigPage::download() {
    waiting_.clear();
    for (const SdFile& file : chosen()) {
        if (!file.isFolder)
            waiting_ += file;
    }
    if (waiting_.isEmpty())
        return;
    const QString name = manage::localName(waiting_.constFirst(), target().ipncId);
    const QString path =
        chooseNewFile(this, tr("保存文件"), manage::documentsFolder() + QLatin1Char('/') + name, tr("所有文件 (*)"));
    if (path.isEmpty())
        return;
    into_ = QFileInfo(path).absolutePath();
    const SdFile first = waiting_.takeFirst();
    loading_->start(requests::deviceRequest(QStringLiteral("下载SD卡文件"),
                                            {{QStringLiteral("ipncid"), target().ipncId},
                                             {QStringLiteral("path"), first.path},
                                             {QStringLiteral("savepath"), QFileInfo(path).absoluteFilePath()}}));
    progress_->setText(first.name);
    showButtons();
}

void SdCardConfigPage::nextDownload() {
    if (waiting_.isEmpty()) {
        endDownload(tr("下载完成"));
        return;
    }
    const SdFile next = waiting_.takeFirst();
    progress_->setText(next.name);
    bar_->setValue(0);
    loading_->start(requests::deviceRequest(
        QStringLiteral("下载SD卡文件"),
        {{QStringLiteral("ipncid"), target().ipncId},
         {QStringLiteral("path"), next.path},
         {QStringLiteral("savepath"), freePath(into_, manage::localName(next, target().ipncId))}}));
}

void SdCardConfigPage::endDownload(const QString& text) {
    waiting_.clear();
    progress_->setText(text);
    showButtons();
}

void SdCardConfigPage::remove() {
    QStringList paths;
    for (const SdFile& file : chosen()) {
        if (!file.isFolder)
            paths += file.path;
    }
    ask(tr("确定删除SD卡上的%1个文件?").arg(paths.size()), tr("删除"), [this, paths] {
        run(QStringLiteral("删除SD卡文件"), {{QStringLiteral("delsdfilelist"), paths}}, delete_,
            [this, paths](const QVariantMap& resp) {
                const QStringList deleted = resp.value(QStringLiteral("deleted")).toStringList();
                log(QStringLiteral("删除SD卡文件"), deleted.join(QStringLiteral("; ")));
                if (deleted.size() < paths.size())
                    account::tell(tr("%1个文件没有删除!").arg(paths.size() - deleted.size()), this);
                list();
            });
    });
}

void SdCardConfigPage::format() {
    ask(tr("确定格式化SD卡?\n卡上的所有文件将丢失，无法恢复。"), tr("格式化"), [this] {
        run(QStringLiteral("设置SD卡格式化"), {}, format_, [this](const QVariantMap&) {
            log(QStringLiteral("格式化SD卡"), {});
            account::tell(tr("格式化完成!"), this);
            read();
        });
    });
}

void SdCardConfigPage::discard() {
    loading_->cancel();
}
