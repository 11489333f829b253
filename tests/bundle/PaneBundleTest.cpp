// The built bundle, loaded as a host loads it.
#include "../foundation/TestSupport.hpp"
#include "foundation/Bundle.hpp"
#include "foundation/StringsTable.hpp"
#include "platform/fake/FakeDesktop.hpp"
#include "platform/fake/FakeDistributedNotificationCenter.hpp"
#include "platform/fake/FakeRunLoop.hpp"
#include "toolkit/PreferencePane.hpp"
#include "toolkit/PreferencePaneFactory.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <dlfcn.h>
#include <memory>
#include <unistd.h>

namespace vexto {
namespace {

std::string bundlePath()
{
    return std::getenv("VEXTO_PANE_BUNDLE");
}

// Points $HOME somewhere else until it goes out of scope.
class HomeFolderSwap {
public:
    explicit HomeFolderSwap(const std::string& folder)
    {
        const char* current = std::getenv("HOME");
        saved_ = current != nullptr ? current : "";
        ::setenv("HOME", folder.c_str(), 1);
    }
    ~HomeFolderSwap() { ::setenv("HOME", saved_.c_str(), 1); }
    HomeFolderSwap(const HomeFolderSwap&) = delete;
    HomeFolderSwap& operator=(const HomeFolderSwap&) = delete;

private:
    std::string saved_;
};

TEST(PaneBundleTest, DescribesItselfAndShipsItsResources)
{
    Bundle bundle(bundlePath());
    EXPECT_EQ(bundle.infoString("CFBundleIdentifier"), "app.vexto.preferences");
    EXPECT_EQ(bundle.infoString("CFBundleShortVersionString"), "3.1");
    EXPECT_EQ(bundle.infoString("CFBundleVersion"), "310");
    EXPECT_EQ(bundle.infoString("CFBundleHelpBookName"), "Vexto Help");
    EXPECT_TRUE(std::filesystem::exists(bundlePath() + "/Contents/Linux/" +
                                        *bundle.infoString("CFBundleExecutable")));
    EXPECT_TRUE(std::filesystem::exists(
        bundle.pathForUncachedPreferencePaneResourceFile("Vexto.help/pages/Vexto.html")));
    const auto strings =
        StringsTable::load(bundle.resourcePath() + "/en.lproj/Localizable.strings");
    ASSERT_TRUE(strings) << "the English table parses";
    EXPECT_NE(strings->find("Vexto - Fatal Error"), nullptr);
    EXPECT_NE(strings->find("Disable Vexto"), nullptr);
}

TEST(PaneBundleTest, ShipsTheDaemonAsABundleOfItsOwn)
{
    const Bundle daemon(bundlePath() + "/Contents/Resources/vextodaemon.app");
    EXPECT_EQ(daemon.infoString("CFBundleIdentifier"), "app.vexto.preferences");
    EXPECT_EQ(daemon.infoString("CFBundleVersion"), "311");
    EXPECT_EQ(daemon.infoString("CFBundleShortVersionString"), "3.1");
    // Its process is named after the executable, which the pane looks for by that name.
    EXPECT_EQ(daemon.infoString("CFBundleExecutable"), "vextodaemon");
    EXPECT_EQ(::access((daemon.bundlePath() + "/Contents/Linux/vextodaemon").c_str(), X_OK), 0);
}

TEST(PaneBundleTest, AHostLoadsThePaneThroughItsFactory)
{
    // The module has its own copy of everything it links, so the home folder is isolated the way
    // both copies see it: through the environment.
    test::TemporaryFolder home;
    const HomeFolderSwap swap(home.path());
    Bundle bundle(bundlePath());
    const std::string module =
        bundlePath() + "/Contents/Linux/" + *bundle.infoString("CFBundleExecutable");
    void* handle = ::dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(handle, nullptr) << ::dlerror();
    auto create =
        reinterpret_cast<VextoCreatePreferencePane>(::dlsym(handle, createPreferencePaneSymbol));
    ASSERT_NE(create, nullptr);

    FakeRunLoop loop;
    FakeDistributedNotificationCenter center;
    FakeDesktop desktop;
    const PaneEnvironment environment{loop, center, desktop, desktop, desktop, nullptr};
    EXPECT_EQ(create(nullptr, &environment), nullptr);
    std::unique_ptr<PreferencePane> pane(create(bundlePath().c_str(), &environment));
    ASSERT_NE(pane, nullptr);
    View* main = pane->loadMainView();
    ASSERT_NE(main, nullptr);
    pane->willSelect();
    pane->didSelect();
    pane->willUnselect();
    pane->didUnselect();
    EXPECT_EQ(center.posted().size(), 2u) << "the first run's defaults, then the last tab";
    EXPECT_TRUE(
        std::filesystem::exists(home.file("Library/Application Support/Vexto/Settings.plist")));
    pane.reset();
    ::dlclose(handle);
}

} // namespace
} // namespace vexto
