// The desktop module: the services built on X11, xkbcommon, fontconfig and libtiff, made once.
#include "platform/linux/DesktopServices.hpp"
#include "platform/linux/DesktopShortcutOwners.hpp"
#include "platform/linux/EwmhProcessWindows.hpp"
#include "platform/linux/FontconfigCatalog.hpp"
#include "platform/linux/TiffImageDecoder.hpp"
#include "platform/linux/X11AccessibilityStatus.hpp"
#include "platform/linux/X11DesktopWatcher.hpp"
#include "platform/linux/X11HotKeyRegistrar.hpp"
#include "platform/linux/XkbKeyboardLayout.hpp"

namespace vexto {

namespace {

class LinuxDesktopServices final : public DesktopServices {
public:
    const FontCatalog& fonts() override { return fonts_; }
    const ImageDecoder& images() override { return images_; }
    std::unique_ptr<KeyboardLayout> keyboardLayout() override
    {
        return XkbKeyboardLayout::forDesktop();
    }
    HotKeyRegistrar& hotKeys() override { return hotKeys_; }
    ProcessWindows& windows() override { return windows_; }
    AccessibilityStatus& accessibility() override { return accessibility_; }
    ShortcutOwners& shortcutOwners() override { return owners_; }
    std::shared_ptr<void> watchDesktops(DescriptorWatcher& loop,
                                        std::function<void()> activeDesktopDidChange) override
    {
        return std::make_shared<X11DesktopWatcher>(loop, std::move(activeDesktopDidChange));
    }

private:
    FontconfigCatalog fonts_;
    TiffImageDecoder images_;
    X11HotKeyRegistrar hotKeys_;
    EwmhProcessWindows windows_;
    X11AccessibilityStatus accessibility_;
    DesktopShortcutOwners owners_{windows_};
};

} // namespace

} // namespace vexto

extern "C" __attribute__((visibility("default"))) vexto::DesktopServices*
vexto_create_desktop_services()
{
    static vexto::LinuxDesktopServices services;
    return &services;
}
