#pragma once

#include "toolkit/PaneEnvironment.hpp"

namespace vexto {
class PreferencePane;
}

// What a host looks up in the pane's module after loading it: one function that makes the
// pane's controller for the bundle at `bundlePath`. The host owns the result and deletes it;
// none when either argument is missing.
extern "C" {
using VextoCreatePreferencePane =
    vexto::PreferencePane* (*)(const char* bundlePath, const vexto::PaneEnvironment* environment);
}

namespace vexto {
inline constexpr const char* createPreferencePaneSymbol = "vexto_create_preference_pane";
}
