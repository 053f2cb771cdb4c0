#pragma once

#include "manageWidget/ui/ConfigPage.h"

#include <QTimer>

class FlowRequest;
class QLineEdit;
class QProgressBar;

/// The installed version and the newest one; the upgrade from the service or from a file, and how far it is.
class UpgradeConfigPage final : public ConfigPage {
    Q_OBJECT
public:
    UpgradeConfigPage(const ConfigTarget& target, QWidget* parent);

protected:
    void read() override;

private:
    void askLatest();
    void chooseFile();
    void upload();
    void upgrade(const QVariantMap& from, const QString& detail);
    void watch();
    void showState(const QVariantMap& state);
    void showButtons();

    QLabel* installed_;
    QLabel* latest_;
    QLabel* notes_;
    QLabel* progressText_;
    QLineEdit* file_;
    QProgressBar* bar_;
    QPushButton* check_;
    QPushButton* install_;
    QPushButton* choose_;
    QPushButton* upload_;
    QPushButton* cancel_;
    FlowRequest* sending_;
    QTimer watch_;
    QString newest_; ///< the version to install; empty: none newer
    bool upgrading_ = false;
    int silent_ = 0; ///< readings of the state without an answer; the device restarts meanwhile
};
