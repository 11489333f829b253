#include "platform/linux/XfceKeyBindings.hpp"

#include "platform/linux/ConfiguredShortcutOwners.hpp"
#include "platform/linux/GtkAccelerator.hpp"

#include <cstring>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>

namespace vexto {

namespace {

bool isProperty(const xmlNode* node)
{
    return node->type == XML_ELEMENT_NODE &&
           std::strcmp(reinterpret_cast<const char*>(node->name), "property") == 0;
}

std::string attribute(const xmlNode* node, const char* name)
{
    xmlChar* value = xmlGetProp(node, reinterpret_cast<const xmlChar*>(name));
    std::string text = value != nullptr ? reinterpret_cast<const char*>(value) : "";
    xmlFree(value);
    return text;
}

const xmlNode* childNamed(const xmlNode* parent, const char* name)
{
    for (const xmlNode* child = parent->children; child != nullptr; child = child->next) {
        if (isProperty(child) && attribute(child, "name") == name) {
            return child;
        }
    }
    return nullptr;
}

bool hasProperties(const xmlNode* node)
{
    for (const xmlNode* child = node->children; child != nullptr; child = child->next) {
        if (isProperty(child)) {
            return true;
        }
    }
    return false;
}

} // namespace

std::optional<std::vector<ShortcutBinding>> XfceKeyBindings::parse(std::string_view xml)
{
    // No channel file declares a document type: one that does could make its entities grow
    // an attribute far past the file's size.
    if (xml.size() > ConfiguredShortcutOwners::largestFile ||
        xml.find("<!DOCTYPE") != std::string_view::npos) {
        return std::nullopt;
    }
    // No network, no entities substituted, no DTD loaded; libxml2's own depth bound holds.
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlReadMemory(xml.data(), static_cast<int>(xml.size()), "shortcuts.xml", nullptr,
                      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
        &xmlFreeDoc);
    const xmlNode* channel = document ? xmlDocGetRootElement(document.get()) : nullptr;
    if (channel == nullptr ||
        std::strcmp(reinterpret_cast<const char*>(channel->name), "channel") != 0) {
        return std::nullopt;
    }
    std::vector<ShortcutBinding> bindings;
    for (const char* section : {"xfwm4", "commands"}) {
        const xmlNode* group = childNamed(channel, section);
        if (group == nullptr) {
            continue;
        }
        const xmlNode* custom = childNamed(group, "custom");
        const xmlNode* set =
            custom != nullptr && hasProperties(custom) ? custom : childNamed(group, "default");
        if (set == nullptr) {
            continue;
        }
        for (const xmlNode* entry = set->children;
             entry != nullptr && bindings.size() < mostBindings; entry = entry->next) {
            if (!isProperty(entry) || attribute(entry, "type") != "string") {
                continue;
            }
            if (const auto accelerator = GtkAccelerator::parse(attribute(entry, "name"))) {
                bindings.push_back(
                    {accelerator->keysym, accelerator->modifiers, attribute(entry, "value")});
            }
        }
    }
    return bindings;
}

std::vector<std::string> XfceKeyBindings::configurationFiles()
{
    return ConfiguredShortcutOwners::xdgConfigurationFiles(
        "xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml");
}

} // namespace vexto
