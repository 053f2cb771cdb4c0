#pragma once

#include <QString>
#include <QVariantMap>

/// The one table of the errors that the service sends, with the texts that the user reads.
namespace corvanta::serverErrors {

/// The text for an error code such as "(not login)"; a code without an entry yields a general text that shows it.
QString text(const QString& code);

/// The text for a failed reply: by its "resp"/"errcode", else by a top-level "errcode", else by its "retcode"; with
/// the service's or the device's own words ("resp"/"text") behind it, or in its place where they say all. To be shown
/// as plain text.
QString textOfReply(const QVariantMap& reply);

/// What is said where no reply comes in time.
QString noReplyText();

/// True when the reply's "resp"/"state" says success.
bool isSuccess(const QVariantMap& reply);

/// The error code of a reply ("(not login)"), empty when it carries none.
QString codeOf(const QVariantMap& reply);

} // namespace corvanta::serverErrors
