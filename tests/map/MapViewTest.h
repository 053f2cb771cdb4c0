#pragma once

#include "map/MapTest.h"
#include "map/ui/ElectronMapwidget.h"
#include "map/ui/FwidgetElectronMap.h"
#include "map/ui/ItemMapWidget.h"
#include "map/ui/MapCanvas.h"
#include "map/ui/MapLabel.h"

#include <memory>

/// What the tests of the module of maps share: a page with a map on a picture, and the mouse over it.
class MapViewTest : public MapTest {
    Q_OBJECT
protected:
    struct Open {
        std::unique_ptr<corvanta::map::FwidgetElectronMap> page;
        corvanta::map::ItemMapWidget* cell = nullptr;
        corvanta::map::ElectronMapwidget* view = nullptr;
        corvanta::map::MapCanvas& canvas() const { return view->canvas(); }
        QPoint placeOf(int index) const { return canvas().mapFromScene(view->label(index)->pos()); }
    };
    /// A page whose first cell shows the first map, with its picture.
    Open open(const QJsonArray& markers, bool shared = false);
    static QPoint middle(const corvanta::map::MapCanvas& canvas) { return canvas.viewport()->rect().center(); }
    static void drop(corvanta::map::MapCanvas& canvas, const QPoint& place, const QString& ipncId,
                     const QString& pid);
    static void openMenu(corvanta::map::MapCanvas& canvas, const QPoint& place);
    static void wheel(corvanta::map::MapCanvas& canvas, const QPoint& place, int eighths);
};
