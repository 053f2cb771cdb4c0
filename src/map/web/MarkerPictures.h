#pragma once

#include "map/MapMarker.h"

#include <QDateTime>
#include <QHash>
#include <QSet>

#include <functional>

namespace corvanta::map {

/// Icons as the page gets them: small pictures with their content in the address, never paths, so that the page needs
/// no file of this computer. Each is handed over once and then named.
class MarkerPictures final {
public:
    /// Largest edge of what the page gets, px: an icon is 32 px large, on fine screens twice that.
    static constexpr int Edge = 64;

    /// `define` tells the page what a name means.
    using Define = std::function<void(const QString& name, const QString& address)>;

    /// What to write in a call for the marker's icon. A file that is missing or no picture counts as none: then it is
    /// the page's own drawing of a camera or a sensor.
    QString nameFor(const MapMarker& marker, const Define& define);
    /// The page is a new one and knows no picture.
    void forgetPage() { defined_.clear(); }

private:
    struct Picture {
        QDateTime changed; ///< of the file; another time is another picture
        QString name;
        QString address; ///< empty: not to be read
    };
    Picture& pictureAt(const QString& path);

    QHash<QString, Picture> pictures_; ///< by path
    QSet<QString> defined_;            ///< names that the page knows
    int count_ = 0;
};

} // namespace corvanta::map
