#pragma once

#include "monitor/PollDraft.h"

#include <QWidget>

class DeviceModel;
class QLabel;
class QListWidget;
class QListWidgetItem;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;
class QVBoxLayout;

/// Edits the entries of the screen polling: on the left the entries, in the middle the cameras of the account with
/// ticks, on the right those of the chosen entry in their order. The lists show the draft; every act of the user
/// changes the draft and has them shown anew.
class PollEditor final : public QWidget {
    Q_OBJECT
public:
    /// `devices` outlives the editor.
    PollEditor(const DeviceModel& devices, QWidget* parent);

    const PollDraft& draft() const { return draft_; }
    void setDraft(PollDraft draft);

public slots:
    /// The devices of the account were replaced.
    void onDevices();

signals:
    void sigEdited();

private:
    QWidget* makeEntryColumn();
    QWidget* makeDeviceColumn();
    QWidget* makeOrderColumn();
    void connectLists();

    int entry() const;
    void showEntries(int current);
    void showTree();
    void showTicks();
    void showOrder(int current);
    void enableButtons();
    /// Says what to do next while there is nothing to edit.
    void showWhatToDo();
    void addEntry();
    void addGroups();
    void removeEntry();
    void moveEntry(int step);
    void onRenamed(QListWidgetItem* item);
    void onTicked(QTreeWidgetItem* item);
    void removeDevice();
    void moveDevice(int step);
    QString deviceText(const QString& ipncId) const;

    const DeviceModel& devices_;
    PollDraft draft_;
    QListWidget* entries_;
    QTreeWidget* tree_;
    QListWidget* order_;
    QToolButton* renameEntry_;
    QToolButton* removeEntry_;
    QToolButton* entryUp_;
    QToolButton* entryDown_;
    QToolButton* removeDevice_;
    QToolButton* deviceUp_;
    QToolButton* deviceDown_;
    QLabel* notice_;
};
