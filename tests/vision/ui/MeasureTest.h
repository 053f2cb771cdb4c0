#pragma once

#include "account/AccountTest.h"

#include <QImage>
#include <QVariantMap>

/// What the tests of the measuring dialogs share: a service that answers by script, a device "a" with a board of
/// codes and one of laser spots, and its camera, which shows what a test wants.
class MeasureTest : public AccountTest {
    Q_OBJECT
protected:
    /// Gives the device, with its "info" and whether the account is its administrator.
    void begin(const QByteArray& info = "{}", const QByteArray& authority = "true");
    /// Shows a dialog and opens its video.
    void showLive(QWidget& dialog);
    /// Presses a button that captures; the camera shows `picture` then.
    void capture(const QWidget& dialog, const char* button, const QImage& picture);
    static void turnTo(const QWidget& dialog, int page);
    /// A text of the table of positions.
    static QString cell(const QWidget& dialog, int row, int column);
    /// Saves and returns what the user is told.
    static QString saved(const QWidget& dialog);
    /// "info" of the last command, which is one of this type.
    QVariantMap stored(const char* type);
    /// Names, the size in a small window, and that no page is cut off sideways.
    void checkForm(QDialog& dialog);

    /// A picture of nothing.
    static QImage wall();

    static constexpr QSize Picture{640, 480}; ///< px, of what the camera shows
    int stream_ = 0;                          ///< the request of the video that was opened last
};
