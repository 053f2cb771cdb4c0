#pragma once

#include "e2e/AccessSource.h"

#include <QLocalSocket>

#include <map>
#include <memory>

/// Answers by the plugin that programs load (reader/), over a pipe to each.
class PipeAccess final : public AccessSource {
public:
    /// What a program tells of itself; null while it does not answer.
    QString special(qint64 process, int question);
    /// Asks for what has no answer.
    void order(qint64 process, int question);

    QVector<QVariant> ask(What what, const QStringList& things) override;

private:
    QLocalSocket* socketTo(qint64 process);
    QVariantList converse(qint64 process, int question, const QStringList& things);

    std::map<qint64, std::unique_ptr<QLocalSocket>> sockets_;
};
