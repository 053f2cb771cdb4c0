#pragma once

#include "manageWidget/ui/ConfigPage.h"

class QComboBox;

/// What the device is, and its time zone.
class InfoConfigPage final : public ConfigPage {
    Q_OBJECT
public:
    InfoConfigPage(const ConfigTarget& target, QWidget* parent);

protected:
    void read() override;

private:
    void fillZones(const QString& current);
    void saveZone();

    QLabel* software_;
    QLabel* kernel_;
    QLabel* bios_;
    QComboBox* zone_;
    QPushButton* save_;
};
