#pragma once

namespace vexto {

// The platform toolkit's version number, which the pane compares with thresholds to adapt to
// older systems. Injectable; by default the newest behaviour the pane knows.
class SystemVersion {
public:
    static constexpr double newest = 1187.0;

    static double appKitVersionNumber();
    static void setAppKitVersionNumber(double version);
    static void reset() { setAppKitVersionNumber(newest); }
};

} // namespace vexto
