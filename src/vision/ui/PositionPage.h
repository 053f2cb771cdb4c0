#pragma once

#include <QStringList>
#include <QWidget>

class QLabel;
class QPushButton;
class QTreeWidget;

namespace corvanta::vision {

/// The initial position, where the thing is now, and how far that is: one row an axis, in mm; with the buttons that
/// have both measured. It measures nothing itself.
class PositionPage final : public QWidget {
    Q_OBJECT
public:
    /// `axes`: names of the rows, "X", "Y", ...
    PositionPage(const QStringList& axes, QWidget* parent);

    /// One text an axis; empty for none. `isOld`: there is one, made under circumstances that do not hold any more.
    void setInitial(const QStringList& position, bool isOld = false);
    /// What was measured last; empty for none.
    void setCurrent(const QStringList& position);
    /// A line that says what is going on or became of it.
    void setState(const QString& text);
    /// While something is measured, nothing else can be.
    void setBusy(bool isBusy);

signals:
    void sigSetInitial();
    void sigMeasure();

private:
    QPushButton* addButton(const QString& text, const QString& objectName);
    void fill();

    QTreeWidget* list_;
    QLabel* old_;
    QLabel* state_;
    QPushButton* setInitial_;
    QPushButton* measure_;
    QStringList initial_;
    QStringList current_;
};

} // namespace corvanta::vision
