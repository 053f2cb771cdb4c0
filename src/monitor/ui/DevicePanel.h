#pragma once

#include <QWidget>

class DeviceModel;
class DeviceTree;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;

/// The left side of the main window: a search field, the device tree, and, while there are no devices, what to do
/// next.
class DevicePanel final : public QWidget {
    Q_OBJECT
public:
    explicit DevicePanel(QWidget* parent = nullptr);

    DeviceTree& tree() const { return *tree_; }
    void setSignedIn(bool signedIn);
    void rebuild(const DeviceModel& devices);
    void clear();
    /// Puts the cursor into the search field.
    void startSearch();

signals:
    void sigSignIn();
    void sigRefresh();

private:
    QLayout* makeHead();
    QWidget* makeEmptyState();
    void showWhatFits();

    DeviceTree* tree_;
    QLineEdit* search_;
    QStackedWidget* stack_;
    QLabel* emptyText_;
    QPushButton* signIn_;
    bool signedIn_ = false;
};
