#pragma once

#include "app/AppManager.h"
#include "storage/ui/DayTimeline.h"
#include "storage/ui/FileTableView.h"
#include "storage/ui/StoredFilesPage.h"
#include "storage/ui/TimelinePane.h"
#include "support/FakeSdk.h"
#include "support/RecordingUi.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>
#include <memory>

/// The page of stored files over a real data tree of two cameras' files, driven as an operator does.
class StoredFilesTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

protected:
    static QDateTime today(const char* time) {
        return QDateTime(QDate::currentDate(), QTime::fromString(QLatin1String(time), QStringLiteral("hh:mm:ss")));
    }
    QString folder(const QString& id, const char* kind, const QDateTime& time) const {
        return QStringLiteral("%1ZEL/%2/%3/%4/")
            .arg(drive_, id, QLatin1String(kind), time.toString(QStringLiteral("yyyy-MM-dd")));
    }
    /// Writes a stored file, a picture where it is one; its path.
    QString add(const QString& id, const char* kind, const QDateTime& time, const char* rest, int bytes = 10) const;
    void show();
    void search();
    /// The page has the keys, as it has again by itself where a window manager is.
    void activate();
    static bool takeKeys(QWidget& window);
    template <typename T>
    T& part(const char* name) const {
        return *page_->findChild<T*>(QLatin1String(name));
    }
    void press(const char* name);
    /// Ticks an entry of a list of choices, by mouse.
    void tick(const char* name, const QString& text);
    QStringList column(int number) const;
    FileTableView& table() const { return page_->table(); }
    DayTimeline& timeline() const { return page_->timeline().timeline(); }
    void clickRow(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier, bool isDouble = false);
    void clickHeader(int column);
    QString info() const { return part<QLabel>("filesInfo").text(); }
    /// Deals with the next modal window.
    void answer(std::function<void(QWidget*)> act);
    void showTimeline();

    FakeSdk& sdk_ = FakeSdk::instance();
    RecordingUi ui_;
    std::unique_ptr<QTemporaryDir> dir_;
    QString drive_;
    std::unique_ptr<AppManager> manager_;
    std::unique_ptr<StoredFilesPage> page_;
    bool answered_ = false;
};
