#pragma once

#include <QDialog>

class QLabel;
class QPushButton;
class QVBoxLayout;

/// The look that all dialogs share: a title strip by which they are moved, a close button, the content, a row of
/// buttons. The first button added as accepting is the default one.
class FramedDialog : public QDialog {
    Q_OBJECT
public:
    explicit FramedDialog(const QString& title, QWidget* parent = nullptr);

    /// Closes it. The keyboard, when it had that, goes to the nearest window below it that is still shown: a window
    /// manager may give it to one that closes at the same moment.
    void done(int result) override;

protected:
    /// Where a dialog puts its content.
    QVBoxLayout* body() const { return body_; }
    /// Adds a button to the row at the bottom; `accepting` marks it as the one that Enter presses.
    QPushButton* addButton(const QString& text, const QString& objectName, bool accepting);
    /// The line for a problem, empty and without height until it is set.
    void showProblem(const QString& text);

private:
    QVBoxLayout* body_;
    QLabel* problem_;
    QWidget* buttonRow_;
};
