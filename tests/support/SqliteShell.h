#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QtTest>

/// The database's own shell, which reads and writes our files independently of us.
namespace sqliteShell {

/// What the statements print, a line a row, columns parted by "|". Fails the test when the shell complains.
inline QStringList run(const QString& file, const QString& statements) {
    QProcess shell;
    shell.start(QStringLiteral("sqlite3"), {QStringLiteral("-batch"), file});
    shell.write(statements.toUtf8());
    shell.closeWriteChannel();
    if (!shell.waitForFinished() || shell.exitCode() != 0)
        QTest::qFail(shell.readAllStandardError().constData(), __FILE__, __LINE__);
    return QString::fromUtf8(shell.readAllStandardOutput())
        .remove(QLatin1Char('\r'))
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace sqliteShell
