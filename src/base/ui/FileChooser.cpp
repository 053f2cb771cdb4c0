#include "base/ui/FileChooser.h"

#include "base/ui/FramedDialog.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>
#include <QVariant>

#ifndef Q_OS_WIN
namespace theme = corvanta::theme;

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(FileChooser)
};

class FileIcons final : public QFileIconProvider {
public:
    QIcon icon(IconType type) const override { return drawing(type == File); }
    QIcon icon(const QFileInfo& info) const override { return drawing(info.isFile()); }

private:
    static QIcon drawing(bool isFile) {
        return corvanta::svgIcon(isFile ? QStringLiteral("file") : QStringLiteral("group"), theme::TextOnLight);
    }
};

/// The toolkit's file dialog within the frame of our dialogs, with our drawings.
class FileChooser final : public FramedDialog {
public:
    FileChooser(const QString& title, const QString& folder, const QString& filter, QWidget* parent)
        : FramedDialog(title, parent) {
        setObjectName(QStringLiteral("FileChooser"));
        setAccessibleName(title);
        files_ = new QFileDialog(this, Qt::Widget);
        files_->setWindowFlags(Qt::Widget); // a dialog makes itself a window otherwise
        files_->setOption(QFileDialog::DontUseNativeDialog);
        files_->setIconProvider(&icons_);
        files_->setFileMode(QFileDialog::ExistingFile);
        files_->setOption(QFileDialog::DontConfirmOverwrite); // asked in our own way
        files_->setViewMode(QFileDialog::List);
        files_->setDirectory(folder);
        files_->setNameFilter(filter);
        files_->setSidebarUrls({QUrl::fromLocalFile(QDir::homePath()), QUrl::fromLocalFile(QDir::rootPath())});
        files_->setSizeGripEnabled(false);
        dress();
        body()->addWidget(files_, 1);
        connect(files_, &QDialog::finished, this, &QDialog::done);
        resize(680, 420); // px
    }

    void chooseSeveral() { files_->setFileMode(QFileDialog::ExistingFiles); }
    void chooseNew(const QString& proposal) {
        files_->setAcceptMode(QFileDialog::AcceptSave);
        files_->setFileMode(QFileDialog::AnyFile);
        files_->selectFile(proposal);
        files_->setDefaultSuffix(QFileInfo(proposal).suffix());
        files_->setLabelText(QFileDialog::Accept, Texts::tr("保存"));
        dressButtons();
    }

    QStringList chosen() const { return files_->selectedFiles(); }

private:
    void dress() {
        files_->setLabelText(QFileDialog::LookIn, Texts::tr("位置"));
        files_->setLabelText(QFileDialog::FileName, Texts::tr("文件名"));
        files_->setLabelText(QFileDialog::FileType, Texts::tr("类型"));
        files_->setLabelText(QFileDialog::Accept, Texts::tr("打开"));
        files_->setLabelText(QFileDialog::Reject, Texts::tr("取消"));
        dressButton("backButton", Texts::tr("后退"), "back");
        dressButton("forwardButton", Texts::tr("前进"), "forward");
        dressButton("toParentButton", Texts::tr("上一级"), "up");
        dressButtons();
        if (auto* const name = files_->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")))
            connect(name, &QLineEdit::textChanged, this, &FileChooser::renameOpen);
        for (const char* unused : {"newFolderButton", "listModeButton", "detailModeButton"}) {
            if (auto* const button = files_->findChild<QToolButton*>(QLatin1String(unused)))
                button->hide();
        }
    }

    void dressButtons() {
        for (auto* const button : files_->findChildren<QPushButton*>()) {
            button->setIcon(QIcon());
            button->setProperty("primary", button->isDefault());
        }
    }

    /// With the name of a folder the dialog puts a word of its own on the button.
    void renameOpen() {
        for (auto* const button : files_->findChildren<QPushButton*>()) {
            if (button->text() == QFileDialog::tr("&Open"))
                button->setText(Texts::tr("打开"));
        }
    }

    void dressButton(const char* objectName, const QString& text, const char* drawing) {
        auto* const button = files_->findChild<QToolButton*>(QLatin1String(objectName));
        if (button == nullptr)
            return;
        button->setIcon(corvanta::svgIcon(QLatin1String(drawing), theme::TextOnLight));
        button->setToolTip(text);
        button->setAccessibleName(text);
    }

    FileIcons icons_; ///< outlives `files_`, which is a child
    QFileDialog* files_;
};

} // namespace
#endif

QString chooseFile(QWidget* parent, const QString& title, const QString& folder, const QString& filter) {
#ifdef Q_OS_WIN
    return QFileDialog::getOpenFileName(parent, title, folder, filter);
#else
    FileChooser chooser(title, folder, filter, parent);
    return chooser.exec() == QDialog::Accepted ? chooser.chosen().value(0) : QString();
#endif
}

QStringList chooseFiles(QWidget* parent, const QString& title, const QString& folder, const QString& filter) {
#ifdef Q_OS_WIN
    return QFileDialog::getOpenFileNames(parent, title, folder, filter);
#else
    FileChooser chooser(title, folder, filter, parent);
    chooser.chooseSeveral();
    return chooser.exec() == QDialog::Accepted ? chooser.chosen() : QStringList();
#endif
}

QString chooseNewFile(QWidget* parent, const QString& title, const QString& proposal, const QString& filter) {
#ifdef Q_OS_WIN
    return QFileDialog::getSaveFileName(parent, title, proposal, filter);
#else
    FileChooser chooser(title, QFileInfo(proposal).path(), filter, parent);
    chooser.chooseNew(proposal);
    while (chooser.exec() == QDialog::Accepted) {
        QString chosen = chooser.chosen().value(0);
        const bool exists = QFileInfo::exists(chosen);
        const QString question = Texts::tr("%1 已存在，确定替换?").arg(QFileInfo(chosen).fileName());
        if (!exists || TipDialog::ask(Texts::tr("提示"), question, true, parent))
            return chosen;
    }
    return {};
#endif
}

QString chooseSaveFile(QWidget* parent, const QString& title, const QString& folder, const QString& name,
                       const QString& filter) {
#ifdef Q_OS_WIN
    return QFileDialog::getSaveFileName(parent, title, QDir(folder).filePath(name), filter, nullptr,
                                        QFileDialog::DontConfirmOverwrite);
#else
    FileChooser chooser(title, folder, filter, parent);
    chooser.chooseNew(QDir(folder).filePath(name));
    return chooser.exec() == QDialog::Accepted ? chooser.chosen().value(0) : QString();
#endif
}
