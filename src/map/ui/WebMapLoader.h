#pragma once

#include "base/ui/Worded.h"

class QWidget;

namespace corvanta::map {

class MapView;
struct WebMapOptions;

/// A view for an online map, out of the plugin that is loaded at the first call and then stays. Null, with a sentence
/// for the user in `problem`, where this build has none or the view must not run. GUI thread.
MapView* makeWebMap(const WebMapOptions& options, QWidget* parent, Text& problem);

} // namespace corvanta::map
