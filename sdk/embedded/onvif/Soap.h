#pragma once

#include "onvif/Outcome.h"
#include "onvif/Xml.h"

#include <memory>
#include <string>
#include <string_view>

namespace ipncsdk::onvif {

/// An envelope of SOAP 1.2; `header` and `body` are markup.
std::string envelope(const std::string& header, const std::string& body);

/// What came back in an envelope.
class SoapReply final {
public:
    /// Reads the answer to a request for `wanted`, which names the response's element. A fault is a `Fault` with the
    /// camera's reason, or `Password`, `Clock`, `NotSupported` where its codes say so.
    static Outcome<SoapReply> read(std::string_view text, const xml::Name& wanted);

    /// The response's element.
    [[nodiscard]] const pugi::xml_node& content() const { return content_; }

private:
    std::unique_ptr<pugi::xml_document> document_;
    pugi::xml_node content_; ///< in `document_`
};

} // namespace ipncsdk::onvif
