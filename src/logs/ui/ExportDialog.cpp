#include "logs/ui/ExportDialog.h"

#include <QButtonGroup>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <QVariant>

ExportDialog::ExportDialog(QWidget* parent)
    : FramedDialog(tr("导出"), parent) {
    setObjectName(QStringLiteral("ExportDialog"));
    setAccessibleName(tr("导出"));
    auto* const label = new QLabel(tr("导出格式"), this);
    label->setObjectName(QStringLiteral("exportLabel"));
    label->setMinimumWidth(240);
    body()->addWidget(label);
    formats_ = new QButtonGroup(this);
    const std::pair<const char*, QString> choices[] = {{"txt", tr("文本文档(.txt)")}, {"xls", tr("表格文档(.xls)")}};
    for (const auto& [format, text] : choices) {
        auto* const choice = new QRadioButton(text, this);
        choice->setObjectName(QLatin1String(format) + QStringLiteral("Format"));
        choice->setAccessibleName(text);
        choice->setProperty("format", QLatin1String(format));
        choice->setChecked(formats_->buttons().isEmpty());
        formats_->addButton(choice);
        body()->addWidget(choice);
    }
    connect(addButton(tr("确定"), QStringLiteral("exportOk"), true), &QPushButton::clicked, this, &QDialog::accept);
    connect(addButton(tr("取消"), QStringLiteral("exportCancel"), false), &QPushButton::clicked, this,
            &QDialog::reject);
}

QString ExportDialog::format() const {
    return formats_->checkedButton()->property("format").toString();
}

QString ExportDialog::ask(QWidget* parent) {
    ExportDialog dialog(parent);
    return dialog.exec() == QDialog::Accepted ? dialog.format() : QString();
}
