#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"

#include <vector>

class QListWidget;
class QStackedWidget;
class SettingsPage;

/// The software settings: a list of pages, one page of them, and "确定", "取消", "应用". What the user changed is
/// checked, stored and saved together; the first problem brings up its page.
class SettingsDialog final : public FramedDialog {
    Q_OBJECT
public:
    explicit SettingsDialog(const AppContext& context, QWidget* parent = nullptr);

    /// A result: the language was changed, and the dialog is to be shown anew in it.
    static constexpr int SayAnew = 2;

    int page() const;
    /// Brings up a page by its number in the list, from 0.
    void setPage(int page);
    /// Brings up a page by its object name; an unknown one changes nothing.
    void showPage(const QString& objectName);

public slots:
    /// Asks first when something was changed.
    void reject() override;

signals:
    /// Settings were changed and saved; their keys, those that have really changed only.
    void sigApplied(QStringList changedKeys);

private:
    void addPages();
    void addPage(SettingsPage* page);
    void addButtons();
    void onEdited();
    bool isChanged() const;
    /// False when something is wrong, which is shown then.
    bool apply();
    void showProblemOf(int page, const QString& text);

    AppContext context_;
    QListWidget* list_;
    QStackedWidget* stack_;
    QPushButton* apply_;
    std::vector<SettingsPage*> pages_; ///< in the order of the list, children of this dialog
};
