#pragma once

#include "account/AccountTest.h"
#include "map/MapDocument.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMenu>

/// What the tests of maps share: an account with devices and maps, and a service that has their files.
class MapTest : public AccountTest {
    Q_OBJECT
protected:
    /// Two devices: "A", a camera with the sensors 10 (inputs 101, 102) and 12 (protocol 4353), and "B".
    void giveDevices();
    /// The document of maps and icons; whoever reads it again finds this.
    void giveMaps(const QJsonArray& own, const QJsonArray& shared = {}, const QJsonObject& icons = {});
    static QJsonObject mapOf(const char* id, const QString& name, const QJsonArray& markers = {},
                             const char* type = "local");
    static QJsonObject markerOf(const char* id, const char* pid, const QString& name, double x = 0.5, double y = 0.5);
    /// Requests for files are answered with a picture from now on, or refused.
    void serveFiles(bool has = true);
    QStringList filesAsked();
    /// Answers a request that is a flow ("userupload") or one for a video; "" answers nothing.
    void answerFlow(const QByteArray& reply) { answer("", reply); }
    /// The requests of a "reqtype" of their own.
    QList<QVariantMap> flows(const char* type);
    int idOfLast();

    /// The first upload; empty when there was none.
    QVariantMap upload() { return flows("userupload").value(0); }
    /// Writes a picture into the test's folder and returns its path.
    QString picture(const char* name, const QSize& size = {64, 36});

    /// Selects the row of a dialog's "list" that has this text in its second column.
    static void select(const QWidget& dialog, const QString& text);
    /// Names, and that the dialog fits a small window.
    static void checkForm(const QWidget& dialog);
    /// Chooses from the menu that is open.
    static void choose(const char* menu, const char* action);

    static QString hostile();
};
