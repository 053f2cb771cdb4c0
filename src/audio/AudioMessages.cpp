#include "audio/AudioMessages.h"

#include "video/MemoryMessage.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

namespace corvanta::audio {

namespace {

constexpr qint64 LongestBlock = 1 << 20; // bytes; more than two seconds of anything
constexpr int SlowestRate = 8000;
constexpr int FastestRate = 48000;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Audio)
};

QVariantMap request(const QString& deviceId, const char* wish) {
    return {{QStringLiteral("ipncid"), deviceId},
            {QStringLiteral("reqtype"), QStringLiteral("avreq")},
            {QLatin1String(wish), true}};
}

} // namespace

SoundMessage parseSoundMessage(std::string_view json) {
    if (json.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        return QVariantMap();
    const QByteArray bytes = QByteArray::fromRawData(json.data(), static_cast<int>(json.size()));
    const QJsonObject message = QJsonDocument::fromJson(bytes).object();
    if (message.value(QLatin1String("type")).toString() != QLatin1String("audiodata"))
        return message.toVariantMap();
    const SoundFormat format{message.value(QLatin1String("rate")).toInt(),
                             message.value(QLatin1String("channels")).toInt()};
    const bool isKnown = format.rate >= SlowestRate && format.rate <= FastestRate && format.channels >= 1 &&
                         format.channels <= 2 && message.value(QLatin1String("bits")).toInt() == 16;
    if (!isKnown)
        return SoundRefused{QStringLiteral("sound refused: form")};
    const auto samples = video::memoryOf(message, LongestBlock);
    if (!samples || samples->size() % static_cast<std::size_t>(2 * format.channels) != 0)
        return SoundRefused{QStringLiteral("sound refused: address or length")};
    return SoundBlock{*samples, format};
}

QVariantMap listenRequest(const QString& deviceId) {
    return {{QStringLiteral("avreq"), request(deviceId, "recvaudiodata")}};
}

QVariantMap talkRequest(const QString& deviceId, const SoundFormat& format) {
    QVariantMap keys = request(deviceId, "sendaudiodata");
    keys.insert(QStringLiteral("rate"), format.rate);
    keys.insert(QStringLiteral("channels"), format.channels);
    return {{QStringLiteral("avreq"), keys}};
}

bool canListen(const QVariantMap& streamParameters) {
    return streamParameters.value(QStringLiteral("audiolisten")).toInt() == 1;
}

bool canTalk(const QVariantMap& streamParameters) {
    return streamParameters.value(QStringLiteral("audioplay")).toInt() == 3;
}

QString endedText(int retcode) {
    switch (retcode) {
    case 7:
        return Texts::tr("该设备没有声音");
    case 8:
        return Texts::tr("该设备不支持对讲");
    case 9:
        return Texts::tr("该设备正在与他人对讲");
    default:
        return Texts::tr("音频已断开(%1)").arg(retcode);
    }
}

} // namespace corvanta::audio
