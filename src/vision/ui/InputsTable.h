#pragma once

#include "vision/setup/MeasuredInput.h"

#include <QWidget>

class QTreeWidget;

namespace corvanta::vision {

/// The inputs that measurements are reported as: name, axis, and whether they are reported.
class InputsTable final : public QWidget {
    Q_OBJECT
public:
    InputsTable(QVector<MeasuredInput> inputs, QWidget* parent);

    QVector<MeasuredInput> inputs() const;

private:
    QVector<MeasuredInput> inputs_; ///< as they were handed in
    QTreeWidget* list_;
};

} // namespace corvanta::vision
