#pragma once

#include "manageWidget/ui/ConfigPage.h"

#include <string>

class QCheckBox;
class QComboBox;
class QLineEdit;

/// The wired address and the Wi-Fi of a device.
class NetworkConfigPage final : public ConfigPage {
    Q_OBJECT
public:
    NetworkConfigPage(const ConfigTarget& target, QWidget* parent);

protected:
    void read() override;

private:
    void buildWired();
    void buildWifi();
    void show(const QVariantMap& state);
    void showState();
    void saveWired();
    void saveWifi();
    void command(const QString& operation, QVariantMap parameters, QPushButton* busy, const QString& what,
                 const QString& detail);

    QCheckBox* dhcp_ = nullptr;
    QLineEdit* ip_ = nullptr;
    QLineEdit* mask_ = nullptr;
    QLineEdit* gateway_ = nullptr;
    QLineEdit* dns_ = nullptr;
    QLabel* mac_ = nullptr;
    QPushButton* saveWired_ = nullptr;
    QLineEdit* ssid_ = nullptr;
    QComboBox* security_ = nullptr;
    QLineEdit* password_ = nullptr;
    QLabel* signal_ = nullptr;
    QPushButton* saveWifi_ = nullptr;
};
