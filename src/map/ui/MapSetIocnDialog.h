#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "map/MapDocument.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTabWidget;

namespace corvanta::map {

class UploadBar;

/// The icon library: public icons and the account's own, chosen for a marker, added from files, deleted.
class MapSetIocnDialog final : public FramedDialog {
    Q_OBJECT
public:
    /// `document` outlives the dialog.
    MapSetIocnDialog(const AppContext& context, MapDocument& document, QWidget* parent);

signals:
    void sigChosen(corvanta::map::MapIcon icon);

private:
    QWidget* buildLibrary();
    QWidget* buildLocal();
    void fill();
    const MapIcon* selected() const;
    void choose();
    void browse();
    void upload();
    void askToDelete();
    void deleteIcon(const QString& fileName);

    AppContext context_;
    MapDocument& document_;
    QTabWidget* tabs_;
    QListWidget* list_ = nullptr;
    QLabel* preview_ = nullptr;
    QLineEdit* path_ = nullptr;
    QPushButton* upload_ = nullptr;
    QPushButton* delete_ = nullptr;
    UploadBar* bar_ = nullptr;
};

} // namespace corvanta::map
