#pragma once

#include "base/ui/FramedDialog.h"

/// A modal tip: a title, a text, an OK button. The text is shown as it is, never as markup.
class TipDialog final : public FramedDialog {
    Q_OBJECT
public:
    TipDialog(const QString& title, const QString& text, QWidget* parent = nullptr);

    /// A question with "确定" and "取消"; true for the former. Enter means "取消" when `destructive`.
    static bool ask(const QString& title, const QString& text, bool destructive, QWidget* parent);

private:
    void addText(const QString& text);
};
