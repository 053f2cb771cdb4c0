#include "base/ui/TipDialog.h"

#include <QLabel>
#include <QPushButton>
#include <QStyle>
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

QString TipDialog::text() const {
    return findChild<QLabel*>(QStringLiteral("tipText"))->text();
}

void TipDialog::addReject(const QString& text, bool destructive) {
    auto* const ok = findChild<QPushButton*>(QStringLiteral("tipOk"));
    auto* const cancel = addButton(text, QStringLiteral("tipCancel"), destructive);
    if (destructive) {
        ok->setDefault(false);
        ok->setAutoDefault(false);
        ok->setProperty("primary", false);
        ok->style()->unpolish(ok); // the style has seen it as the one that Enter presses
        ok->style()->polish(ok);
        cancel->setFocus();
    }
    connect(cancel, &QPushButton::clicked, this, [this] {
        saidNo_ = true;
        reject();
    });
}

bool TipDialog::ask(const QString& title, const QString& text, bool destructive, QWidget* parent) {
    TipDialog dialog(title, text, parent);
    dialog.addReject(tr("取消"), destructive);
    return dialog.exec() == QDialog::Accepted;
}

void TipDialog::tell(const QString& title, const QString& text, QWidget* parent) {
    auto* const dialog = new TipDialog(title, text, parent); // deletes itself
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void TipDialog::offer(const Question& question, QWidget* parent, Answers answers) {
    auto* const dialog = new TipDialog(question.title, question.text, parent); // deletes itself
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    auto* const ok = dialog->findChild<QPushButton*>(QStringLiteral("tipOk"));
    ok->setText(question.accept);
    ok->setAccessibleName(question.accept);
    dialog->addReject(question.reject, question.destructive);
    connect(dialog, &QDialog::accepted, parent, std::move(answers.accepted));
    connect(dialog, &QDialog::rejected, parent,
            [dialog, rejected = std::move(answers.rejected), closed = std::move(answers.closed)] {
                const auto& react = closed && !dialog->saidNo_ ? closed : rejected;
                if (react)
                    react();
            });
    dialog->open();
}
