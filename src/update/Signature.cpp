#include "update/Signature.h"

#include <sodium.h>

namespace corvanta::update {

std::optional<SigningKey> keyOfThisBuild() {
    const QByteArray key = QByteArray::fromHex(CORVANTA_UPDATE_KEY);
    return key.isEmpty() ? std::nullopt : std::optional(SigningKey{key});
}

bool isSignedBy(const SigningKey& key, const QByteArray& text, const QByteArray& signature) {
    const int wanted = static_cast<int>(crypto_sign_BYTES);
    const QByteArray bytes = signature.size() == wanted ? signature : QByteArray::fromBase64(signature.trimmed());
    if (sodium_init() < 0 || key.bytes.size() != static_cast<int>(crypto_sign_PUBLICKEYBYTES) ||
        bytes.size() != wanted)
        return false;
    const auto* const raw = reinterpret_cast<const unsigned char*>(bytes.constData());
    const auto* const message = reinterpret_cast<const unsigned char*>(text.constData());
    const auto* const publicKey = reinterpret_cast<const unsigned char*>(key.bytes.constData());
    return crypto_sign_verify_detached(raw, message, static_cast<unsigned long long>(text.size()), publicKey) == 0;
}

} // namespace corvanta::update
