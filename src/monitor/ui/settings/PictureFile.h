#pragma once

#include <QImage>
#include <QSize>
#include <QString>

namespace corvanta {

/// A picture from a file of the user, or why there is none.
struct PictureFile {
    QImage picture;  ///< null when it could not be read
    QString problem; ///< a text for the user, empty when it could

    /// Reads the picture, made smaller where it does not fit `bounds`, its shape kept. Damaged files, files that are
    /// no pictures, and pictures of more than 100 million pixels are refused.
    static PictureFile read(const QString& path, const QSize& bounds);
};

/// What a file dialog offers as pictures.
QString pictureFilter();

} // namespace corvanta
