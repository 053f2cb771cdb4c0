#pragma once

#include "base/ui/FramedDialog.h"
#include "storage/FoundFiles.h"
#include "storage/ui/FileTexts.h"
#include "storage/ui/PictureLoader.h"

#include <memory>

class PictureView;
class QLabel;

/// Shows stored pictures, one at a time, with the way to the one before and the one after.
class PictureViewer final : public FramedDialog {
    Q_OBJECT
public:
    using Files = std::shared_ptr<const corvanta::storage::FoundFiles>;

    /// `pictures` are positions in `files`, in the order in which they are leafed through; not empty. `first` is the
    /// one of them (by its place) that is shown first.
    PictureViewer(Files files, std::vector<int> pictures, std::size_t first, corvanta::storage::DeviceNames nameOf,
                  QWidget* parent);

    /// The position in the files of what is shown.
    int currentFile() const { return pictures_[current_]; }

private:
    void addKeys();
    void showPicture(std::size_t number);
    void go(int pictures);
    void showFactor();

    Files files_;
    const std::vector<int> pictures_;
    std::size_t current_ = 0; ///< of `pictures_`
    corvanta::storage::DeviceNames nameOf_;
    PictureLoader loader_;
    PictureView* view_;
    QLabel* text_;
    QPushButton* previous_;
    QPushButton* next_;
    QPushButton* size_;
};
