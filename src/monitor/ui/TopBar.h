#pragma once

#include "base/ui/DragArea.h"
#include "base/ui/Worded.h"

#include <QHash>
#include <QIcon>

class QHBoxLayout;
class QLabel;
class QMenu;
class QToolButton;
class VolumePopup;

/// What the menu of a signed-in account offers.
enum class AccountEntry { Person, Friends, Groups, Rights, Devices, Notices, TextMessages, SignOut };

/// The strip at the top of the main window: title, modules, account, window buttons. Moves the window.
class TopBar final : public DragArea {
    Q_OBJECT
public:
    explicit TopBar(QWidget* parent = nullptr);

    void setTitle(const QString& title);
    /// The signed-in account's number, empty when nobody is signed in.
    void setAccount(const QString& phoneNumber);
    /// The signed-in account's picture; a null one is the usual drawing.
    void setHead(const QIcon& head);
    void setFullScreen(bool on);
    void setPolling(bool on);
    /// Volume (0 to 100), mute, and what is heard and talked to at the moment; blue while there is something.
    void setSound(int volume, bool muted, const QString& state);

    /// A button for a page of the window, in the order of the calls; `number` comes back by `sigModule`.
    void addModule(int number, const QString& objectName, corvanta::Text text, const QString& drawing);
    void setModule(int number);
    /// A number on a module's button, in red; 0: none.
    void setBadge(int number, qint64 count);

signals:
    void sigModule(int number);
    void sigPoll();
    void sigVolume(int percent);
    void sigMuted(bool muted);
    void sigSettings();
    void sigHelp();
    void sigUpdate();
    void sigSignIn();
    void sigAccount(AccountEntry entry);
    void sigMinimize();
    void sigFullScreen();
    void sigClose();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QMenu* makeHelpMenu();
    QMenu* makeAccountMenu();
    void showAccount();
    void showFullScreen();
    void showPolling();
    void showSound();
    QToolButton* addButton(const QString& objectName, corvanta::Text text, const QString& drawing);
    void elideTitle();

    QLabel* title_;
    QString titleText_;
    QHBoxLayout* modulesRow_;
    QHash<int, QToolButton*> modules_; ///< by number
    QToolButton* poll_;
    QToolButton* sound_;
    VolumePopup* volume_;
    QMenu* helpMenu_;
    QToolButton* account_;
    QMenu* accountMenu_;
    QString number_; ///< of the signed-in account, empty when nobody is signed in
    QIcon head_;
    QToolButton* fullScreen_;
    bool isFullScreen_ = false;
    QString soundState_;
};
