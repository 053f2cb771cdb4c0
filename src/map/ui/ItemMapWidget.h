#pragma once

#include "base/AppContext.h"
#include "base/ui/Worded.h"
#include "map/MapDocument.h"

#include <QWidget>

class QLabel;
class QMenu;
class QPushButton;
class QStackedWidget;
class QToolButton;

namespace corvanta::map {

class ElectronMapwidget;
class MapSession;
class MapView;

/// One cell of the map module: a map, or a hint how to open one. Its menu opens, closes and manages maps.
class ItemMapWidget final : public QWidget {
    Q_OBJECT
public:
    /// `document` outlives it. `number` counts the cells.
    ItemMapWidget(const AppContext& context, MapDocument& document, int number, QWidget* parent = nullptr);
    ~ItemMapWidget() override;

    int number() const { return number_; }
    /// Empty when none is open.
    QString mapId() const;
    /// Shows a map in place of what is shown; an unknown one is ignored.
    void openMap(const QString& mapId);
    void closeMap();
    /// Null when no map is open.
    MapView* view() const { return view_; }
    MapSession* session() const { return session_; }
    /// What the cell says where no map is.
    QString hint() const;

signals:
    /// A map was opened or closed.
    void sigChanged();
    /// A map is to be added and then shown here.
    void sigAdd(int number);
    void sigManage();
    /// The cell is to be shown alone, or not any more.
    void sigZoom(int number);

protected:
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void build();
    QWidget* makeHead();
    QWidget* makeFailure();
    void showHint();
    MapView* makeView(const MapRecord& map);
    void connectView(const MapRecord& map);
    void onMaps();
    void showFailure(Text text);
    void retry();
    void showMenu(const QPoint& place);
    void fillOpenMenu(QMenu& menu);
    void openDialog(const QString& dialogType);

    AppContext context_;
    MapDocument& document_;
    const int number_;
    QWidget* head_ = nullptr;
    QLabel* name_ = nullptr;
    QStackedWidget* stack_ = nullptr;
    QLabel* hint_ = nullptr;
    QWidget* failure_ = nullptr;
    QLabel* failureText_ = nullptr;
    MapView* view_ = nullptr;              ///< in the stack
    ElectronMapwidget* picture_ = nullptr; ///< `view_`, where it is a map on a picture
    MapSession* session_ = nullptr;        ///< the view's
    Text webMissing_;                      ///< the cell says this instead of a map; may be empty
    Text failed_;                          ///< why a picture is not shown; empty before it has failed
};

} // namespace corvanta::map
