#pragma once

#include <QList>
#include <QString>
#include <QWidget>

#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

/// One of the two ways to see who may see what: something is picked (a friend, or a device), and a list of the others
/// has a check for each. It shows what it is told; a check that the user changes is an event.
class ShareView final : public QWidget {
    Q_OBJECT
public:
    struct Choice {
        QString key;
        QString text;
        QString search; ///< what is looked for beside the text
    };
    struct Texts {
        QString name; ///< object name
        QString pick; ///< label of what is picked
        QString pickHint;
        QString list; ///< label of the list
        QString unchecked;
        QString checked;
    };
    using IsChecked = std::function<bool(const QString& picked, const QString& key)>;

    /// `isChecked` tells the state of a check whenever the view is shown anew.
    ShareView(const Texts& texts, IsChecked isChecked, QWidget* parent);

    /// What is picked stays picked while it is still there.
    void setChoices(const QList<Choice>& picks, const QList<Choice>& rows);
    /// Asks for the state of every check again.
    void refresh();

signals:
    void sigChecked(QString picked, QString key, bool checked);

private:
    QLayout* makePick(const Texts& texts);
    void pickTyped();
    void onItem(QListWidgetItem* item);
    void checkAll(bool checked);
    void filter();
    void showAll();

    IsChecked isChecked_;
    QComboBox* pick_ = nullptr;
    QLineEdit* search_;
    QCheckBox* all_;
    QListWidget* list_;
    QString picked_; ///< key
    bool showing_ = false;
};
