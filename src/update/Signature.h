#pragma once

#include <QByteArray>

#include <optional>

/// Ed25519 signatures of descriptions (RFC 8032), detached, in a file beside the description.
namespace corvanta::update {

/// Whose signature a description must have: a public key of 32 bytes.
struct SigningKey {
    QByteArray bytes;
};

/// The key of this build, or nothing when it was built without one: then every description is taken.
std::optional<SigningKey> keyOfThisBuild();

/// Whether `signature` (64 bytes, or their Base64 text) is the key's for `text`.
bool isSignedBy(const SigningKey& key, const QByteArray& text, const QByteArray& signature);

} // namespace corvanta::update
