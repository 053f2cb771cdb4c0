#pragma once

#include <QObject>
#include <QTcpServer>

/// An update server for the tour, on loopback: a newer version with one large file, which arrives slowly, or with a
/// small one.
class TourUpdateServer final : public QObject {
    Q_OBJECT
public:
    explicit TourUpdateServer(QObject* parent);

    /// Begins to serve; false when it cannot.
    bool listen() { return server_.listen(QHostAddress::LocalHost); }
    QString address() const;
    /// From now on the version has a large file, or a small one.
    void setLarge(bool isLarge) { isLarge_ = isLarge; }

private:
    void answer(QTcpSocket& socket, const QByteArray& head);
    QByteArray description() const;

    QTcpServer server_;
    bool isLarge_ = true;
};
