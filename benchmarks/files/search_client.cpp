// The search of stored files without its page: looks through a drive and prints how many files it found, how large
// they are together, and how long that took (ms).
#include "storage/StoredFiles.h"

#include <QElapsedTimer>

#include <cstdio>

int main(int argc, char* argv[]) {
    namespace storage = corvanta::storage;
    if (argc != 2) {
        std::fprintf(stderr, "search_client DRIVE/\n");
        return 2;
    }
    const auto query =
        storage::FileQuery::fromTexts(QStringLiteral("2000-01-01 00:00:00"), QStringLiteral("2100-01-01 00:00:00"));
    storage::SearchProgress progress;
    QElapsedTimer time;
    time.start();
    const auto files = storage::searchFiles({QString::fromLocal8Bit(argv[1])}, *query, progress);
    const double passed = static_cast<double>(time.nsecsElapsed()) / 1e6;
    qint64 bytes = 0;
    for (const storage::FileRecord& file : files)
        bytes += file.size;
    std::printf("%zu %lld %.3f\n", files.size(), static_cast<long long>(bytes), passed);
    return 0;
}
