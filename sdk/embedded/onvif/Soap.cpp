#include "onvif/Soap.h"

#include "onvif/Names.h"

#include <algorithm>
#include <array>

namespace ipncsdk::onvif {

namespace {

constexpr std::size_t longestReason = 200;
constexpr int mostSubcodes = 8;

struct KnownCode {
    xml::Name name;
    Refusal refusal;
};

/// What of all that cameras may say changes what is done next; the rest is for people.
constexpr std::array knownCodes = {
    KnownCode{{ns::utility, "MessageExpired"}, Refusal::Clock},
    KnownCode{{ns::security, "MessageExpired"}, Refusal::Clock},
    KnownCode{{ns::error, "NotAuthorized"}, Refusal::Password},
    KnownCode{{ns::error, "OperationProhibited"}, Refusal::Fault},
    KnownCode{{ns::security, "FailedAuthentication"}, Refusal::Password},
    KnownCode{{ns::security, "InvalidSecurity"}, Refusal::Password},
    KnownCode{{ns::security, "FailedCheck"}, Refusal::Password},
    KnownCode{{ns::error, "ActionNotSupported"}, Refusal::NotSupported},
};

Failure failureOf(const pugi::xml_node& fault) {
    Failure failure{Refusal::Fault, {}};
    pugi::xml_node code = xml::child(fault, {ns::soap, "Code"});
    for (int depth = 0; code && depth < mostSubcodes; ++depth) {
        const pugi::xml_node value = xml::child(code, {ns::soap, "Value"});
        const xml::Name name = xml::resolved(value.text().get(), value);
        const auto* const known = std::find_if(knownCodes.begin(), knownCodes.end(),
                                               [&](const KnownCode& each) { return each.name == name; });
        if (known != knownCodes.end())
            failure.refusal = known->refusal;
        failure.text = xml::plain(name.local, longestReason); // the innermost says most
        code = xml::child(code, {ns::soap, "Subcode"});
    }
    const pugi::xml_node reason = xml::descend(fault, ns::soap, {"Reason", "Text"});
    if (std::string text = xml::plain(xml::textOf(reason), longestReason); !text.empty())
        failure.text = std::move(text);
    return failure;
}

} // namespace

std::string envelope(const std::string& header, const std::string& body) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><s:Envelope xmlns:s=\"";
    text += ns::soap;
    text += "\">";
    if (!header.empty())
        text += "<s:Header>" + header + "</s:Header>";
    return text + "<s:Body>" + body + "</s:Body></s:Envelope>";
}

Outcome<SoapReply> SoapReply::read(std::string_view text, const xml::Name& wanted) {
    SoapReply reply;
    reply.document_ = xml::parse(text);
    if (!reply.document_)
        return Failure{Refusal::NoOnvif, "the answer is no XML that is taken"};
    const pugi::xml_node body = xml::descend(*reply.document_, ns::soap, {"Envelope", "Body"});
    if (!body)
        return Failure{Refusal::NoOnvif, "the answer is no SOAP envelope"};
    if (const pugi::xml_node fault = xml::child(body, {ns::soap, "Fault"}))
        return failureOf(fault);
    reply.content_ = xml::child(body, wanted);
    if (!reply.content_)
        return Failure{Refusal::NoOnvif, "the answer does not belong to the question"};
    return reply;
}

} // namespace ipncsdk::onvif
