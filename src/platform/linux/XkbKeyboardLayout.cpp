#include "platform/linux/XkbKeyboardLayout.hpp"

#include "foundation/FileSystem.hpp"
#include "platform/linux/EvdevKeyCodes.hpp"

#include <cstdlib>
#include <map>
#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

namespace vexto {

namespace {

constexpr std::uint16_t isoSectionKey = 0x0A;
constexpr std::uint16_t graveKey = 0x32;

// KEY=value lines, values possibly quoted, as /etc/default/keyboard holds them.
std::map<std::string, std::string> shellAssignments(const std::string& path)
{
    std::map<std::string, std::string> values;
    const auto bytes = FileSystem::readFile(path, 64 * 1024);
    if (!bytes) {
        return values;
    }
    std::string_view text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    while (!text.empty()) {
        const auto end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        const auto equals = line.find('=');
        if (line.starts_with('#') || equals == std::string_view::npos) {
            continue;
        }
        std::string_view value = line.substr(equals + 1);
        if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
            value.back() == value.front()) {
            value = value.substr(1, value.size() - 2);
        }
        values.emplace(std::string(line.substr(0, equals)), std::string(value));
    }
    return values;
}

const char* orNull(const std::string& text)
{
    return text.empty() ? nullptr : text.c_str();
}

} // namespace

std::unique_ptr<XkbKeyboardLayout> XkbKeyboardLayout::fromNames(const Names& names)
{
    xkb_context* context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    if (context == nullptr) {
        return nullptr;
    }
    const xkb_rule_names rules{nullptr, orNull(names.model), orNull(names.layout),
                               orNull(names.variant), orNull(names.options)};
    xkb_keymap* keymap = xkb_keymap_new_from_names(context, &rules, XKB_KEYMAP_COMPILE_NO_FLAGS);
    if (keymap == nullptr) {
        xkb_context_unref(context);
        return nullptr;
    }
    const std::string model = names.model.empty() && std::getenv("XKB_DEFAULT_MODEL") != nullptr
                                  ? std::getenv("XKB_DEFAULT_MODEL")
                                  : names.model;
    const bool iso = model == "pc102" || model == "pc105";
    return std::unique_ptr<XkbKeyboardLayout>(new XkbKeyboardLayout(context, keymap, iso));
}

std::unique_ptr<XkbKeyboardLayout>
XkbKeyboardLayout::fromEnvironment(const std::string& keyboardFile)
{
    if (std::getenv("XKB_DEFAULT_LAYOUT") != nullptr) {
        return fromNames({});
    }
    auto file = shellAssignments(keyboardFile);
    if (!file["XKBLAYOUT"].empty()) {
        return fromNames(
            {file["XKBMODEL"], file["XKBLAYOUT"], file["XKBVARIANT"], file["XKBOPTIONS"]});
    }
    return fromNames({"", "us", "", ""});
}

std::unique_ptr<XkbKeyboardLayout> XkbKeyboardLayout::fromXServer(const std::string& displayName)
{
    xcb_connection_t* connection =
        xcb_connect(displayName.empty() ? nullptr : displayName.c_str(), nullptr);
    std::unique_ptr<XkbKeyboardLayout> layout;
    if (xcb_connection_has_error(connection) == 0 &&
        xkb_x11_setup_xkb_extension(
            connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
            XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr) == 1) {
        const std::int32_t device = xkb_x11_get_core_keyboard_device_id(connection);
        xkb_context* context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
        xkb_keymap* keymap = device >= 0 && context != nullptr
                                 ? xkb_x11_keymap_new_from_device(context, connection, device,
                                                                  XKB_KEYMAP_COMPILE_NO_FLAGS)
                                 : nullptr;
        if (keymap != nullptr) {
            xkb_state* live = xkb_x11_state_new_from_device(keymap, connection, device);
            const unsigned group =
                live != nullptr ? xkb_state_serialize_layout(live, XKB_STATE_LAYOUT_EFFECTIVE) : 0;
            xkb_state_unref(live);
            layout.reset(new XkbKeyboardLayout(context, keymap, false, group));
        } else if (context != nullptr) {
            xkb_context_unref(context);
        }
    }
    xcb_disconnect(connection);
    return layout;
}

std::unique_ptr<XkbKeyboardLayout> XkbKeyboardLayout::forDesktop()
{
    if (std::getenv("DISPLAY") != nullptr) {
        if (auto layout = fromXServer()) {
            return layout;
        }
    }
    return fromEnvironment();
}

XkbKeyboardLayout::XkbKeyboardLayout(xkb_context* context, xkb_keymap* keymap, bool iso,
                                     unsigned layoutIndex)
    : context_(context), keymap_(keymap), numLockState_(xkb_state_new(keymap)), iso_(iso),
      layout_(layoutIndex)
{
    const xkb_mod_index_t numLock = xkb_keymap_mod_get_index(keymap_, XKB_MOD_NAME_NUM);
    if (numLockState_ != nullptr && numLock != XKB_MOD_INVALID) {
        xkb_state_update_mask(numLockState_, 0, 0, xkb_mod_mask_t{1} << numLock, 0, 0, 0);
    }
}

XkbKeyboardLayout::~XkbKeyboardLayout()
{
    xkb_state_unref(numLockState_);
    xkb_keymap_unref(keymap_);
    xkb_context_unref(context_);
}

std::optional<char16_t> XkbKeyboardLayout::characterForKeyCode(std::uint16_t keyCode) const
{
    if (iso_ && (keyCode == isoSectionKey || keyCode == graveKey)) {
        keyCode = keyCode == isoSectionKey ? graveKey : isoSectionKey;
    }
    const auto xKeyCode = EvdevKeyCodes::xKeyCodeForVirtualKey(keyCode);
    if (!xKeyCode) {
        return std::nullopt;
    }
    const xkb_keycode_t key = *xKeyCode;
    std::uint32_t character = 0;
    if (EvdevKeyCodes::isKeypad(keyCode) && numLockState_ != nullptr) {
        character = xkb_state_key_get_utf32(numLockState_, key);
    } else {
        const xkb_keysym_t* symbols = nullptr;
        if (xkb_keymap_key_get_syms_by_level(keymap_, key, layout_, 0, &symbols) > 0) {
            character = xkb_keysym_to_utf32(symbols[0]);
        }
    }
    // Dead keys give nothing; characters beyond the Basic Multilingual Plane are two units.
    if (character == 0 || character > 0xFFFF) {
        return std::nullopt;
    }
    return static_cast<char16_t>(character);
}

} // namespace vexto
