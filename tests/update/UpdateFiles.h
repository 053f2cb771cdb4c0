#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QtTest>

/// Files and other programs, as the tests of updates need them.
namespace updateFiles {

/// Writes a file, and the folders above it.
inline void write(const QString& path, const QByteArray& content) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

inline QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("nothing");
}

/// What a program of the system says, given some input; empty when it fails.
inline QByteArray said(const QString& program, const QStringList& arguments, const QByteArray& input = {},
                       const QString& at = {}) {
    QProcess process;
    process.setWorkingDirectory(at);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    return process.waitForFinished(60000) && process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

/// A key and its signature of "text" in a folder, made by the system's own tool: "public.der" and "text.sig".
inline void sign(const QString& folder, const QByteArray& text) {
    write(folder + "/text", text);
    for (const char* command :
         {"genpkey -algorithm ed25519 -out key.pem", "pkey -in key.pem -pubout -outform DER -out public.der",
          "pkeyutl -sign -inkey key.pem -rawin -in text -out text.sig"})
        said("openssl", QString(command).split(' '), {}, folder);
}

} // namespace updateFiles
