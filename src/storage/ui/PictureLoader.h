#pragma once

#include "base/TaskQueue.h"

#include <QImage>
#include <QObject>
#include <QSize>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

/// Reads pictures in a thread of its own. Lives in the GUI thread.
class PictureLoader final : public QObject {
    Q_OBJECT
public:
    explicit PictureLoader(QObject* parent = nullptr);
    /// Waits for the picture that is being read.
    ~PictureLoader() override;

    /// Wants a picture, scaled down to fit into `bound` (empty: as it is). The last wish is served first; of many
    /// wishes that wait, the oldest are forgotten.
    void request(const QString& path, const QSize& bound);
    /// Forgets all wishes that wait.
    void forget();

    /// Wishes that may wait.
    static constexpr std::size_t MostWaiting = 128;

signals:
    /// A wish is fulfilled; a null image: there is no such picture, or none that can be shown.
    void sigLoaded(QString path, QImage image);

private:
    struct Wish {
        std::u16string path; ///< threads share no texts of the toolkit
        int width = 0;
        int height = 0;
    };
    void run();

    TaskQueue results_; ///< from the thread to here
    std::mutex mutex_;  ///< for what follows, up to the thread
    std::condition_variable changed_;
    std::deque<Wish> waiting_; ///< the newest last
    bool ends_ = false;
    std::thread thread_; ///< begins last: it uses the others
};
