#pragma once

#include <QString>

namespace corvanta::update {

/// The folder that collects what an update fetches: "Corvanta" in the system's folder for temporary files. Others may
/// write beside it, so it is made anew, for this user alone, and links in it are never followed.
class DownloadFolder final {
public:
    /// `path`: absolute, without a slash at its end.
    explicit DownloadFolder(QString path);

    /// Where it is on this computer.
    static DownloadFolder ofThisComputer();

    const QString& path() const { return path_; }
    /// Where a file goes, by its path relative to the installation folder.
    QString pathOf(const QString& file) const { return path_ + QLatin1Char('/') + file; }

    /// Removes it with all it contains; of a link in its place, only the link. False when something is left.
    bool remove() const;
    /// Makes it, empty. False when that cannot be done, or something is in its place.
    bool create() const;
    /// Makes the folders that `file` lies in, and removes the file itself if it is there. False when it cannot be
    /// written there, or only by way of a link.
    bool prepareFor(const QString& file) const;

private:
    QString path_;
};

} // namespace corvanta::update
