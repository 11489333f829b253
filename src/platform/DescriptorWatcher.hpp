#pragma once

#include <functional>

namespace vexto {

// A run loop that also wakes for file descriptors: `ready` runs on the main thread whenever the
// descriptor can be read, until it is unwatched.
class DescriptorWatcher {
public:
    virtual ~DescriptorWatcher() = default;
    virtual void watchDescriptor(int fd, std::function<void()> ready) = 0;
    virtual void unwatchDescriptor(int fd) = 0;
};

} // namespace vexto
