#pragma once

#include "base/ui/FramedDialog.h"

#include <functional>

/// A modal tip: a title, a text, an OK button. The text is shown as it is, never as markup.
class TipDialog final : public FramedDialog {
    Q_OBJECT
public:
    TipDialog(const QString& title, const QString& text, QWidget* parent = nullptr);

    QString text() const;

    /// A question with "确定" and "取消"; true for the former. Enter means "取消" when `destructive`.
    static bool ask(const QString& title, const QString& text, bool destructive, QWidget* parent);

    /// Shows a tip over `parent` without waiting for it, so that it can be called while messages are delivered.
    static void tell(const QString& title, const QString& text, QWidget* parent);
    /// A question with buttons of its own, not waited for either. Closing it says no. `destructive` as of `ask`.
    struct Question {
        QString title;
        QString text;
        QString accept;
        QString reject;
        bool destructive = false;
    };
    struct Answers {
        std::function<void()> accepted;
        std::function<void()> rejected = {}; ///< may be empty
        std::function<void()> closed = {};   ///< closed without an answer; empty: that is a no
    };
    static void offer(const Question& question, QWidget* parent, Answers answers);

private:
    void addReject(const QString& text, bool destructive);
    void addText(const QString& text);

    bool saidNo_ = false; ///< by the button
};
