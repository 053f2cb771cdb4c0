#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <optional>
#include <vector>

/// MD5 of many files, over the cores. For telling versions of files apart, never for trust.
namespace corvanta::update {

/// How far it is, and the wish to end it. Any thread.
struct HashProgress {
    std::atomic<int> done{0};
    std::atomic<bool> cancelled{false};
};

/// The MD5 of the content of each of `paths` below `folder`, lower-case hexadecimal, in their order. Empty for what
/// is no regular file, cannot be read, is reached by a link (the folder itself may be one), or was not reached
/// because it was cancelled. Takes its time; any thread.
std::vector<QByteArray> md5OfFiles(const QString& folder, const std::vector<QString>& paths, HashProgress& progress);

} // namespace corvanta::update
