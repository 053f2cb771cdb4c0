#pragma once

#include "storage/StoredFiles.h"
#include "storage/ui/PictureLoader.h"

#include <QCache>
#include <QPixmap>
#include <QSet>

/// Small pictures of stored files. What is asked for comes later, by a signal; what was shown lately is kept.
class Thumbnails final : public QObject {
    Q_OBJECT
public:
    /// Size of the pictures, px.
    static constexpr QSize Size{96, 54};

    explicit Thumbnails(QObject* parent = nullptr);

    /// The small picture of a file, or what stands for it: for a video a drawing, for a picture that is not there yet
    /// an empty one, for one that cannot be shown a drawing that says so. GUI thread; waits for nothing.
    QPixmap of(const corvanta::storage::FileRecord& file);
    /// Whether a file's own picture is there.
    bool has(const QString& path) const { return pictures_.contains(path); }
    int kept() const { return pictures_.count(); }

    /// Kept at most.
    static constexpr int MostKept = 600;

signals:
    /// The picture of a file is there, or known not to come.
    void sigReady(QString path);

private:
    static QPixmap drawn(const QString& drawing);

    PictureLoader loader_;
    QCache<QString, QPixmap> pictures_;
    QCache<QString, bool> unreadable_; ///< paths
    QPixmap video_;
    QPixmap empty_;
    QPixmap missing_;
};
