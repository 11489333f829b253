#pragma once

#include "ports/HotKeyRegistrar.hpp"

#include <array>
#include <map>
#include <string>

struct _XDisplay;

namespace vexto {

// Global hot keys on X11: a combination is free when a passive grab of it on the root window
// succeeds with every lock state (none, Caps Lock, Num Lock, both), as another client's grab of
// any one of them would take some presses away. Without a display every combination is free.
class X11HotKeyRegistrar final : public HotKeyRegistrar {
public:
    // The display named (empty: $DISPLAY); none to be had means accepting everything.
    explicit X11HotKeyRegistrar(const std::string& displayName = {});
    ~X11HotKeyRegistrar() override;
    X11HotKeyRegistrar(const X11HotKeyRegistrar&) = delete;
    X11HotKeyRegistrar& operator=(const X11HotKeyRegistrar&) = delete;

    bool hasDisplay() const { return display_ != nullptr; }
    bool registerHotKey(std::uint16_t keyCode, std::uint32_t carbonModifiers,
                        std::uint32_t identifier) override;
    void unregisterHotKey(std::uint32_t identifier) override;

private:
    struct Grab {
        int keyCode;
        unsigned modifiers;
    };
    using LockVariants = std::array<unsigned, 4>;
    LockVariants lockVariants() const;
    unsigned numLockMask() const;
    // Undoes the grabs of the first `count` lock variants.
    void ungrab(const Grab& grab, const LockVariants& locks, std::size_t count);

    _XDisplay* display_ = nullptr;
    std::map<std::uint32_t, Grab> grabs_;
};

} // namespace vexto
