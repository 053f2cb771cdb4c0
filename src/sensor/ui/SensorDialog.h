#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "sensor/SensorTypes.h"

class QLabel;
class QMenu;
class QTreeWidget;

namespace corvanta::sensor {

/// The boards of a device: a list, from which they are made (out of a template or a kind), edited and deleted.
class SensorDialog final : public FramedDialog {
    Q_OBJECT
public:
    SensorDialog(const AppContext& context, const QString& ipncId, QWidget* parent);

    /// Puts the cursor on a board.
    void select(int pid);

private:
    void readTypes();
    void readInterfaces();
    void fillMenu();
    void fill();
    void showButtons();
    const QVariantMap* current() const;
    void edit(const QVariantMap& board);
    void remove();
    /// Opens what sets the current board's camera up, where it measures with one.
    void measure();

    AppContext context_;
    QString ipncId_;
    SensorTypes types_;
    QVector<QVariantMap> boards_;
    QVariantList interfaces_; ///< as the service told them
    QTreeWidget* list_;
    QLabel* state_;
    QMenu* new_;
    QPushButton* add_;
    QPushButton* edit_;
    QPushButton* remove_;
    QPushButton* measure_;
};

} // namespace corvanta::sensor
