#include "xserver/X11KeyGrabs.hpp"

#include "platform/linux/EvdevKeyCodes.hpp"
#include "settings/LayeredSettings.hpp"
#include "settings/SettingDeclarations.hpp"
#include "toolkit/Event.hpp"
#include "xserver/XcbConnection.hpp"
#include "xserver/XcbReply.hpp"

#include <cstdlib>
#include <memory>

namespace vexto {

namespace {

// X key codes (evdev + 8) of the modifier keys whose masks the daemon looks up, and of the
// sides a hot key may name.
constexpr xcb_keycode_t leftAltKey = 64;
constexpr xcb_keycode_t leftSuperKey = 133;
constexpr xcb_keycode_t numLockKey = 77;

struct Side {
    std::uint64_t flag;
    xcb_keycode_t key;
};
constexpr Side sides[] = {
    {Event::leftControlKeyMask, 37},  {Event::rightControlKeyMask, 105},
    {Event::leftShiftKeyMask, 50},    {Event::rightShiftKeyMask, 62},
    {Event::leftOptionKeyMask, 64},   {Event::rightOptionKeyMask, 108},
    {Event::leftCommandKeyMask, 133}, {Event::rightCommandKeyMask, 134},
};

bool keyIsDown(const xcb_query_keymap_reply_t& keymap, xcb_keycode_t key)
{
    return (keymap.keys[key / 8] & (1u << (key % 8))) != 0;
}

} // namespace

X11KeyGrabs::Options X11KeyGrabs::Options::fromSettings(const LayeredSettings& settings)
{
    namespace keys = settingkeys;
    namespace declared = settingdeclarations;
    Options options;
    options.ignoreCapsLock =
        settings.flag(keys::ignoreCapsLock, declared::booleanDefault(keys::ignoreCapsLock));
    options.requireExactSides =
        settings.flag(keys::requireExactModifierKeyMatches,
                      declared::booleanDefault(keys::requireExactModifierKeyMatches));
    return options;
}

X11KeyGrabs::X11KeyGrabs(XcbConnection& connection) : connection_(connection)
{
    readModifierMap();
}

X11KeyGrabs::~X11KeyGrabs()
{
    ungrabAll();
}

void X11KeyGrabs::readModifierMap()
{
    auto reply = owned(xcb_get_modifier_mapping_reply(
        connection_.get(), xcb_get_modifier_mapping(connection_.get()), nullptr));
    for (auto& keys : modifierKeys_) {
        keys.clear();
    }
    if (reply) {
        const xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(reply.get());
        const int perModifier = reply->keycodes_per_modifier;
        for (int modifier = 0; modifier < 8; ++modifier) {
            for (int at = 0; at < perModifier; ++at) {
                if (const xcb_keycode_t key = keys[modifier * perModifier + at]; key != 0) {
                    modifierKeys_[std::size_t(modifier)].push_back(key);
                }
            }
        }
    }
    altMask_ = maskOfKeyCode(leftAltKey, XCB_MOD_MASK_1);
    superMask_ = maskOfKeyCode(leftSuperKey, XCB_MOD_MASK_4);
    numLockMask_ = maskOfKeyCode(numLockKey, XCB_MOD_MASK_2);
}

std::uint16_t X11KeyGrabs::maskOfKeyCode(xcb_keycode_t key, std::uint16_t fallback) const
{
    const std::uint16_t found = modifierMaskOfKey(key);
    return found != 0 ? found : fallback;
}

std::uint16_t X11KeyGrabs::modifierMaskOfKey(xcb_keycode_t key) const
{
    std::uint16_t mask = 0;
    for (std::size_t modifier = 0; modifier < modifierKeys_.size(); ++modifier) {
        for (const xcb_keycode_t held : modifierKeys_[modifier]) {
            if (held == key) {
                mask |= static_cast<std::uint16_t>(1u << modifier);
            }
        }
    }
    return mask;
}

std::optional<std::uint16_t> X11KeyGrabs::virtualKey(xcb_keycode_t key)
{
    return EvdevKeyCodes::virtualKeyForXKeyCode(key);
}

std::uint64_t X11KeyGrabs::modifierFlags(std::uint16_t state) const
{
    std::uint64_t flags = 0;
    flags |= (state & XCB_MOD_MASK_SHIFT) != 0 ? Event::shiftKeyMask : 0;
    flags |= (state & XCB_MOD_MASK_CONTROL) != 0 ? Event::controlKeyMask : 0;
    flags |= (state & XCB_MOD_MASK_LOCK) != 0 ? Event::capsLockKeyMask : 0;
    flags |= (state & altMask_) != 0 ? Event::optionKeyMask : 0;
    flags |= (state & superMask_) != 0 ? Event::commandKeyMask : 0;
    return flags;
}

std::uint16_t X11KeyGrabs::xModifiers(std::uint64_t flags) const
{
    std::uint16_t mask = 0;
    mask |= (flags & Event::shiftKeyMask) != 0 ? XCB_MOD_MASK_SHIFT : 0;
    mask |= (flags & Event::controlKeyMask) != 0 ? XCB_MOD_MASK_CONTROL : 0;
    mask |= (flags & Event::optionKeyMask) != 0 ? altMask_ : 0;
    mask |= (flags & Event::commandKeyMask) != 0 ? superMask_ : 0;
    return mask;
}

std::vector<std::uint16_t> X11KeyGrabs::lockVariants(const HotKeyBinding& binding) const
{
    const std::uint16_t numLock = numLockMask_;
    if (options_.ignoreCapsLock) {
        return {0, numLock, XCB_MOD_MASK_LOCK, std::uint16_t(XCB_MOD_MASK_LOCK | numLock)};
    }
    // Caps Lock heeded: the hot key works only in the Caps Lock state it was recorded in.
    if ((binding.modifiers & Event::capsLockKeyMask) != 0) {
        return {XCB_MOD_MASK_LOCK, std::uint16_t(XCB_MOD_MASK_LOCK | numLock)};
    }
    return {0, numLock};
}

std::vector<X11KeyGrabs::Refusal> X11KeyGrabs::grab(const std::vector<HotKeyBinding>& bindings,
                                                    Options options)
{
    ungrabAll();
    options_ = options;
    bindings_ = bindings;
    std::vector<Refusal> refused;
    for (const HotKeyBinding& binding : bindings_) {
        const auto key = EvdevKeyCodes::xKeyCodeForVirtualKey(binding.keyCode);
        if (!key || *key > 255) {
            refused.push_back({binding, "the key has no X key code"});
            continue;
        }
        const auto code = static_cast<xcb_keycode_t>(*key);
        const std::uint16_t base = xModifiers(binding.modifiers);
        // Sent together, then checked: one round trip for all variants.
        std::vector<std::pair<std::uint16_t, xcb_void_cookie_t>> sent;
        for (const std::uint16_t lock : lockVariants(binding)) {
            const std::uint16_t modifiers = base | lock;
            sent.emplace_back(
                modifiers, xcb_grab_key_checked(connection_.get(), 1, connection_.root(), modifiers,
                                                code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        }
        bool held = false;
        std::vector<Taken> mine;
        for (const auto& [modifiers, cookie] : sent) {
            if (auto error = owned(xcb_request_check(connection_.get(), cookie))) {
                held = true;
            } else {
                mine.push_back({code, modifiers});
            }
        }
        if (held) {
            for (const Taken& taken : mine) {
                xcb_ungrab_key(connection_.get(), taken.key, connection_.root(), taken.modifiers);
            }
            refused.push_back({binding, "another program holds it"});
        } else {
            taken_.insert(taken_.end(), mine.begin(), mine.end());
        }
    }
    xcb_flush(connection_.get());
    return refused;
}

void X11KeyGrabs::ungrabAll()
{
    for (const Taken& taken : taken_) {
        xcb_ungrab_key(connection_.get(), taken.key, connection_.root(), taken.modifiers);
    }
    taken_.clear();
    xcb_flush(connection_.get());
}

std::vector<X11KeyGrabs::Refusal> X11KeyGrabs::mappingChanged()
{
    ungrabAll();
    readModifierMap();
    const std::vector<HotKeyBinding> bindings = bindings_;
    return grab(bindings, options_);
}

const HotKeyBinding* X11KeyGrabs::bindingFor(xcb_keycode_t key, std::uint16_t state)
{
    const auto pressed = virtualKey(key);
    if (!pressed) {
        return nullptr;
    }
    constexpr std::uint64_t shown =
        Event::shiftKeyMask | Event::controlKeyMask | Event::optionKeyMask | Event::commandKeyMask;
    const std::uint64_t held = modifierFlags(state) & shown;
    for (const HotKeyBinding& binding : bindings_) {
        if (binding.keyCode == *pressed && (binding.modifiers & shown) == held) {
            return sidesMatch(binding) ? &binding : nullptr;
        }
    }
    return nullptr;
}

bool X11KeyGrabs::sidesMatch(const HotKeyBinding& binding)
{
    if (!options_.requireExactSides || (binding.modifiers & Event::sideKeyMask) == 0) {
        return true;
    }
    auto keymap = owned(
        xcb_query_keymap_reply(connection_.get(), xcb_query_keymap(connection_.get()), nullptr));
    if (!keymap) {
        return true;
    }
    for (const Side& side : sides) {
        if ((binding.modifiers & side.flag) != 0 && !keyIsDown(*keymap, side.key)) {
            return false;
        }
    }
    return true;
}

} // namespace vexto
