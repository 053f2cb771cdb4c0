#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"

#include <QVector>

class ConfigPage;
class QListWidget;
class QStackedWidget;

/// The configuration of a device, in pages that read when they are first seen.
class DeviceConfigDialog final : public FramedDialog {
    Q_OBJECT
public:
    /// `ipncId` is a device of the account.
    DeviceConfigDialog(const AppContext& context, const QString& ipncId, QWidget* parent);

    int pageCount() const { return pages_.size(); }
    void showPage(int page);

    void done(int result) override;

private:
    void addPage(ConfigPage* page, const QString& text, const char* objectName);

    QListWidget* list_;
    QStackedWidget* stack_;
    QVector<ConfigPage*> pages_;
};
