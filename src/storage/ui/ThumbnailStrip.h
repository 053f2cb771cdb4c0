#pragma once

#include "storage/FoundFiles.h"
#include "storage/ui/Thumbnails.h"

#include <QAbstractListModel>
#include <QListView>

#include <memory>

/// The files of one device on one day, by time, with small pictures.
class ThumbnailModel final : public QAbstractListModel {
    Q_OBJECT
public:
    using Files = std::shared_ptr<const corvanta::storage::FoundFiles>;

    explicit ThumbnailModel(QObject* parent);

    void show(Files files, std::vector<int> positions);
    int fileOf(int row) const { return positions_[static_cast<std::size_t>(row)]; }
    int rowOf(int file) const;
    const Thumbnails& thumbnails() const { return thumbnails_; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    Files files_;
    std::vector<int> positions_;    ///< ascending
    mutable Thumbnails thumbnails_; ///< being asked changes what it keeps
};

/// A row of small pictures that is scrolled from the morning to the evening.
class ThumbnailStrip final : public QListView {
    Q_OBJECT
public:
    explicit ThumbnailStrip(QWidget* parent = nullptr);

    void show(ThumbnailModel::Files files, std::vector<int> positions);
    using QListView::show;
    /// Makes a file the current one, without a signal.
    void setCurrentFile(int file);
    /// By time.
    std::vector<int> selectedFiles() const;
    const Thumbnails& thumbnails() const { return model_->thumbnails(); }

signals:
    /// The user goes to another file.
    void sigCurrent(int file);

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QStyleOptionViewItem viewOptions() const override;
    void wheelEvent(QWheelEvent* event) override;

private:
    ThumbnailModel* model_;
    bool isSetting_ = false; ///< the current file changes by us, not by the user
};
