#pragma once

#include "map/web/MyWebEngineView.h"

#include <QObject>

#include <memory>

/// What tests of the online map share: a view with its page, and ways to ask the page itself.
class WebMapTest : public QObject {
    Q_OBJECT
protected:
    /// Makes and shows a view, and waits for its page; false when that does not come.
    bool open(const corvanta::map::WebMapOptions& options = {}, const QList<corvanta::map::MapMarker>& markers = {});
    /// What a script evaluates to in the page.
    QVariant ask(const QString& script) const;
    /// Waits until a script is true in the page.
    bool becomes(const QString& script) const;
    /// The widget that takes the page's input.
    QWidget* input() const;
    /// As the system tells it: press, release, double click, release.
    void doubleClick(const QPoint& at) const;
    /// The middle of what a selector finds first, px; (-1, -1) when nothing is there.
    QPoint middleOf(const QString& selector) const;

    std::unique_ptr<corvanta::map::MyWebEngineView> view_;

protected slots:
    void cleanup() { view_.reset(); }
};

corvanta::map::MapMarker makeMarker(const QString& name, double lat, double lng);
