#include "media/backchannel/BackChannelMedia.h"

#include "media/Stream.h"
#include "media/backchannel/RtspText.h"

#include <vector>

namespace ipncsdk::media {

namespace {

/// One section of a description, and that before the first one.
struct Section {
    bool isSound = false;
    bool isSendOnly = false;
    std::vector<std::string_view> formats; ///< payload types
    std::vector<std::string_view> maps;    ///< "rtpmap" attributes
    std::string_view control;
};

Section beginSection(std::string_view media) {
    Section section;
    section.isSound = cutField(media, ' ') == "audio";
    cutField(media, ' '); // the port
    const std::string_view protocol = cutField(media, ' ');
    section.isSound = section.isSound && (protocol == "RTP/AVP" || protocol == "RTP/AVP/TCP");
    while (!media.empty()) {
        section.formats.push_back(cutField(media, ' '));
    }
    return section;
}

void addAttribute(Section& section, std::string_view attribute) {
    const std::string_view name = cutField(attribute, ':');
    if (name == "sendonly") {
        section.isSendOnly = true;
    } else if (name == "rtpmap") {
        section.maps.push_back(attribute);
    } else if (name == "control") {
        section.control = trimmed(attribute);
    }
}

std::vector<Section> readSections(std::string_view description) {
    std::vector<Section> sections(1);
    while (!description.empty()) {
        std::string_view line = cutField(description, '\n');
        line = line.substr(0, line.find('\r'));
        if (line.starts_with("m=")) {
            sections.push_back(beginSection(line.substr(2)));
        } else if (line.starts_with("a=")) {
            addAttribute(sections.back(), line.substr(2));
        }
    }
    return sections;
}

/// Reads "NAME/RATE", or "NAME/RATE/CHANNELS".
bool readEncoding(std::string_view text, BackChannelMedia& media) {
    const std::string_view name = cutField(text, '/');
    const std::string_view rate = cutField(text, '/');
    const bool isALaw = isSameWord(name, "PCMA");
    media.codec = isALaw ? AV_CODEC_ID_PCM_ALAW : AV_CODEC_ID_PCM_MULAW;
    return (isALaw || isSameWord(name, "PCMU")) && (text.empty() || text == "1") &&
           readNumber(rate, lowestSoundRate, highestSoundRate, media.rate);
}

/// The first of the section's formats that can be made.
bool chooseFormat(const Section& section, BackChannelMedia& media) {
    for (const std::string_view format : section.formats) {
        if (!readNumber(format, 0, 127, media.payloadType)) {
            continue;
        }
        // Those two need no words.
        std::string_view encoding = format == "0" ? "PCMU/8000" : format == "8" ? "PCMA/8000" : "";
        for (std::string_view map : section.maps) {
            encoding = cutField(map, ' ') == format ? trimmed(map) : encoding;
        }
        if (readEncoding(encoding, media)) {
            return true;
        }
    }
    return false;
}

std::string resolve(std::string_view control, std::string_view base) {
    if (control.empty() || control == "*") {
        return std::string(base);
    }
    constexpr std::string_view scheme = "rtsp://";
    if (isSameWord(control.substr(0, scheme.size()), scheme)) {
        return std::string(control);
    }
    std::string url(base);
    if (url.empty() || url.back() != '/') {
        url += '/';
    }
    return url.append(control);
}

} // namespace

std::optional<BackChannelMedia> BackChannelMedia::choose(std::string_view description, std::string_view base) {
    const std::vector<Section> sections = readSections(description);
    BackChannelMedia media;
    media.aggregate = resolve(sections.front().control, base);
    for (std::size_t index = 1; index < sections.size(); ++index) {
        const Section& section = sections[index];
        if (!section.isSound || !section.isSendOnly || !chooseFormat(section, media)) {
            continue;
        }
        media.control = resolve(section.control, base);
        if (isAddressText(media.control) && isAddressText(media.aggregate)) {
            return media;
        }
    }
    return std::nullopt;
}

} // namespace ipncsdk::media
