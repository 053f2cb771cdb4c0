#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "manageWidget/DeviceTable.h"

#include <QSortFilterProxyModel>

class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

/// The dialog "设备管理": the devices of the account as a table; adding, renaming, moving, deleting, configuring.
class DeviceManageDialog final : public FramedDialog {
    Q_OBJECT
public:
    DeviceManageDialog(const AppContext& context, QWidget* parent);

    void select(const QStringList& ipncIds);

signals:
    /// Dialogs of their own are wanted.
    void sigAdd(QString groupId);
    void sigRename(QString ipncid);
    void sigConfigure(QString ipncid);
    void sigDelete(QStringList ipncids);

private:
    void buildTable();
    void buildButtons();
    void fill();
    void showState();
    QStringList chosen() const;
    void moveWithin(int by);
    void moveTo(const QString& groupId);
    void move(const QString& ipncId, const QString& groupId, int index);

    AppContext context_;
    DeviceTable table_;
    QSortFilterProxyModel sorted_;
    QLineEdit* search_ = nullptr;
    QTableView* view_ = nullptr;
    QLabel* state_ = nullptr;
    QPushButton* rename_ = nullptr;
    QPushButton* configure_ = nullptr;
    QPushButton* up_ = nullptr;
    QPushButton* down_ = nullptr;
    QPushButton* group_ = nullptr;
    QPushButton* delete_ = nullptr;
};
