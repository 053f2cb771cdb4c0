#include "onvif/DiscoveryMessage.h"

#include "base/Text.h"
#include "onvif/Names.h"
#include "onvif/Soap.h"
#include "onvif/Url.h"
#include "onvif/Xml.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <utility>

namespace ipncsdk::onvif {

namespace {

constexpr std::size_t mostMatches = 16;
constexpr std::size_t mostWords = 64;
constexpr std::size_t longestText = 64;
constexpr std::size_t macDigits = 12;

std::vector<std::string> words(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> found;
    for (std::string word; found.size() < mostWords && stream >> word;)
        found.push_back(word);
    return found;
}

bool isHex(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// "urn:uuid:..." and "uuid:..." without what stands before; empty when something else is left than belongs there.
std::string uuidOf(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), lower);
    if (const auto colon = text.rfind(':'); colon != std::string::npos)
        text.erase(0, colon + 1);
    const bool fits =
        !text.empty() && text.size() <= longestText &&
        std::all_of(text.begin(), text.end(), [](char c) { return isHex(c) || (c > 'f' && c <= 'z') || c == '-'; });
    return fits ? text : std::string();
}

/// What a scope says under a heading such as "name"; empty when none does.
std::string scope(const std::vector<std::string>& scopes, std::string_view heading) {
    const std::string begin = "onvif://www.onvif.org/" + std::string(heading) + '/';
    for (const std::string& each : scopes) {
        const bool same =
            each.size() > begin.size() &&
            std::equal(begin.begin(), begin.end(), each.begin(), [](char a, char b) { return lower(a) == lower(b); });
        if (same)
            return xml::plain(percentDecoded(std::string_view(each).substr(begin.size())), longestText);
    }
    return {};
}

std::string macOf(const std::string& text) {
    std::string digits;
    for (const char c : text) {
        if (isHex(lower(c)))
            digits += lower(c);
        else if (c != ':' && c != '-')
            return {};
    }
    if (digits.size() != macDigits)
        return {};
    for (std::size_t place = macDigits - 2; place > 0; place -= 2)
        digits.insert(place, 1, ':');
    return digits;
}

bool isCamera(const pugi::xml_node& types) {
    const std::vector<std::string> all = words(xml::textOf(types));
    return std::any_of(all.begin(), all.end(), [&](const std::string& type) {
        const xml::Name name = xml::resolved(type, types);
        return name == xml::Name{ns::network, "NetworkVideoTransmitter"} || name == xml::Name{ns::device, "Device"};
    });
}

/// Cameras tell several addresses, of networks that this machine may not be in. What answers is the sender.
std::optional<Url> addressOf(const std::string& told, const std::string& sender) {
    std::optional<Url> best;
    for (const std::string& each : words(told)) {
        auto url = parseHttpUrl(each);
        if (url && (!best || (url->host == sender && best->host != sender)))
            best = std::move(url);
    }
    if (best)
        best->host = sender;
    return best;
}

std::optional<FoundCamera> readMatch(const pugi::xml_node& match, const std::string& sender) {
    FoundCamera camera;
    camera.uuid = uuidOf(xml::textOf(xml::descend(match, ns::addressing, {"EndpointReference", "Address"})));
    const auto url = addressOf(xml::textOf(xml::child(match, {ns::discovery, "XAddrs"})), sender);
    if (camera.uuid.empty() || !url || !isCamera(xml::child(match, {ns::discovery, "Types"})))
        return std::nullopt;
    const std::vector<std::string> scopes = words(xml::textOf(xml::child(match, {ns::discovery, "Scopes"})));
    camera.url = url->text();
    camera.host = url->host;
    camera.name = scope(scopes, "name");
    camera.model = scope(scopes, "hardware");
    camera.mac = macOf(scope(scopes, "mac"));
    return camera;
}

} // namespace

std::string probeMessage(const std::string& messageId, Sought sought) {
    const bool device = sought == Sought::Device;
    std::string header = "<a:Action xmlns:a=\"";
    header += ns::addressing;
    header += "\" s:mustUnderstand=\"1\">http://schemas.xmlsoap.org/ws/2005/04/discovery/Probe</a:Action>"
              "<a:MessageID xmlns:a=\"";
    header += ns::addressing;
    header += "\">" + messageId + "</a:MessageID><a:To xmlns:a=\"";
    header += ns::addressing;
    header += "\" s:mustUnderstand=\"1\">urn:schemas-xmlsoap-org:ws:2005:04:discovery</a:To>";
    std::string body = "<d:Probe xmlns:d=\"";
    body += ns::discovery;
    body += "\"><d:Types xmlns:t=\"";
    body += device ? ns::device : ns::network;
    body += device ? "\">t:Device" : "\">t:NetworkVideoTransmitter";
    body += "</d:Types></d:Probe>";
    return envelope(header, body);
}

std::vector<FoundCamera> readProbeMatches(std::string_view datagram, const std::string& sender,
                                          const std::vector<std::string>& questions) {
    const auto document = xml::parse(datagram);
    if (!document)
        return {};
    const pugi::xml_node envelope = xml::child(*document, {ns::soap, "Envelope"});
    const pugi::xml_node header = xml::child(envelope, {ns::soap, "Header"});
    const std::string question = uuidOf(xml::textOf(xml::child(header, {ns::addressing, "RelatesTo"})));
    const bool asked = std::any_of(questions.begin(), questions.end(),
                                   [&](const std::string& each) { return uuidOf(each) == question; });
    if (question.empty() || !asked)
        return {};
    const pugi::xml_node body = xml::child(envelope, {ns::soap, "Body"});
    std::vector<FoundCamera> found;
    for (const pugi::xml_node& match :
         xml::children(xml::child(body, {ns::discovery, "ProbeMatches"}), {ns::discovery, "ProbeMatch"})) {
        if (found.size() >= mostMatches)
            break;
        if (auto camera = readMatch(match, sender))
            found.push_back(std::move(*camera));
    }
    return found;
}

} // namespace ipncsdk::onvif
