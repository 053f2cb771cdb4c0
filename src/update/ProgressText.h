#pragma once

#include "update/UpdateDownload.h"

namespace corvanta::update {

/// What the user reads of a download: what is done, then how much, how fast and how long ("12.4 MB / 80.1 MB  1.2
/// MB/s  剩余 1:05"). Plain text; the name of the file came from outside.
struct ProgressText {
    QString what;
    QString howFar;
    int permille = 0; ///< of the step that goes on; -1: not known
};

/// Nothing in it while the state is idle.
ProgressText progressText(UpdateDownload::State state, const UpdateDownload::Progress& progress);

} // namespace corvanta::update
