#include "base/ui/TipDialog.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <QVariant>

TipDialog::TipDialog(const QString& title, const QString& text, QWidget* parent)
    : FramedDialog(title, parent) {
    setObjectName(QStringLiteral("TipDialog"));
    setAccessibleName(title);
    addText(text);
    connect(addButton(tr("确定"), QStringLiteral("tipOk"), true), &QPushButton::clicked, this, &QDialog::accept);
}

void TipDialog::addText(const QString& text) {
    auto* label = new QLabel(text, this);
    label->setObjectName(QStringLiteral("tipText"));
    label->setAccessibleName(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(280);
    label->setMaximumWidth(480);
    body()->addWidget(label, 1);
}

bool TipDialog::ask(const QString& title, const QString& text, bool destructive, QWidget* parent) {
    TipDialog dialog(title, text, parent);
    auto* ok = dialog.findChild<QPushButton*>(QStringLiteral("tipOk"));
    auto* cancel = dialog.addButton(tr("取消"), QStringLiteral("tipCancel"), destructive);
    if (destructive) {
        ok->setDefault(false);
        ok->setAutoDefault(false);
        ok->setProperty("primary", false);
        cancel->setFocus();
    }
    connect(cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
    return dialog.exec() == QDialog::Accepted;
}
