#include "platform/linux/DeferredKeyboardLayout.hpp"

#include "platform/linux/DesktopServices.hpp"

namespace vexto {

DeferredKeyboardLayout::DeferredKeyboardLayout()
    : source_([]() -> std::unique_ptr<KeyboardLayout> {
          DesktopServices* desktop = DesktopServices::shared();
          return desktop != nullptr ? desktop->keyboardLayout() : nullptr;
      })
{}

} // namespace vexto
