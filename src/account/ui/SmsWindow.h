#pragma once

#include "base/ui/FramedDialog.h"

#include <QVariantMap>

class QTreeWidget;

/// Text messages that left no gateway, newest first, so that codes can be read without a phone. A window that blocks
/// nothing and keeps no program running; it stays above dialogs, for codes are wanted there.
class SmsWindow final : public FramedDialog {
    Q_OBJECT
public:
    SmsWindow();

    /// Adds a message ("phonenumber", "text", "time") and shows the window, over `owner`'s lower right corner when
    /// it was not shown.
    void add(const QVariantMap& message, const QWidget* owner);

    static constexpr int Most = 50; ///< messages that are kept

private:
    /// The code in the message that is chosen, the whole text of one without a code.
    void copy();

    QTreeWidget* list_;
};
