#pragma once

#include "vision/setup/PhotoCheck.h"
#include "vision/setup/PhotoSeries.h"

#include <QImage>
#include <QWidget>

#include <memory>

class QLabel;
class QListWidget;
class QPushButton;

namespace corvanta::vision {

/// The photos of a chessboard: taken one after the other, looked at in the background as soon as they are there,
/// taken again, deleted. Small pictures with the corners that were found. Photos come from outside, when asked for.
class PhotoList final : public QWidget {
    Q_OBJECT
public:
    /// `folder`: see `PhotoSeries`.
    PhotoList(const QString& folder, QWidget* parent);
    ~PhotoList() override;

    const PhotoSeries& series() const { return series_; }
    void setCount(int count);
    void setShape(const BoardShape& shape);
    /// While photos are read for something else, none is taken or deleted.
    void setBusy(bool isBusy);
    /// The photo that `sigCaptureWanted` asked for; null when there is none.
    void onCaptured(const QImage& photo);

signals:
    void sigCaptureWanted();
    /// A photo in its full size, with the corners drawn into it: the one taken or chosen last.
    void sigShown(const QImage& drawn);
    void sigProblem(const QString& text);

private:
    QPushButton* addButton(const QString& text, const QString& objectName);
    void fill();
    void showItem(int number);
    void showButtons();
    int current() const;
    void take(int number);
    void removeCurrent();
    void removeAll();
    void lookAtNext();
    void onLooked();

    PhotoSeries series_;
    QListWidget* list_;
    QLabel* counts_;
    QPushButton* capture_;
    QPushButton* retake_;
    QPushButton* remove_;
    QPushButton* clear_;
    bool isBusy_ = false;
    int awaited_ = 0;      ///< number of the photo that was asked for; 0: none
    int wanted_ = 0;       ///< number of the photo to be shown once it was looked at; 0: none
    bool isStale_ = false; ///< the photo that is looked at is another one by now
    std::unique_ptr<PhotoCheck> check_;
};

} // namespace corvanta::vision
