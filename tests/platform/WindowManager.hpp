#pragma once

#include "../support/ChildProcess.hpp"

#include <string>

namespace vexto::test {

// openbox managing a test's display while it lives.
class WindowManager {
public:
    explicit WindowManager(const std::string& display)
        : openbox_({"openbox", "--sm-disable"}, {{"DISPLAY", display}})
    {}

    void stop() { openbox_.stop(); }

private:
    ChildProcess openbox_;
};

} // namespace vexto::test
