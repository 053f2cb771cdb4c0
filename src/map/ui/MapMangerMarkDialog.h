#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "map/MapDocument.h"
#include "sensor/InputRecords.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTreeWidget;

namespace corvanta::map {

/// "设置标记参数": name, values, when the label is seen, place and icon of a marker.
class MapMangerMarkDialog final : public FramedDialog {
    Q_OBJECT
public:
    /// `document` outlives the dialog.
    MapMangerMarkDialog(const AppContext& context, MapDocument& document, const MapRecord& map,
                        const MapMarker& marker, QWidget* parent);

private:
    void build();
    void buildInputs();
    QWidget* buildIcon();
    QWidget* buildPlace(bool isOnline);
    QWidget* buildModes();
    void showIcon();
    MapMarker entered() const;
    void save();

    AppContext context_;
    MapDocument& document_;
    const MapRecord map_;
    MapMarker marker_; ///< as it was, with the icon that was chosen since
    QVector<sensor::InputRecord> inputs_;
    QLineEdit* name_ = nullptr;
    QCheckBox* showDatas_ = nullptr;
    QTreeWidget* list_ = nullptr;
    QRadioButton* always_ = nullptr;
    QRadioButton* mouseIn_ = nullptr;
    QCheckBox* isUpdate_ = nullptr;
    QLineEdit* first_ = nullptr;  ///< x, or the longitude
    QLineEdit* second_ = nullptr; ///< y, or the latitude
    QLabel* icon_ = nullptr;
    QPushButton* save_ = nullptr;
};

} // namespace corvanta::map
