#pragma once

#include <QObject>

#include <thread>

/// Work in a thread of its own, done once for each start.
///
/// A class that has such work calls `join` in its destructor, before anything that the work uses goes. Standard
/// threads do it rather than Qt's: that the end of the one comes before the end of the other is then known to all,
/// tools that look for races included.
class BackgroundThread : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    ~BackgroundThread() override;

    /// Begins the work; again only after `join`.
    void start();
    /// Waits for the end, if it has been started. Not in the thread itself.
    void join();

signals:
    /// The work is over; in the thread of the receiver, which joins before it reads what was made.
    void finished();

protected:
    virtual void run() = 0;

private:
    std::thread thread_;
};
