#pragma once

#include "base/ui/Worded.h"

#include <QComboBox>
#include <QStringList>

class QListView;
class QStandardItem;
class QStandardItemModel;

/// A field that opens a list in which any of its entries can be ticked, or "all": nothing ticked means all, too.
class CheckListBox final : public QComboBox {
    Q_OBJECT
public:
    struct Entry {
        QString id;
        QString text;
        QString tip; ///< plain
    };

    /// `allText` is shown while all are meant.
    CheckListBox(const QString& objectName, corvanta::Text name, corvanta::Text allText, QWidget* parent);

    /// Replaces the entries; what is ticked stays so where it is still there.
    void setEntries(const QList<Entry>& entries);
    /// The ids that are ticked; empty: all.
    QStringList chosen() const;
    void choose(const QStringList& ids);

    void showPopup() override;
    void hidePopup() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// Something else is ticked, by the user.
    void sigChosen();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void toggle(const QModelIndex& index);
    void showChosen();
    void sayWords();
    QString text() const;

    const corvanta::Text name_;
    const corvanta::Text allText_;
    QFrame* popup_;
    QListView* list_;
    QStandardItemModel* entries_; ///< the first one stands for all
};
