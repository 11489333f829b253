#pragma once

namespace vexto {

class DistributedNotificationCenter;

// Talks to the daemon. For now: telling it to reread the settings after a save, with a sample
// panel when the change altered the panel's look.
class DaemonControl {
public:
    explicit DaemonControl(DistributedNotificationCenter& center) : center_(center) {}

    // Set by changes of the panel's look; the next update carries "Dummy" and clears it.
    bool updateDaemonWithDummyDisplay() const { return dummyDisplay_; }
    void setUpdateDaemonWithDummyDisplay(bool dummy) { dummyDisplay_ = dummy; }

    // Posts ": Update Daemon" (object "Dummy" when a sample panel was asked for).
    void updateDaemon();

private:
    DistributedNotificationCenter& center_;
    bool dummyDisplay_ = false;
};

} // namespace vexto
