#pragma once

namespace vexto {

class ProcessManager;
class ProcessSignals;
class RunLoop;

// The process list, signals and clock the process model works with, installed once by the
// pane (or a test). Until then every question is answered as if no process existed.
class ProcessPlatform {
public:
    struct Ports {
        ProcessManager* manager = nullptr;
        ProcessSignals* signals = nullptr;
        RunLoop* runLoop = nullptr;
    };

    // Returns what was installed before, for whoever installs to put back when done.
    static Ports install(ProcessManager* manager, ProcessSignals* signals, RunLoop* runLoop);
    static void restore(const Ports& ports)
    {
        install(ports.manager, ports.signals, ports.runLoop);
    }
    static void uninstall() { install(nullptr, nullptr, nullptr); }

    static ProcessManager& manager();
    static ProcessSignals& signals();
    // Blocks the main thread, through the installed run loop's clock.
    static void sleep(double seconds);
};

} // namespace vexto
