#pragma once

#include "base/ui/FramedDialog.h"

class QGridLayout;

/// The keys of the main window, in one column or, where there is room, in two.
class HelpSheet final : public FramedDialog {
    Q_OBJECT
public:
    explicit HelpSheet(QWidget* parent = nullptr);

    int columns() const { return columns_; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Line {
        QWidget* key;
        QWidget* text;
    };

    void arrange(int columns);

    QGridLayout* grid_;
    QList<Line> lines_; ///< in the order of `corvanta::shortcuts()`
    int columns_ = 0;
};
