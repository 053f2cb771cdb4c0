#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"

class NetworkPage;

/// The network page of the settings as a dialog of its own, for who cannot sign in without a proxy.
class ProxyDialog final : public FramedDialog {
    Q_OBJECT
public:
    explicit ProxyDialog(const AppContext& context, QWidget* parent = nullptr);

private:
    void save();

    AppContext context_;
    NetworkPage* page_;
};
