#include "platform/linux/OpenboxKeyBindings.hpp"

#include "platform/linux/ConfiguredShortcutOwners.hpp"
#include "ports/ShortcutOwners.hpp"

#include <cstring>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>

namespace vexto {

namespace {

using M = ShortcutOwners::Modifier;

bool named(const xmlNode* node, const char* name)
{
    return node->type == XML_ELEMENT_NODE &&
           std::strcmp(reinterpret_cast<const char*>(node->name), name) == 0;
}

std::string attribute(const xmlNode* node, const char* name)
{
    xmlChar* value = xmlGetProp(node, reinterpret_cast<const xmlChar*>(name));
    std::string text = value != nullptr ? reinterpret_cast<const char*>(value) : "";
    xmlFree(value);
    return text;
}

// The first action of the binding, or of the first binding of its chain.
std::string firstAction(const xmlNode* keybind)
{
    for (const xmlNode* child = keybind->children; child != nullptr; child = child->next) {
        if (named(child, "action")) {
            return attribute(child, "name");
        }
    }
    for (const xmlNode* child = keybind->children; child != nullptr; child = child->next) {
        if (named(child, "keybind")) {
            // One level is enough to name a chain by what it starts.
            for (const xmlNode* inner = child->children; inner != nullptr; inner = inner->next) {
                if (named(inner, "action")) {
                    return attribute(inner, "name");
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
    // No configuration declares a document type: one that does could make its entities
    // grow an attribute far past the file's size.
    if (xml.size() > largestFile || xml.find("<!DOCTYPE") != std::string_view::npos) {
        return std::nullopt;
    }
    // No network, no entities substituted, no DTD loaded; libxml2's own depth bound holds.
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlReadMemory(xml.data(), static_cast<int>(xml.size()), "rc.xml", nullptr,
                      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
        &xmlFreeDoc);
    const xmlNode* root = document ? xmlDocGetRootElement(document.get()) : nullptr;
    if (root == nullptr || !named(root, "openbox_config")) {
        return std::nullopt;
    }
    std::vector<ShortcutBinding> bindings;
    for (const xmlNode* section = root->children; section != nullptr; section = section->next) {
        if (!named(section, "keyboard")) {
            continue;
        }
        for (const xmlNode* bind = section->children; bind != nullptr; bind = bind->next) {
            if (!named(bind, "keybind") || bindings.size() >= mostBindings) {
                continue;
            }
            if (auto key = parseKey(attribute(bind, "key"))) {
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
