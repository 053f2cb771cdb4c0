#pragma once

#include "storage/StoredFiles.h"
#include "storage/ui/FileTexts.h"

#include <QWidget>

class CheckListBox;
class QComboBox;
class QPushButton;
class TimeRangeEdit;

/// What is looked for: of which devices, of which kinds, from when to when.
class FileForm final : public QWidget {
    Q_OBJECT
public:
    explicit FileForm(QWidget* parent = nullptr);

    /// The devices to choose from, with the names of those that have one.
    void setDevices(const QStringList& ids, const corvanta::storage::DeviceNames& nameOf);
    corvanta::storage::FileQuery query() const;
    /// While a search runs, the button ends it.
    void setSearching(bool searching);

signals:
    void sigSearch();
    /// The user wants the running search to end.
    void sigStop();
    /// Something else is wanted now.
    void sigChanged();

private:
    void onRangeChosen();

    CheckListBox* devices_;
    CheckListBox* kinds_;
    QComboBox* range_;
    TimeRangeEdit* own_;
    QPushButton* search_;
    bool searching_ = false;
};
