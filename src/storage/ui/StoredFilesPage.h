#pragma once

#include "base/AppContext.h"
#include "base/ui/Worded.h"
#include "storage/FoundFiles.h"
#include "storage/ui/FileActions.h"

#include <QTimer>
#include <QVector>
#include <QWidget>

#include <memory>

class DayBar;
class FileForm;
class FileTableView;
class QLabel;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QTabBar;
class QToolButton;
class RecordingStorage;
class SearchDiskThread;
class StoredDevicesThread;
class TimelinePane;

/// The module that browses the stored files of devices: what is looked for, what was found as a list and as the
/// timeline of a day, what can be done with it, and how full the drives are.
///
/// A search runs in a thread; there is one result at a time. What was found is a value that both views show.
class StoredFilesPage final : public QWidget {
    Q_OBJECT
public:
    /// `storage` outlives the page.
    StoredFilesPage(const AppContext& context, RecordingStorage& storage, QWidget* parent = nullptr);
    ~StoredFilesPage() override;

    bool isSearching() const { return search_ != nullptr; }
    const corvanta::storage::FoundFiles& files() const { return *files_; }
    FileTableView& table() const { return *table_; }
    TimelinePane& timeline() const { return *timeline_; }

public slots:
    /// Searches as the form says. One that runs is dropped.
    void search();
    /// Ends the search that runs; what it has found so far is shown.
    void stopSearch();

signals:
    /// These recordings are to be played.
    void sigPlay(QVector<corvanta::storage::FileRecord> files);
    /// A search has ended and its files are shown, or it was dropped.
    void sigResult();

protected:
    void showEvent(QShowEvent* event) override;

private:
    enum View { ListView, TimelineView };

    void build();
    QWidget* buildTop();
    QWidget* buildViews();
    QWidget* buildStatus();
    void addActions();
    void addAction(const QString& objectName, const corvanta::Text& text, const QString& drawing,
                   const QList<QKeySequence>& keys, const std::function<void()>& act);
    void connectParts();
    void onChoiceChanged();
    void onSearchEnded();
    void dropSearch();
    void follow();
    void showFiles(corvanta::storage::FoundFiles files);
    void showDay(const QDate& day);
    void onDeleted(const QSet<QString>& paths);
    void setWorking(bool working);
    void setInfo(corvanta::Text text);
    void sayInfo();
    void setEmpty(corvanta::Text text);
    QString foundText() const;
    void changeView(int view);
    void updateActions();
    void listDevices();
    void setDevices();
    void openMenu(const QPoint& position);
    void openCurrent();
    FileActions::Choice choice() const;
    void keepWidths();
    QString nameOf(const QString& ipncid) const;

    AppContext context_;
    RecordingStorage& storage_;
    std::shared_ptr<const corvanta::storage::FoundFiles> files_;
    SearchDiskThread* search_ = nullptr; ///< a child; one that was dropped deletes itself when it has ended
    StoredDevicesThread* devicesThread_ = nullptr;
    QStringList storedDevices_; ///< ids that have folders
    FileActions* actions_;
    QTimer progressTimer_;
    FileForm* form_ = nullptr;
    QTabBar* tabs_ = nullptr;
    DayBar* day_ = nullptr;
    QList<QAction*> fileActions_;
    QStackedWidget* stack_ = nullptr;
    FileTableView* table_ = nullptr;
    TimelinePane* timeline_ = nullptr;
    QLabel* empty_ = nullptr;
    corvanta::Text infoText_;
    corvanta::Text emptyText_;
    QLabel* info_ = nullptr;
    QProgressBar* progress_ = nullptr;
    QPushButton* cancel_ = nullptr;
    bool searchedOnce_ = false;
    bool stopped_ = false; ///< the search that runs was stopped by the user
};
