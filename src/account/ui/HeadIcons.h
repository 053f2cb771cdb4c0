#pragma once

#include "base/AppContext.h"

#include <QIcon>
#include <QObject>
#include <QSet>

/// The pictures of accounts as small round icons. What is kept here is shown at once; the newest is fetched from the
/// service once in the life of this object. GUI thread.
class HeadIcons final : public QObject {
    Q_OBJECT
public:
    explicit HeadIcons(const AppContext& context, QObject* parent = nullptr);

    /// The icon of a friend, a drawing where there is no picture.
    QIcon icon(const QString& friendPhone);
    /// The icon of the account that is signed in, null where there is none.
    QIcon own();
    /// The picture of the signed-in account is another one: its file has changed already.
    void ownChanged() { emit sigChanged(QString()); }
    /// Forgets what was asked for: somebody else is signed in.
    void restart() { asked_.clear(); }

signals:
    /// A picture came; the number is empty for the signed-in account's own.
    void sigChanged(QString friendPhone);

private:
    void fetch(const QString& friendPhone, const QString& file);

    AppContext context_;
    QSet<QString> asked_; ///< numbers, an empty one for the own picture
};
