#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "sensor/SensorTypes.h"

class QComboBox;
class QLineEdit;
class QPushButton;
class QTreeWidget;

namespace corvanta::sensor {

class FieldForm;

/// One board of a device: parameters, inputs, outputs; inputs are read and outputs written from here. It edits a copy
/// that is stored as a whole.
class BoardDialog final : public FramedDialog {
    Q_OBJECT
public:
    struct Subject {
        QString ipncId;
        QVariantMap board; ///< without "pid": a new one
        SensorType type;
        QStringList interfaces; ///< names of those that are free, of this type
    };
    BoardDialog(const AppContext& context, const Subject& subject, QWidget* parent);

private:
    /// The list of inputs, or of outputs, with its buttons.
    struct Ports {
        bool isInput = true;
        QVariantList list;
        QTreeWidget* view = nullptr;
        QPushButton* edit = nullptr;
        QPushButton* remove = nullptr;
        QPushButton* use = nullptr; ///< read or write now
    };

    QWidget* makeParameters();
    QWidget* makePorts(Ports& ports);
    QPushButton* portButton(const QString& text, const QString& objectName);
    void fill(Ports& ports);
    void showButtons(Ports& ports);
    void editPort(Ports& ports, int row);
    void removePort(Ports& ports);
    void read(const Ports& ports);
    void write(const Ports& ports);
    QVariantMap board() const;
    void save();

    AppContext context_;
    Subject subject_;
    QLineEdit* name_ = nullptr;
    QComboBox* interface_ = nullptr;
    FieldForm* fields_ = nullptr;
    Ports inputs_;
    Ports outputs_;
    QPushButton* save_ = nullptr;
};

} // namespace corvanta::sensor
