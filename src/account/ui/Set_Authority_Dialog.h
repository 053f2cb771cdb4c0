#pragma once

#include "account/ShareModel.h"
#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"

#include <QHash>
#include <QPair>

class QLineEdit;
class QTabWidget;
class QTreeWidget;
class ShareView;

/// Who may see which camera: by friend, by device, and what friends share with the account. Every check is sent at
/// once; one that is refused goes back.
class Set_Authority_Dialog final : public FramedDialog {
    Q_OBJECT
public:
    explicit Set_Authority_Dialog(const AppContext& context, QWidget* parent = nullptr);

    /// Asks the service for the list.
    void reload();

private:
    using Pair = QPair<QString, QString>; ///< a friend's number, a device's id

    void addViews(QTabWidget& tabs);
    QWidget* makeReceived(QWidget* parent);
    void showModel();
    void filterReceived();
    bool isShared(const QString& friendPhone, const QString& ipncId) const;
    void share(const QString& friendPhone, const QString& ipncId, bool on);
    void settled(const Pair& pair, bool on);
    QString nameOf(const QString& friendPhone) const;

    AppContext context_;
    ShareModel model_;
    QHash<Pair, bool> wanted_; ///< what was sent and is not answered yet
    ShareView* byFriend_ = nullptr;
    ShareView* byDevice_ = nullptr;
    QLineEdit* receivedSearch_ = nullptr;
    QTreeWidget* received_ = nullptr;
};
