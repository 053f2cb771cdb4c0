#pragma once

#include <QStringList>

/// Collects the debug stream of the program while it lives. One at a time; any thread may write.
class MessageLog final {
public:
    MessageLog();
    ~MessageLog();
    MessageLog(const MessageLog&) = delete;
    MessageLog& operator=(const MessageLog&) = delete;

    QStringList lines() const;
    /// How many lines contain `text`.
    int count(const QString& text) const;
};
