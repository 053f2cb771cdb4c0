#pragma once

#include "base/AppContext.h"

#include <QObject>
#include <QPointer>

class DeviceTree;
class QDialog;
class QWidget;
class TopBar;

/// The dialogs of linkage plans, notification rules and text messages over the main window. They close with the
/// sign-in. GUI thread.
class LinkageControl final : public QObject {
    Q_OBJECT
public:
    /// `tree`, `bar` and `window` outlive it.
    LinkageControl(const AppContext& context, DeviceTree& tree, TopBar& bar, QWidget& window);

    void openPlans(const QString& ipncId);
    void openRules();
    void openTextMessages();

    /// Somebody signed in or out; an empty number is nobody.
    void onAccount(const QString& number);
    /// Ends the dialog about a device that is gone.
    void onLists();

private:
    void open(QDialog* dialog, const QString& ipncId);

    AppContext context_;
    QWidget& window_;
    QPointer<QDialog> dialog_; ///< there is one at a time
    QString device_;           ///< that it is about
    QString account_;
};
