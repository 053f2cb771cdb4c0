#pragma once

#include "video/FrameSize.h"

#include <QString>
#include <QVariantMap>

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

namespace corvanta::video {

/// A decoded picture in the SDK's memory: I420, tightly packed, byteCount(size) bytes. Valid only during the callback
/// whose message named it.
struct AvFrame {
    const std::uint8_t* data = nullptr;
    FrameSize size;
};

/// A picture message that must not be followed: its address or size cannot be right.
struct AvFrameRefused {
    QString reason; ///< English, for the debug stream
};

/// Any message that is no picture, as it came; an empty map when the text was no JSON object.
using AvReportMap = QVariantMap;

using AvMessage = std::variant<AvFrame, AvFrameRefused, AvReportMap>;

/// Parses one message of a video request's callback. Touches nothing but its argument, so any number of SDK threads
/// may be in it at once.
AvMessage parseAvMessage(std::string_view json);

/// The address that the integer of a message means in a process with pointers of `pointerBytes` bytes (4 or 8), or
/// nothing when it cannot be one. Senders write addresses of the upper half signed or unsigned, so both are taken.
std::optional<std::uint64_t> addressFromInteger(std::int64_t value, std::size_t pointerBytes);

/// Progress, opening or end of a stream, as the GUI thread handles it.
struct AvReport {
    enum class Kind {
        State, ///< "avstate"
        Open,  ///< "avopen"
        Close, ///< "avclose", and every unknown type with a retcode other than 0
        Other  ///< nothing to be done
    };

    Kind kind = Kind::Other;
    QString deviceId;
    int tileIndex = -1;
    int requestId = 0;
    int state = 0; ///< of Kind::State
    int retcode = 0;
    QString connectionType; ///< of Kind::Open
    QVariantMap parameters; ///< "avparam" of Kind::Open

    /// Reads a map made by `toGuiMap`. Missing keys and numbers that do not fit leave the defaults; a state that is
    /// missing or no number is not 0, so it reads -1.
    static AvReport fromMap(const QVariantMap& map);
};

/// A report with "DeviceId" and "index" added: whose request it belongs to. This is what crosses to the GUI thread.
QVariantMap toGuiMap(AvReportMap report, const QString& deviceId, int tileIndex);

/// What a tile keeps of how its stream is, in Chinese whatever the interface's language is; `shownText` has the words
/// that are shown. For the "state" of an "avstate":
QString openingText(int state);
/// Of a stream that is open.
QString openedText();
/// Of a stream that could not be opened or has ended by itself.
QString failedText(int retcode);
/// Such a text in the language that is spoken now; any other text as it is.
QString shownText(const QString& text);

} // namespace corvanta::video
