#pragma once

#include <QWidget>

struct DriveChoice;
class QToolButton;
class QTreeWidget;

/// The drives of recordings in the order in which they are used: ticked to use, moved up and down, with their free
/// space. Drives that are stored but away stay in the list, marked.
class DriveList final : public QWidget {
    Q_OBJECT
public:
    explicit DriveList(QWidget* parent);

    /// Shows the stored drives and those of this computer.
    void setStored(const QStringList& stored);
    /// The ticked drives, in order.
    QStringList used() const;

signals:
    void sigEdited();

private:
    void addRow(const DriveChoice& drive);
    void move(int step);
    void showWhatMoves();

    QTreeWidget* table_;
    QToolButton* up_;
    QToolButton* down_;
};
