#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "map/MarkerRules.h"

class QLineEdit;
class QPushButton;

namespace corvanta::map {

/// "编辑地图信息": name and extent of an own map.
class SetElectronMapDialog final : public FramedDialog {
    Q_OBJECT
public:
    SetElectronMapDialog(const AppContext& context, const MapRecord& map, QWidget* parent);

private:
    void save();

    AppContext context_;
    const MapRecord map_;
    QLineEdit* name_ = nullptr;
    QLineEdit* distanceX_ = nullptr; ///< null for an online map
    QLineEdit* distanceY_ = nullptr;
    QPushButton* save_ = nullptr;
};

} // namespace corvanta::map
