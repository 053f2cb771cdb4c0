#pragma once

#include "storage/FileDeletion.h"
#include "storage/FoundFiles.h"
#include "storage/ui/FileTexts.h"

#include <QObject>
#include <QSet>
#include <QVector>

#include <memory>

class QWidget;
class RecordingStorage;

/// What the user does with stored files: opening, showing in their folder, copying their paths, deleting.
class FileActions final : public QObject {
    Q_OBJECT
public:
    using Files = std::shared_ptr<const corvanta::storage::FoundFiles>;

    /// What is acted on.
    struct Choice {
        Files files;
        std::vector<int> shown;    ///< all that the view has, in its order
        std::vector<int> selected; ///< of those
        int current = -1;          ///< the one that the user is at; -1: none
    };

    /// `storage` and `parent`, over which dialogs are shown, outlive the actions.
    FileActions(const RecordingStorage& storage, corvanta::storage::DeviceNames nameOf, QWidget* parent);
    ~FileActions() override;

    /// Shows pictures in a dialog: the selected ones, or all that are shown when one is selected. Recordings are
    /// handed to `sigPlay`. What the current file is, counts. Returns the file that the user was at last.
    int open(const Choice& choice);
    void showInFolder(const Choice& choice);
    void copyPaths(const Choice& choice);
    /// Asks, then deletes in the background; `sigDeleted` tells the end.
    void remove(const Choice& choice);

    /// Files dealt with and to be dealt with by the deletion that runs; null when none runs.
    const FileDeletion* deletion() const { return deletion_.get(); }
    void cancelDeletion();

signals:
    /// These recordings are to be played.
    void sigPlay(QVector<corvanta::storage::FileRecord> files);
    /// A line about what was done.
    void sigMessage(QString text);
    void sigDeletionStarted();
    /// These files are gone, the list may be empty.
    void sigDeleted(QSet<QString> paths);

private:
    int openPictures(const Choice& choice);
    void onDeletionFinished();
    void tip(const QString& text);

    const RecordingStorage& storage_;
    corvanta::storage::DeviceNames nameOf_;
    QWidget* parent_;
    QStringList deleting_; ///< paths
    std::unique_ptr<FileDeletion> deletion_;
};
