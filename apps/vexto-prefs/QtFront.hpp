#pragma once

#include "HostRun.hpp"

// The host's window and its offscreen pictures live in a module of their own, loaded only when a
// window or a picture is wanted: a headless run never maps Qt's libraries.
extern "C" {
using VextoRunQtFront = int (*)(const vexto::HostRun::Options* options, int argc, char** argv);
}

namespace vexto {
inline constexpr const char* qtFrontModuleName = "vexto-prefs-qt.so";
inline constexpr const char* runQtFrontSymbol = "vexto_run_qt_front";
} // namespace vexto
