#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "map/MapMarker.h"
#include "sensor/InputRecords.h"

#include <QSet>
#include <QTimer>

class QTreeWidget;

namespace corvanta::map {

/// "表格数据": the inputs of a marker's sensor with their newest values, which follow what arrives.
class MapMarkDataTabelDialog final : public FramedDialog {
    Q_OBJECT
public:
    MapMarkDataTabelDialog(const AppContext& context, const MapMarker& marker, QWidget* parent);

private:
    void setWords();
    void fill();
    void showValues(int row);
    void onValues(const QVariantList& values);

    AppContext context_;
    const MapMarker marker_;
    QVector<sensor::InputRecord> inputs_;
    QTreeWidget* list_;
    QSet<int> changed_; ///< rows
    QTimer beat_;       ///< rows are shown anew together
};

} // namespace corvanta::map
