#include "storage/ui/FileActions.h"

#include "base/SizeText.h"
#include "base/ui/TipDialog.h"
#include "storage/RecordingStorage.h"
#include "storage/ui/PictureViewer.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>
#include <array>

using corvanta::storage::Deletion;
using corvanta::storage::FileRecord;
namespace fileTexts = corvanta::storage::fileTexts;

FileActions::FileActions(const RecordingStorage& storage, corvanta::storage::DeviceNames nameOf, QWidget* parent)
    : QObject(parent)
    , storage_(storage)
    , nameOf_(std::move(nameOf))
    , parent_(parent) {}

FileActions::~FileActions() = default;

int FileActions::open(const Choice& choice) {
    if (choice.current < 0)
        return -1;
    const FileRecord& current = choice.files->at(choice.current);
    if (current.isPicture())
        return openPictures(choice);
    QVector<FileRecord> recordings;
    for (const int file : choice.selected.empty() ? std::vector<int>{choice.current} : choice.selected) {
        const FileRecord& record = choice.files->at(file);
        if (!record.isPicture() && QFileInfo::exists(record.path))
            recordings += record;
    }
    if (recordings.isEmpty())
        emit sigMessage(tr("文件已不存在：%1").arg(fileTexts::oneLine(current.name)));
    else
        emit sigPlay(recordings);
    return choice.current;
}

int FileActions::openPictures(const Choice& choice) {
    std::vector<int> pictures;
    for (const int file : choice.selected.size() > 1 ? choice.selected : choice.shown) {
        if (choice.files->at(file).isPicture())
            pictures.push_back(file);
    }
    const auto first = std::find(pictures.begin(), pictures.end(), choice.current);
    const auto number = first == pictures.end() ? 0 : static_cast<std::size_t>(first - pictures.begin());
    if (first == pictures.end())
        pictures.insert(pictures.begin(), choice.current);
    PictureViewer viewer(choice.files, std::move(pictures), number, nameOf_, parent_);
    viewer.exec();
    return viewer.currentFile();
}

void FileActions::showInFolder(const Choice& choice) {
    if (choice.current < 0)
        return;
    const FileRecord& file = choice.files->at(choice.current);
    const QString folder = QFileInfo(file.path).path();
    if (!QFileInfo(folder).isDir())
        emit sigMessage(tr("文件夹已不存在：%1").arg(fileTexts::oneLine(QDir::toNativeSeparators(folder))));
    else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder)))
        emit sigMessage(tr("无法打开文件夹：%1").arg(fileTexts::oneLine(QDir::toNativeSeparators(folder))));
}

void FileActions::copyPaths(const Choice& choice) {
    QStringList paths;
    for (const int file : choice.selected)
        paths += QDir::toNativeSeparators(choice.files->at(file).path);
    if (paths.isEmpty())
        return;
    QApplication::clipboard()->setText(paths.join(QLatin1Char('\n')));
    emit sigMessage(paths.size() == 1 ? tr("已复制文件路径")
                                      : tr("已复制 %1 个文件路径").arg(fileTexts::count(paths.size())));
}

void FileActions::remove(const Choice& choice) {
    if (choice.selected.empty() || deletion_ != nullptr)
        return;
    QStringList paths;
    qint64 bytes = 0;
    for (const int file : choice.selected) {
        paths += choice.files->at(file).path;
        bytes += choice.files->at(file).size;
    }
    const QString question = paths.size() == 1
                                 ? tr("确定删除文件“%1”?\n删除后无法恢复。")
                                       .arg(fileTexts::oneLine(choice.files->at(choice.selected[0]).name, 80))
                                 : tr("确定删除所选的 %1 个文件 (%2)?\n删除后无法恢复。")
                                       .arg(fileTexts::count(paths.size()), corvanta::sizeText(bytes));
    if (!TipDialog::ask(tr("删除文件"), question, true, parent_))
        return;
    deleting_ = paths;
    deletion_ = std::make_unique<FileDeletion>(storage_.searchedDrives(), paths);
    connect(deletion_.get(), &BackgroundThread::finished, this, &FileActions::onDeletionFinished);
    deletion_->start();
    emit sigDeletionStarted();
}

void FileActions::cancelDeletion() {
    if (deletion_ != nullptr)
        deletion_->cancel();
}

void FileActions::onDeletionFinished() {
    deletion_->join(); // it has said its last word, not more
    std::array<int, 5> counts{};
    QSet<QString> gone;
    const auto& results = deletion_->results();
    for (std::size_t i = 0; i < results.size(); ++i) {
        ++counts[static_cast<std::size_t>(results[i])];
        if (results[i] == Deletion::Deleted || results[i] == Deletion::Gone)
            gone.insert(deleting_[static_cast<int>(i)]);
    }
    deletion_.reset();
    deleting_.clear();
    emit sigDeleted(gone);
    const auto count = [&counts](Deletion result) {
        return counts[static_cast<std::size_t>(result)];
    };
    emit sigMessage(tr("已删除 %1 个文件").arg(fileTexts::count(count(Deletion::Deleted))));
    QStringList problems;
    if (count(Deletion::InUse) > 0)
        problems += tr("%1 个录像正在写入，不能删除。请先停止录像。").arg(count(Deletion::InUse));
    if (count(Deletion::Refused) > 0)
        problems += tr("%1 个文件不在存储目录中，未删除。").arg(count(Deletion::Refused));
    if (count(Deletion::Failed) > 0)
        problems += tr("%1 个文件无法删除，请检查权限和磁盘。").arg(count(Deletion::Failed));
    if (!problems.isEmpty())
        tip(problems.join(QLatin1Char('\n')));
}

void FileActions::tip(const QString& text) {
    TipDialog(tr("提示"), text, parent_).exec();
}
