#include "platform/linux/OpenboxKeyBindings.hpp"

#include "platform/linux/ConfigurationXml.hpp"
#include "platform/linux/ConfiguredShortcutOwners.hpp"
#include "ports/ShortcutOwners.hpp"

#include <libxml/tree.h>

namespace vexto {

namespace {

using M = ShortcutOwners::Modifier;

using Xml = ConfigurationXml;

// The first action of the binding, or of the first binding of its chain.
std::string firstAction(const xmlNode* keybind)
{
    for (const xmlNode* child = keybind->children; child != nullptr; child = child->next) {
        if (Xml::isElement(child, "action")) {
            return Xml::attribute(child, "name");
        }
    }
    for (const xmlNode* child = keybind->children; child != nullptr; child = child->next) {
        if (Xml::isElement(child, "keybind")) {
            // One level is enough to name a chain by what it starts.
            for (const xmlNode* inner = child->children; inner != nullptr; inner = inner->next) {
                if (Xml::isElement(inner, "action")) {
                    return Xml::attribute(inner, "name");
                }
            }
        }
    }
    return {};
}

} // namespace

std::optional<ShortcutBinding> OpenboxKeyBindings::parseKey(std::string_view text)
{
    // A chain's first key is the one held.
    text = text.substr(0, text.find(' '));
    return ShortcutBinding::fromJoinedNames(text, '-',
                                            [](std::string_view name) -> std::optional<unsigned> {
                                                if (name == "S") {
                                                    return M::shift;
                                                }
                                                if (name == "C") {
                                                    return M::control;
                                                }
                                                if (name == "A" || name == "M" || name == "Mod1") {
                                                    return M::alt;
                                                }
                                                if (name == "W" || name == "Mod4") {
                                                    return M::super;
                                                }
                                                return std::nullopt;
                                            });
}

std::optional<std::vector<ShortcutBinding>> OpenboxKeyBindings::parse(std::string_view xml)
{
    const auto document = Xml::read(xml, ConfiguredShortcutOwners::largestFile);
    const xmlNode* root = Xml::root(document, "openbox_config");
    if (root == nullptr) {
        return std::nullopt;
    }
    std::vector<ShortcutBinding> bindings;
    for (const xmlNode* section = root->children; section != nullptr; section = section->next) {
        if (!Xml::isElement(section, "keyboard")) {
            continue;
        }
        for (const xmlNode* bind = section->children; bind != nullptr; bind = bind->next) {
            if (!Xml::isElement(bind, "keybind") || bindings.size() >= mostBindings) {
                continue;
            }
            if (auto key = parseKey(Xml::attribute(bind, "key"))) {
                key->action = firstAction(bind);
                bindings.push_back(std::move(*key));
            }
        }
    }
    return bindings;
}

std::vector<std::string> OpenboxKeyBindings::configurationFiles()
{
    return ConfiguredShortcutOwners::xdgConfigurationFiles("openbox/rc.xml");
}

} // namespace vexto
