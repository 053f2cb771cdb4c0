#pragma once

#include "base/AppContext.h"
#include "linkage/AlarmInbox.h"
#include "storage/ui/PictureLoader.h"

#include <QDateTime>
#include <QWidget>

class AlarmTableModel;
class PictureView;
class QLabel;
class QPushButton;
class QStackedWidget;
class QTableView;
class RecordingStorage;

/// The module of alarms that nobody has acknowledged: a table, the chosen alarm's picture and text, and the ways from
/// there.
class AlarmCenterPage final : public QWidget {
    Q_OBJECT
public:
    /// `storage` outlives it.
    AlarmCenterPage(const AppContext& context, RecordingStorage& storage, QWidget* parent = nullptr);

signals:
    void sigLive(QString ipncid);
    /// What was recorded at the time of an alarm is to be played.
    void sigPlayback(QString ipncid, QDateTime time);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makeDetail();
    QWidget* makeButtons();
    /// Makes no column narrower than its words.
    void widenColumns();
    void refresh();
    void showChosen();
    void showPicture(int number);
    QStringList chosenKeys() const;
    /// Null when not exactly one is chosen.
    const corvanta::linkage::OpenAlarm* chosen() const;
    void acknowledge(const QStringList& keys);
    void askToAcknowledgeAll();

    AppContext context_;
    RecordingStorage& storage_;
    AlarmTableModel* model_;
    QTableView* table_ = nullptr;
    QStackedWidget* stack_ = nullptr;
    QLabel* count_ = nullptr;
    PictureView* picture_ = nullptr;
    QLabel* text_ = nullptr;
    QPushButton* nextPicture_ = nullptr;
    QPushButton* confirm_ = nullptr;
    QPushButton* confirmAll_ = nullptr;
    QPushButton* live_ = nullptr;
    QPushButton* playback_ = nullptr;
    QPushButton* map_ = nullptr;
    PictureLoader loader_;
    QStringList pictures_; ///< files of the chosen alarm
    int shownPicture_ = 0;
    QString shown_; ///< key, time and count of the alarm whose pictures were looked for
};
