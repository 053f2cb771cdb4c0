#pragma once

#include "base/ui/FramedDialog.h"
#include "sensor/InputRecords.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace corvanta::sensor {

/// Chooses inputs out of all: devices, below them their inputs, with a search field.
class InputPicker final : public FramedDialog {
    Q_OBJECT
public:
    /// `most` can be chosen, those of `chosen` are at first. Only what belongs to `ipncId` is open, if one is named.
    struct Start {
        QVector<int> chosen;
        int most = 0;
        QString ipncId = {};
    };
    InputPicker(const QVector<InputRecord>& inputs, const Start& start, QWidget* parent);

    QVector<int> chosen() const;

private:
    void fill(const QVector<InputRecord>& inputs, const Start& start);
    void filter(const QString& text);
    void check();

    const int most_;
    QLineEdit* search_;
    QTreeWidget* tree_;
    QLabel* count_;
    QPushButton* ok_;
};

} // namespace corvanta::sensor
