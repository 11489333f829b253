#include "PaneHost.hpp"

#include "foundation/Bundle.hpp"
#include "foundation/FileSystem.hpp"
#include "toolkit/PreferencePane.hpp"
#include "toolkit/PreferencePaneFactory.hpp"
#include "toolkit/TabView.hpp"
#include "toolkit/View.hpp"
#include "toolkit/Window.hpp"

#include <dlfcn.h>

namespace vexto {

namespace {

constexpr double titleBarHeight = 22;
constexpr const char* platformFolder = "Linux";

} // namespace

PaneHost::~PaneHost()
{
    unselect();
    // The views are the module's: they go before the pane, and the module stays loaded until the
    // process ends so that nothing outlives the code it needs.
    window_.reset();
    pane_.reset();
}

bool PaneHost::load(const std::string& bundlePath, std::string& error)
{
    const Bundle bundle(bundlePath);
    const auto executable = bundle.infoString("CFBundleExecutable");
    if (!executable) {
        error = bundlePath + " is not a pane bundle (no Contents/Info.plist naming its executable)";
        return false;
    }
    const std::string modulePath = FileSystem::join(
        FileSystem::join(FileSystem::join(bundlePath, "Contents"), platformFolder), *executable);
    module_ = ::dlopen(modulePath.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module_ == nullptr) {
        error = std::string("cannot load the pane: ") + ::dlerror();
        return false;
    }
    auto create =
        reinterpret_cast<VextoCreatePreferencePane>(::dlsym(module_, createPreferencePaneSymbol));
    if (create == nullptr) {
        error = modulePath + " has no " + createPreferencePaneSymbol;
        return false;
    }
    pane_.reset(create(bundlePath.c_str(), &environment_));
    View* main = pane_ ? pane_->loadMainView() : nullptr;
    if (main == nullptr) {
        error = "the pane did not load its main view";
        return false;
    }
    const Rect content = main->frame();
    window_ = std::make_unique<Window>(
        Rect(100, 100, content.width(), content.height() + titleBarHeight), titleBarHeight);
    window_->setTitle(bundle.infoString("CFBundleName").value_or("Preferences"));
    main->setAutoresizingMask(View::WidthSizable | View::HeightSizable);
    window_->setContentView(main->shared_from_this());
    window_->makeKeyAndOrderFront();
    return true;
}

void PaneHost::select()
{
    if (selected_ || !pane_) {
        return;
    }
    pane_->willSelect();
    pane_->didSelect();
    selected_ = true;
}

void PaneHost::unselect()
{
    if (!selected_ || !pane_) {
        return;
    }
    pane_->willUnselect();
    pane_->didUnselect();
    selected_ = false;
}

TabView* PaneHost::settingsTabView() const
{
    return pane_ ? dynamic_cast<TabView*>(pane_->outletNamed("settingsTabView")) : nullptr;
}

} // namespace vexto
