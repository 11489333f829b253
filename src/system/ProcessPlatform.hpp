#pragma once

namespace vexto {

class ProcessManager;
class ProcessSignals;
class RunLoop;

// The process list, signals and clock the process model works with, installed by each pane (or
// a test). The latest installation still in place answers: a pane opened before the previous one
// is gone, and then outliving it, keeps its own. Without one every question is answered as if no
// process existed.
class ProcessPlatform {
public:
    struct Ports {
        ProcessManager* manager = nullptr;
        ProcessSignals* signals = nullptr;
        RunLoop* runLoop = nullptr;
    };

    // Returns the installation's token, with which its installer takes it away again.
    static int install(ProcessManager* manager, ProcessSignals* signals, RunLoop* runLoop);
    static void uninstall(int token);
    // Takes every installation away.
    static void uninstall();

    static ProcessManager& manager();
    static ProcessSignals& signals();
    // Blocks the main thread, through the installed run loop's clock.
    static void sleep(double seconds);
};

} // namespace vexto
