#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "map/MarkerRules.h"

class QLineEdit;
class QPushButton;
class QRadioButton;
class QWidget;

namespace corvanta::map {

class UploadBar;

/// "添加地图": a map on a picture of the user's, or one on the world.
class AddMapwidget final : public FramedDialog {
    Q_OBJECT
public:
    AddMapwidget(const AppContext& context, QWidget* parent);

signals:
    /// A new map, by its id; empty where the service has not told it.
    void sigAdded(QString mapId);

private:
    void build();
    QWidget* buildPicture();
    MapDraft entered() const;
    void showKind();
    void browse();
    void save();
    void upload(const MapDraft& draft);
    void submit(const MapDraft& draft);
    void added(const MapDraft& draft, const QVariantMap& resp, const QString& text);

    AppContext context_;
    QRadioButton* local_ = nullptr;
    QRadioButton* online_ = nullptr;
    QLineEdit* name_ = nullptr;
    QWidget* pictureForm_ = nullptr;
    QLineEdit* picture_ = nullptr;
    QLineEdit* distanceX_ = nullptr;
    QLineEdit* distanceY_ = nullptr;
    QPushButton* save_ = nullptr;
    UploadBar* bar_ = nullptr;
};

} // namespace corvanta::map
