#pragma once

namespace ipncsdk::media {

/// How the calling thread stands against the others of the process when there is more to do than the cores can.
enum class ThreadRank {
    Stream,    ///< after whoever shows the pictures: a picture that comes late is better than one that is not shown
    Background ///< after the streams: what is made once and kept
};

/// Takes effect at once. Where the system does not allow it, nothing changes.
void setRank(ThreadRank rank);

} // namespace ipncsdk::media
