#pragma once

#include <functional>
#include <memory>
#include <string>

namespace vexto {

class Image;

// The pane's own images for its widgets, by file name: each is loaded once, through the loader
// the pane gives (read straight from its bundle's resources), and kept for the process's life.
// Without a loader, or for a file that cannot be read, there is no image.
class ResourceImages {
public:
    using Loader = std::function<std::shared_ptr<Image>(const std::string& name)>;

    static void setLoader(Loader loader);
    static std::shared_ptr<Image> named(const std::string& name);
    // Forgets the loader and every image; for tests.
    static void resetForTesting();
};

} // namespace vexto
