#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

struct _xmlDoc;
struct _xmlNode;

namespace vexto {

// A desktop program's XML configuration (Openbox's rc.xml, Xfce's channel files) read through
// libxml2 with the bounds every reader here keeps: no network, nothing past `largestBytes`, and
// no document type, whose entities could grow an attribute far past the file's size (no such
// configuration declares one); libxml2's own depth bound holds.
class ConfigurationXml {
public:
    using Document = std::unique_ptr<_xmlDoc, void (*)(_xmlDoc*)>;

    // None for text that is no such document.
    static Document read(std::string_view xml, std::size_t largestBytes);
    // The document's root element when it has this name; none otherwise.
    static const _xmlNode* root(const Document& document, const char* name);
    static bool isElement(const _xmlNode* node, const char* name);
    // The attribute's value; empty where it is absent.
    static std::string attribute(const _xmlNode* node, const char* name);
};

} // namespace vexto
