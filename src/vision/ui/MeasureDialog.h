#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "vision/ui/PictureView.h"

#include <QImage>
#include <QVariantList>

#include <functional>

class QPushButton;
class QTabWidget;

namespace corvanta::video {
class LivePane;
} // namespace corvanta::video

namespace corvanta::vision {

class InputsTable;

/// What the dialogs share in which cameras that measure are set up: the live picture and the one captured last on the
/// left, pages of settings on the right, the inputs, and storing in the device's record.
class MeasureDialog : public FramedDialog {
    Q_OBJECT
public:
    /// What tells one of them from the other.
    struct Kind {
        QString title;
        QString logged; ///< what the log of operations has for a title, in every language
        QString objectName;
        QString boardType; ///< of the boards whose inputs are set up
        QStringList axes;  ///< of those inputs
        QString operation; ///< the command that stores
        QString member;    ///< of the command, and of the device's record: what is stored
    };

    void done(int result) override;

protected:
    /// `kept`: the inputs as the record has them.
    MeasureDialog(const AppContext& context, const Kind& kind, const QString& ipncId, const QVariantList& kept,
                  QWidget* parent);

    const AppContext& context() const { return context_; }
    /// Of this device's pictures, relative to the data folder, with a slash at its end. Empty where the device's id
    /// can be no folder's name; nothing is captured then.
    const QString& folder() const { return folder_; }
    /// A file of that folder, absolute.
    QString pathOf(const QString& name) const;

    PictureView& picture() { return *picture_; }
    /// Shows a captured picture in place of the live one, which is a page beside it.
    void showPicture(const QImage& picture, const QVector<PictureView::Mark>& marks = {});

    void addPage(QWidget* page, const QString& title);
    /// The last page, and the end of building.
    void addInputs();

    /// Has the next live picture brought to `then`: a null one when there is none, which the user was told. False
    /// when one is on its way already; nothing is called then.
    bool capture(std::function<void(const QImage& picture)> then);

    /// Makes ready what was entered, files included, or says why it must not be stored; empty when it may.
    virtual QString makeReady() = 0;
    /// The object to be stored, once it is ready.
    virtual QVariantMap info(const QVariantList& inputs) = 0;

private:
    void save();
    void onCaptured(const QImage& picture);

    AppContext context_;
    const Kind kind_;
    const QString ipncId_;
    const QVariantList kept_;
    QString folder_;
    video::LivePane* live_;
    PictureView* picture_;
    QTabWidget* views_;
    QTabWidget* pages_;
    InputsTable* inputs_ = nullptr;
    QPushButton* save_ = nullptr;
    std::function<void(const QImage&)> then_; ///< what waits for a picture
};

} // namespace corvanta::vision
