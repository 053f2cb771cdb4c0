#pragma once

#include <QVariantMap>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QPushButton;
class TimeRangeEdit;

/// The form of a log search: which log, which time.
class serchFormLog final : public QWidget {
    Q_OBJECT
public:
    explicit serchFormLog(QWidget* parent = nullptr);

    /// "type" (0..3), "start" and "end" (date-times), "allTime" (bool: the range does not count).
    QVariantMap parameters() const;

    int type() const;
    /// Chooses a log without searching.
    void setType(int type);
    /// While a search runs, the button ends it.
    void setSearching(bool searching);
    /// All of the first log.
    void reset();

public slots:
    /// Lets the user choose a day for the range's start or end.
    void onStartTimeComboxclicked();
    void onendTimeComboxclicked();

signals:
    /// The user wants to search.
    void sig_clicked();
    /// The user wants the running search to end.
    void sig_stop();
    /// Another log was chosen.
    void sig_typeChosen(int type);

private:
    void enableRange();

    QComboBox* type_;
    QCheckBox* allTime_;
    TimeRangeEdit* range_;
    QPushButton* search_;
    bool searching_ = false;
};
