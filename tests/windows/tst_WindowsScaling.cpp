#include "e2e/ProgramTest.h"
#include "e2e/Sight.h"

#include <QtTest>

#include <windows.h>

namespace {

/// The display's scaling as the system tells programs, 1.0 for 96 dots per inch.
double systemScaling() {
    const HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return dots / 96.0;
}

} // namespace

/// The program on a display with scaling: all of it grows with the display, none of it is cut off, and it is still
/// hit where it is seen.
class tst_WindowsScaling final : public ProgramTest {
    Q_OBJECT
private slots:
    void growsWithTheDisplay();
};

void tst_WindowsScaling::growsWithTheDisplay() {
    const double scaling = systemScaling();
    const QString percent = QString::number(qRound(scaling * 100));
    // Which scaling the run is about; without it, the one that is set here.
    QCOMPARE(percent, qEnvironmentVariable("CORVANTA_WINE_SCALING", percent));
    STEP(startAndSignIn());
    STEP(chooseLayout(QStringLiteral("四窗口"), 4));
    STEP(doubleClickRow(window().rows().at(1)));
    QVERIFY(sight::becomesLive(window().tile(0)));
    constexpr int RowHeight = 28; // px, without scaling
    QCOMPARE(window().row(window().rows().at(1)).place().height(), qRound(RowHeight * scaling));
    QVERIFY(window().frame().contains(window().grid()));
    QVERIFY(Desktop::screen().contains(window().frame()));
    if (qEnvironmentVariableIsSet("CORVANTA_E2E_PICTURES")) {
        QVERIFY(Desktop::look().save(
            QStringLiteral("%1/scaling-%2.png").arg(qEnvironmentVariable("CORVANTA_E2E_PICTURES"), percent)));
    }
    quit();
}

QTEST_MAIN(tst_WindowsScaling)
#include "tst_WindowsScaling.moc"
