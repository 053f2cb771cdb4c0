#pragma once

#include <QString>

/// The conversation between a test and the plugin that reads a program for it: over a local socket, with QDataStream,
/// a question (int, QStringList of ids) and an answer (QVariantList), one after the other. Numbers below 100 are
/// those of `AccessSource::What`.
namespace questions {

enum Special : int {
    Root = 100, ///< the id of the program
    OpenMenu,   ///< the id of the menu that is open
    Crash,      ///< the GUI thread writes to where nothing is; no answer
};

inline QString socketName(qint64 process) {
    return QStringLiteral("corvanta-reader-%1").arg(process);
}

} // namespace questions
