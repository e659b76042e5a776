#ifndef TOOL_TEXT_XML_TEXT_H
#define TOOL_TEXT_XML_TEXT_H

#include <string>

namespace ttr {

/// `text` as it stands in an XML document, between tags or in a quoted attribute. What XML cannot
/// hold, control characters and bytes that are no UTF-8, becomes U+FFFD.
std::string xmlText(const std::string& text);

}  // namespace ttr

#endif  // TOOL_TEXT_XML_TEXT_H
