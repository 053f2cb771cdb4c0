#pragma once

#include <QStringList>
#include <QWidget>

class QListWidget;

/// A list of the parts of something, with buttons that add one, change one and take one away. Says nothing of its
/// own: who owns the parts fills it and reacts.
class PartList final : public QWidget {
    Q_OBJECT
public:
    /// `name` is the accessible name of the list; `objectName` begins those of its controls ("...List", "...Add",
    /// "...Edit", "...Remove").
    PartList(const QString& objectName, const QString& name, QWidget* parent);

    /// Replaces the rows; the selected one stays selected.
    void setRows(const QStringList& texts);

signals:
    void sigAdd();
    /// The row is -1 when none is selected.
    void sigEdit(int row);
    void sigRemove(int row);

private:
    QListWidget* list_;
};
