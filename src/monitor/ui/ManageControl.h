#pragma once

#include "base/AppContext.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>

class DeviceManageDialog;
class DeviceTree;
class QDialog;
class QWidget;

/// The dialogs of devices over the main window. They close with the sign-in. GUI thread.
class ManageControl final : public QObject {
    Q_OBJECT
public:
    /// `tree` and `window` outlive it.
    ManageControl(const AppContext& context, DeviceTree& tree, QWidget& window);

    void openDevices();
    void openAdd(const QString& groupId);
    void openConfig(const QString& ipncId);
    void openRename(const QString& ipncId);
    void openPtz(const QString& ipncId);
    /// Asks first.
    void remove(const QStringList& ipncIds);

    /// Somebody signed in or out; an empty number is nobody.
    void onAccount(const QString& number);
    /// Ends dialogs about devices that are gone.
    void onLists();

private:
    /// Over the dialog of the devices while it is open, else over the window.
    QWidget* above() const;
    void show(QDialog* dialog, const QString& ipncId, bool isModal = true);
    void sendRemove(const QString& ipncId, const QString& name);

    AppContext context_;
    QWidget& window_;
    QPointer<DeviceManageDialog> devices_;
    QList<QPointer<QDialog>> dialogs_; ///< their property "ipncid" says which device they are about
    QString account_;
};
