#pragma once

#include <QString>
#include <QVariantMap>

#include <cstddef>
#include <span>
#include <string_view>
#include <variant>

namespace corvanta::audio {

/// The form of samples: signed 16-bit PCM, little-endian, interleaved.
struct SoundFormat {
    int rate = 0; ///< samples a second, 8000 to 48000
    int channels = 0;
    friend bool operator==(const SoundFormat&, const SoundFormat&) = default;
};

/// A piece of sound in the SDK's memory; valid only during the callback whose message named it.
struct SoundBlock {
    std::span<const std::byte> samples;
    SoundFormat format;
};

/// A sound message that must not be followed.
struct SoundRefused {
    QString reason; ///< English, for the debug stream
};

/// Any other message of the request, as it came; an empty map when the text was no JSON object.
using SoundMessage = std::variant<SoundBlock, SoundRefused, QVariantMap>;

/// Parses one message of a listening request's callback. Touches nothing but its argument: any thread.
SoundMessage parseSoundMessage(std::string_view json);

/// The requests for a device's sound, and for a way to talk to it.
QVariantMap listenRequest(const QString& deviceId);
QVariantMap talkRequest(const QString& deviceId, const SoundFormat& format);

/// Whether a stream's parameters ("avparam") say that it can be listened to, and talked to.
bool canListen(const QVariantMap& streamParameters);
bool canTalk(const QVariantMap& streamParameters);

/// What the operator is told when a request for sound ends by itself with a code.
QString endedText(int retcode);

} // namespace corvanta::audio
