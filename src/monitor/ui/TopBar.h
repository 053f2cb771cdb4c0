#pragma once

#include "base/ui/DragArea.h"

class QLabel;
class QToolButton;

/// The strip at the top of the main window: title, modules, account, window buttons. Moves the window.
class TopBar final : public DragArea {
    Q_OBJECT
public:
    explicit TopBar(QWidget* parent = nullptr);

    void setTitle(const QString& title);
    /// The signed-in account's number, empty when nobody is signed in.
    void setAccount(const QString& phoneNumber);
    void setFullScreen(bool on);

signals:
    void sigSignIn();
    void sigSignOut();
    void sigMinimize();
    void sigFullScreen();
    void sigClose();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QToolButton* addButton(const QString& objectName, const QString& text, const QString& drawing);
    void elideTitle();

    QLabel* title_;
    QString titleText_;
    QToolButton* account_;
    QToolButton* fullScreen_;
    bool signedIn_ = false;
};
