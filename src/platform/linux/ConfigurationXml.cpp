#include "platform/linux/ConfigurationXml.hpp"

#include <cstring>
#include <libxml/parser.h>
#include <libxml/tree.h>

namespace vexto {

ConfigurationXml::Document ConfigurationXml::read(std::string_view xml, std::size_t largestBytes)
{
    if (xml.size() > largestBytes || xml.find("<!DOCTYPE") != std::string_view::npos) {
        return Document(nullptr, &xmlFreeDoc);
    }
    return Document(xmlReadMemory(xml.data(), static_cast<int>(xml.size()), "configuration.xml",
                                  nullptr,
                                  XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
                    &xmlFreeDoc);
}

const xmlNode* ConfigurationXml::root(const Document& document, const char* name)
{
    const xmlNode* element = document ? xmlDocGetRootElement(document.get()) : nullptr;
    return element != nullptr && isElement(element, name) ? element : nullptr;
}

bool ConfigurationXml::isElement(const xmlNode* node, const char* name)
{
    return node->type == XML_ELEMENT_NODE &&
           std::strcmp(reinterpret_cast<const char*>(node->name), name) == 0;
}

std::string ConfigurationXml::attribute(const xmlNode* node, const char* name)
{
    xmlChar* value = xmlGetProp(node, reinterpret_cast<const xmlChar*>(name));
    std::string text = value != nullptr ? reinterpret_cast<const char*>(value) : "";
    xmlFree(value);
    return text;
}

} // namespace vexto
