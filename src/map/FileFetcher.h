#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>
#include <QVariantMap>

class FlowRequest;
class SdkGateway;

namespace corvanta::map {

/// Fetches files of the account from the service, a few at a time, each once: one that could not be had is not asked
/// for again before `again` or `forget`. GUI thread.
class FileFetcher final : public QObject {
    Q_OBJECT
public:
    /// `gateway` outlives it.
    explicit FileFetcher(SdkGateway& gateway, QObject* parent = nullptr);

    /// `parameters` name the file to the service; it is written to `path`.
    void want(const QString& path, const QVariantMap& parameters);
    /// The next one to be fetched, if it is wanted and has not begun; also one that failed.
    void again(const QString& path);
    bool isFetching(const QString& path) const { return wanted_.contains(path) && !failed_.contains(path); }
    /// Ends everything: somebody else is signed in, or nobody.
    void forget();

signals:
    void sigReady(QString path);
    void sigFailed(QString path, QString text);
    void sigProgress(QString path, qint64 done, qint64 total);

private:
    void startNext();
    void start(const QString& path);
    void ended(const QString& path, FlowRequest* flow);

    static constexpr int MostAtOnce = 3;

    SdkGateway& gateway_;
    QHash<QString, QVariantMap> wanted_; ///< by path, until it is there
    QList<QString> waiting_;             ///< paths of those that have not begun
    QSet<QString> failed_;
    QList<FlowRequest*> running_;
};

} // namespace corvanta::map
