#include "pane/KRVXPreferencePane.hpp"
#include "toolkit/PreferencePaneFactory.hpp"

#include <new>

extern "C" __attribute__((visibility("default"))) vexto::PreferencePane*
vexto_create_preference_pane(const char* bundlePath, const vexto::PaneEnvironment* environment)
{
    if (bundlePath == nullptr || environment == nullptr) {
        return nullptr;
    }
    return new (std::nothrow) vexto::KRVXPreferencePane(bundlePath, *environment);
}
