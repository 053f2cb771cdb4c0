#pragma once

#include <QMetaType>
#include <QThread>

#include <memory>

/// A way to a peer on loopback on which the network goes away: at a byte of the conversation, over however many
/// connections that is held. Carries everything until then. Lives on a thread of its own, so a test may wait in
/// whatever it tests.
class CuttingProxy final {
public:
    /// Whose bytes are counted.
    enum class Side { Question, Answer };
    /// How the network is away: each connection is closed, also those that are made now, once a question has come;
    /// or each is kept and nothing passes any more.
    enum class Manner { Closed, Silent };

    /// `peer`: its port.
    explicit CuttingProxy(int peer);
    ~CuttingProxy();
    CuttingProxy(const CuttingProxy&) = delete;
    CuttingProxy& operator=(const CuttingProxy&) = delete;

    int port() const { return port_; }
    /// Takes the network away before the byte that follows `after` more of this side.
    void takeAway(Manner manner, qint64 after, Side side = Side::Answer);
    /// New connections are carried again. Those that fell silent stay so: what was between them has forgotten them,
    /// and the peer has given them up.
    void bringBack();
    /// Whether the byte has come at which the network was to go away.
    bool isAway() const;
    /// How many bytes of a side have been carried since the network was taken away or brought back last.
    qint64 carried(Side side = Side::Answer) const;

private:
    class Worker;

    QThread thread_;
    std::unique_ptr<Worker> worker_; ///< lives in the thread
    int port_ = 0;
};

Q_DECLARE_METATYPE(CuttingProxy::Manner)
Q_DECLARE_METATYPE(CuttingProxy::Side)
