#include "monitor/ui/settings/FileField.h"

#include "base/ui/FaintHint.h"
#include "base/ui/FileChooser.h"
#include "base/ui/Theme.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

namespace theme = corvanta::theme;

FileField::FileField(const QString& label, const QString& objectName, QString filter, QWidget* parent)
    : QWidget(parent)
    , filter_(std::move(filter)) {
    setObjectName(objectName);
    setAccessibleName(label);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(theme::Step);
    edit_ = new QLineEdit(this);
    edit_->setObjectName(objectName + QStringLiteral("Path"));
    edit_->setAccessibleName(label);
    edit_->setPlaceholderText(tr("未选择文件"));
    corvanta::faintHint(*edit_);
    row->addWidget(edit_, 1);
    setFocusProxy(edit_);
    auto* const browse = new QPushButton(tr("浏览"), this);
    browse->setObjectName(objectName + QStringLiteral("Browse"));
    browse->setAccessibleName(tr("浏览：%1").arg(label));
    auto* const clear = new QPushButton(tr("清除"), this);
    clear->setObjectName(objectName + QStringLiteral("Clear"));
    clear->setAccessibleName(tr("清除：%1").arg(label));
    clear->setEnabled(false);
    for (QPushButton* button : {browse, clear}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    connect(browse, &QPushButton::clicked, this, &FileField::browse);
    connect(clear, &QPushButton::clicked, edit_, &QLineEdit::clear);
    connect(edit_, &QLineEdit::textChanged, this, [this, clear](const QString& text) {
        clear->setEnabled(!text.isEmpty());
        emit sigPathChanged();
    });
}

QString FileField::path() const {
    return QDir::fromNativeSeparators(edit_->text().trimmed());
}

void FileField::setPath(const QString& path) {
    edit_->setText(QDir::toNativeSeparators(path));
    edit_->setCursorPosition(0);
}

void FileField::browse() {
    const QString folder = path().isEmpty() ? QDir::homePath() : QFileInfo(path()).path();
    const QString chosen = chooseFile(window(), tr("选择文件"), folder, filter_);
    if (!chosen.isEmpty())
        setPath(chosen);
}
