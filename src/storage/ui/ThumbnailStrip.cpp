#include "storage/ui/ThumbnailStrip.h"

#include "base/SizeText.h"
#include "base/ui/PlainToolTip.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"
#include "storage/ui/FileTexts.h"

#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace theme = corvanta::theme;
namespace fileTexts = corvanta::storage::fileTexts;

namespace {
const QSize CellSize(Thumbnails::Size.width() + 2 * theme::Step, Thumbnails::Size.height() + 5 * theme::Step);
}

ThumbnailModel::ThumbnailModel(QObject* parent)
    : QAbstractListModel(parent)
    , files_(std::make_shared<const corvanta::storage::FoundFiles>()) {
    connect(&thumbnails_, &Thumbnails::sigReady, this, [this](const QString& path) {
        for (int row = 0; row < rowCount(); ++row) {
            if (files_->at(fileOf(row)).path == path)
                emit dataChanged(index(row), index(row), {Qt::DecorationRole});
        }
    });
}

void ThumbnailModel::show(Files files, std::vector<int> positions) {
    beginResetModel();
    files_ = std::move(files);
    positions_ = std::move(positions);
    endResetModel();
}

int ThumbnailModel::rowOf(int file) const {
    const auto row = std::lower_bound(positions_.begin(), positions_.end(), file);
    return row == positions_.end() || *row != file ? -1 : static_cast<int>(row - positions_.begin());
}

int ThumbnailModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(positions_.size());
}

QVariant ThumbnailModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const corvanta::storage::FileRecord& file = files_->at(fileOf(index.row()));
    switch (role) {
    case Qt::DisplayRole:
        return file.time.toString(QStringLiteral("hh:mm:ss"));
    case Qt::DecorationRole:
        return thumbnails_.of(file);
    case Qt::ToolTipRole:
        return corvanta::plainToolTip(
            QStringLiteral("%1 %2\n%3")
                .arg(fileTexts::kind(file.kind), corvanta::sizeText(file.size), fileTexts::oneLine(file.path, 2000)));
    case Qt::AccessibleTextRole:
        return QStringLiteral("%1 %2").arg(fileTexts::time(file), fileTexts::kind(file.kind));
    default:
        return {};
    }
}

ThumbnailStrip::ThumbnailStrip(QWidget* parent)
    : QListView(parent)
    , model_(new ThumbnailModel(this)) {
    setObjectName(QStringLiteral("fileThumbnails"));
    corvanta::wordedName(this, [] { return tr("缩略图"); });
    setModel(model_);
    setFlow(LeftToRight);
    setWrapping(false);
    setUniformItemSizes(true);
    setGridSize(CellSize);
    setIconSize(Thumbnails::Size);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setFixedHeight(CellSize.height() + 3 * theme::Step); // with the scroll bar
}

void ThumbnailStrip::show(ThumbnailModel::Files files, std::vector<int> positions) {
    isSetting_ = true;
    model_->show(std::move(files), std::move(positions));
    isSetting_ = false;
}

void ThumbnailStrip::setCurrentFile(int file) {
    isSetting_ = true;
    const int row = file < 0 ? -1 : model_->rowOf(file);
    if (row >= 0 && row != currentIndex().row())
        setCurrentIndex(model_->index(row));
    isSetting_ = false;
}

std::vector<int> ThumbnailStrip::selectedFiles() const {
    std::vector<int> result;
    const QItemSelection ranges = selectionModel()->selection();
    for (const QItemSelectionRange& range : ranges) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            result.push_back(model_->fileOf(row));
    }
    std::sort(result.begin(), result.end());
    return result;
}

void ThumbnailStrip::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QListView::currentChanged(current, previous);
    if (!isSetting_ && current.isValid())
        emit sigCurrent(model_->fileOf(current.row()));
}

QStyleOptionViewItem ThumbnailStrip::viewOptions() const {
    QStyleOptionViewItem option = QListView::viewOptions();
    option.decorationPosition = QStyleOptionViewItem::Top;
    option.decorationAlignment = Qt::AlignCenter;
    option.displayAlignment = Qt::AlignCenter;
    return option;
}

void ThumbnailStrip::wheelEvent(QWheelEvent* event) {
    // There is one direction to go in, whichever way the wheel turns.
    const int turned = event->angleDelta().x() != 0 ? event->angleDelta().x() : event->angleDelta().y();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - turned);
    event->accept();
}
