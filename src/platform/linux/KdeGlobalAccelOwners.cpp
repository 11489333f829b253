#include "platform/linux/KdeGlobalAccelOwners.hpp"

#include "platform/linux/EvdevKeyCodes.hpp"

#include <array>
#include <cstdlib>
#include <string_view>
#include <systemd/sd-bus.h>
#include <utility>

namespace vexto {

namespace {

using M = ShortcutOwners::Modifier;

// Qt's key codes of the named keys (Qt::Key), by X keysym name.
constexpr std::array<std::pair<std::string_view, int>, 29> namedKeys = {{
    {"Escape", 0x01000000},
    {"Tab", 0x01000001},
    {"ISO_Left_Tab", 0x01000002},
    {"BackSpace", 0x01000003},
    {"Return", 0x01000004},
    {"KP_Enter", 0x01000005},
    {"Insert", 0x01000006},
    {"Delete", 0x01000007},
    {"Pause", 0x01000008},
    {"Print", 0x01000009},
    {"Home", 0x01000010},
    {"End", 0x01000011},
    {"Left", 0x01000012},
    {"Up", 0x01000013},
    {"Right", 0x01000014},
    {"Down", 0x01000015},
    {"Prior", 0x01000016},
    {"Next", 0x01000017},
    {"space", 0x20},
    {"minus", '-'},
    {"equal", '='},
    {"comma", ','},
    {"period", '.'},
    {"slash", '/'},
    {"semicolon", ';'},
    {"apostrophe", '\''},
    {"bracketleft", '['},
    {"bracketright", ']'},
    {"grave", '`'},
}};

constexpr int qtShift = 0x02000000;
constexpr int qtControl = 0x04000000;
constexpr int qtAlt = 0x08000000;
constexpr int qtMeta = 0x10000000;

} // namespace

std::optional<int> KdeGlobalAccelOwners::qtKey(const std::string& keysym, unsigned modifiers)
{
    std::optional<int> key;
    if (keysym.size() == 1 &&
        ((keysym[0] >= 'a' && keysym[0] <= 'z') || (keysym[0] >= 'A' && keysym[0] <= 'Z') ||
         (keysym[0] >= '0' && keysym[0] <= '9'))) {
        key = keysym[0] >= 'a' && keysym[0] <= 'z' ? keysym[0] - 'a' + 'A' : keysym[0];
    } else if (keysym.size() >= 2 && keysym.size() <= 3 && keysym[0] == 'F') {
        const int number = std::atoi(keysym.c_str() + 1);
        if (number >= 1 && number <= 35) {
            key = 0x01000030 + number - 1;
        }
    } else {
        for (const auto& [name, code] : namedKeys) {
            if (name == keysym) {
                key = code;
            }
        }
    }
    if (!key) {
        return std::nullopt;
    }
    return *key | ((modifiers & M::shift) != 0 ? qtShift : 0) |
           ((modifiers & M::control) != 0 ? qtControl : 0) |
           ((modifiers & M::alt) != 0 ? qtAlt : 0) | ((modifiers & M::super) != 0 ? qtMeta : 0);
}

KdeGlobalAccelOwners::KdeGlobalAccelOwners(KeysymOfKey keysymOf,
                                           std::unique_ptr<ShortcutOwners> fallback)
    : keysymOf_(std::move(keysymOf)), fallback_(std::move(fallback))
{}

KdeGlobalAccelOwners::~KdeGlobalAccelOwners()
{
    if (bus_ != nullptr) {
        sd_bus_flush_close_unref(bus_);
    }
}

std::optional<ShortcutOwner> KdeGlobalAccelOwners::askService(int key)
{
    if (bus_ != nullptr && sd_bus_is_open(bus_) <= 0) {
        bus_ = sd_bus_flush_close_unref(bus_);
    }
    if (bus_ == nullptr) {
        if (sd_bus_open_user(&bus_) < 0) {
            bus_ = nullptr;
            return std::nullopt;
        }
        sd_bus_set_method_call_timeout(bus_, answerMicroseconds);
    }
    sd_bus_error error = SD_BUS_ERROR_NULL;
    sd_bus_message* reply = nullptr;
    const int called =
        sd_bus_call_method(bus_, "org.kde.kglobalaccel", "/kglobalaccel", "org.kde.KGlobalAccel",
                           "action", &error, &reply, "i", key);
    sd_bus_error_free(&error);
    if (called < 0) {
        return std::nullopt;
    }
    // [component, action, component's friendly name, action's friendly name]; empty: free.
    char** answer = nullptr;
    std::optional<ShortcutOwner> owner;
    if (sd_bus_message_read_strv(reply, &answer) >= 0) {
        std::size_t count = 0;
        while (answer != nullptr && answer[count] != nullptr) {
            ++count;
        }
        owner = ShortcutOwner{};
        if (count >= 2) {
            const std::string action = count >= 4 && *answer[3] != '\0' ? answer[3] : answer[1];
            *owner = {ShortcutOwner::Answer::Taken, "KDE", action,
                      std::string("kglobalaccel ") + answer[0]};
        }
        for (std::size_t at = 0; at < count; ++at) {
            std::free(answer[at]);
        }
        std::free(answer);
    }
    sd_bus_message_unref(reply);
    return owner;
}

ShortcutOwner KdeGlobalAccelOwners::ownerOf(std::uint16_t keyCode, unsigned modifiers)
{
    const auto xKeyCode = EvdevKeyCodes::xKeyCodeForVirtualKey(keyCode);
    const auto keysym = xKeyCode ? keysymOf_(*xKeyCode) : std::nullopt;
    const auto key = keysym ? qtKey(*keysym, modifiers) : std::nullopt;
    if (key) {
        if (auto owner = askService(*key)) {
            return *owner;
        }
    }
    return fallback_ ? fallback_->ownerOf(keyCode, modifiers) : ShortcutOwner{};
}

} // namespace vexto
