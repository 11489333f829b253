#include "platform/linux/XfceKeyBindings.hpp"

#include "platform/linux/ConfigurationXml.hpp"
#include "platform/linux/ConfiguredShortcutOwners.hpp"
#include "platform/linux/GtkAccelerator.hpp"

#include <libxml/tree.h>

namespace vexto {

namespace {

bool isProperty(const xmlNode* node)
{
    return ConfigurationXml::isElement(node, "property");
}

const xmlNode* childNamed(const xmlNode* parent, const char* name)
{
    for (const xmlNode* child = parent->children; child != nullptr; child = child->next) {
        if (isProperty(child) && ConfigurationXml::attribute(child, "name") == name) {
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
    const auto document = ConfigurationXml::read(xml, ConfiguredShortcutOwners::largestFile);
    const xmlNode* channel = ConfigurationXml::root(document, "channel");
    if (channel == nullptr) {
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
            if (!isProperty(entry) || ConfigurationXml::attribute(entry, "type") != "string") {
                continue;
            }
            if (const auto accelerator =
                    GtkAccelerator::parse(ConfigurationXml::attribute(entry, "name"))) {
                bindings.push_back({accelerator->keysym, accelerator->modifiers,
                                    ConfigurationXml::attribute(entry, "value")});
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
