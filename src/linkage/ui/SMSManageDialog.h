#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"

#include <QVariantList>

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;

/// Text messages of the account: how many it may still send, whom to remind when these run out, and what was sent.
class SMSManageDialog final : public FramedDialog {
    Q_OBJECT
public:
    explicit SMSManageDialog(const AppContext& context, QWidget* parent = nullptr);

    /// Which way to leaf: to older records, or back to newer ones.
    enum class Way { Next, Front };

private:
    QWidget* makeBasics();
    QWidget* makeRecords();
    void loadBasics();
    void saveReminder();
    void leaf(Way way);
    void showRecords(Way way, const QVariantList& records);

    AppContext context_;
    QLabel* left_ = nullptr;
    QLineEdit* phone_ = nullptr;
    QLineEdit* warnAt_ = nullptr;
    QPushButton* save_ = nullptr;
    QTreeWidget* list_ = nullptr;
    QLabel* empty_ = nullptr;
    QPushButton* front_ = nullptr;
    QPushButton* next_ = nullptr;
    qlonglong first_ = 0; ///< ids of the records shown; 0: none
    qlonglong last_ = 0;
};
