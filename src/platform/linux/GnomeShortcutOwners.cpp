#include "platform/linux/GnomeShortcutOwners.hpp"

#include "platform/linux/EvdevKeyCodes.hpp"
#include "platform/linux/GtkAccelerator.hpp"

#include <cstring>
#include <gio/gio.h>

namespace vexto {

namespace {

constexpr const char* customKeybindings = "org.gnome.settings-daemon.plugins.media-keys";
constexpr const char* customKeybinding =
    "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding";
// More custom shortcuts than anyone sets are not looked at.
constexpr gsize mostCustomShortcuts = 256;

// The strings of a value of type "s" or "as"; nothing for any other type.
std::vector<std::string> acceleratorsOf(GVariant* value)
{
    std::vector<std::string> found;
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_STRING)) {
        found.emplace_back(g_variant_get_string(value, nullptr));
    } else if (g_variant_is_of_type(value, G_VARIANT_TYPE_STRING_ARRAY)) {
        gsize count = 0;
        const gchar** strings = g_variant_get_strv(value, &count);
        for (gsize at = 0; at < count; ++at) {
            found.emplace_back(strings[at]);
        }
        g_free(strings);
    }
    return found;
}

GSettingsSchema* installedSchema(const char* id)
{
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    return source != nullptr ? g_settings_schema_source_lookup(source, id, TRUE) : nullptr;
}

} // namespace

const std::vector<std::string>& GnomeShortcutOwners::keybindingSchemas()
{
    static const std::vector<std::string> schemas = {
        "org.gnome.desktop.wm.keybindings", "org.gnome.shell.keybindings",
        "org.gnome.mutter.keybindings", "org.gnome.mutter.wayland.keybindings", customKeybindings};
    return schemas;
}

GnomeShortcutOwners::GnomeShortcutOwners(KeyOfKeysym keyOf) : keyOf_(std::move(keyOf))
{
    for (const std::string& id : keybindingSchemas()) {
        if (GSettingsSchema* schema = installedSchema(id.c_str())) {
            sources_.push_back({schema, g_settings_new_full(schema, nullptr, nullptr), id});
        }
    }
}

GnomeShortcutOwners::~GnomeShortcutOwners()
{
    for (const Source& source : sources_) {
        g_object_unref(source.settings);
        g_settings_schema_unref(source.schema);
    }
}

bool GnomeShortcutOwners::holds(const std::string& accelerator, unsigned xKeyCode,
                                unsigned modifiers) const
{
    const auto parsed = GtkAccelerator::parse(accelerator);
    return parsed && parsed->modifiers == modifiers && keyOf_(parsed->keysym) == xKeyCode;
}

std::optional<ShortcutOwner> GnomeShortcutOwners::ownerIn(const Source& source, unsigned xKeyCode,
                                                          unsigned modifiers) const
{
    gchar** keys = g_settings_schema_list_keys(source.schema);
    std::optional<ShortcutOwner> owner;
    for (gchar** key = keys; *key != nullptr && !owner; ++key) {
        GVariant* value = g_settings_get_value(source.settings, *key);
        for (const std::string& accelerator : acceleratorsOf(value)) {
            if (holds(accelerator, xKeyCode, modifiers)) {
                GSettingsSchemaKey* described = g_settings_schema_get_key(source.schema, *key);
                const char* summary = g_settings_schema_key_get_summary(described);
                owner = ShortcutOwner{ShortcutOwner::Answer::Taken, "GNOME",
                                      summary != nullptr ? summary : *key,
                                      "GSettings " + source.id + " " + *key};
                g_settings_schema_key_unref(described);
                break;
            }
        }
        g_variant_unref(value);
    }
    g_strfreev(keys);
    return owner;
}

std::optional<ShortcutOwner> GnomeShortcutOwners::customOwner(unsigned xKeyCode,
                                                              unsigned modifiers) const
{
    const auto list = std::find_if(sources_.begin(), sources_.end(),
                                   [](const Source& s) { return s.id == customKeybindings; });
    GSettingsSchema* schema = installedSchema(customKeybinding);
    if (list == sources_.end() || schema == nullptr ||
        !g_settings_schema_has_key(list->schema, "custom-keybindings")) {
        if (schema != nullptr) {
            g_settings_schema_unref(schema);
        }
        return std::nullopt;
    }
    gchar** paths = g_settings_get_strv(list->settings, "custom-keybindings");
    std::optional<ShortcutOwner> owner;
    for (gsize at = 0; paths[at] != nullptr && at < mostCustomShortcuts && !owner; ++at) {
        // A relocatable schema needs a path of slashes at both ends; others are not valid.
        const std::size_t length = std::strlen(paths[at]);
        if (length < 2 || paths[at][0] != '/' || paths[at][length - 1] != '/' ||
            std::strstr(paths[at], "//") != nullptr) {
            continue;
        }
        GSettings* shortcut = g_settings_new_full(schema, nullptr, paths[at]);
        gchar* binding = g_settings_get_string(shortcut, "binding");
        gchar* name = g_settings_get_string(shortcut, "name");
        if (holds(binding, xKeyCode, modifiers)) {
            owner = ShortcutOwner{ShortcutOwner::Answer::Taken, "GNOME", name,
                                  std::string("GSettings ") + customKeybinding + " " + paths[at]};
        }
        g_free(binding);
        g_free(name);
        g_object_unref(shortcut);
    }
    g_strfreev(paths);
    g_settings_schema_unref(schema);
    return owner;
}

ShortcutOwner GnomeShortcutOwners::ownerOf(std::uint16_t keyCode, unsigned modifiers)
{
    if (sources_.empty()) {
        return {ShortcutOwner::Answer::Unknown, "GNOME", {}, {}};
    }
    const auto xKeyCode = EvdevKeyCodes::xKeyCodeForVirtualKey(keyCode);
    if (!xKeyCode) {
        return {};
    }
    for (const Source& source : sources_) {
        if (auto owner = ownerIn(source, *xKeyCode, modifiers)) {
            return *owner;
        }
    }
    return customOwner(*xKeyCode, modifiers).value_or(ShortcutOwner{});
}

} // namespace vexto
