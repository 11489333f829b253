#include "widgets/ResourceImages.hpp"

#include "toolkit/Image.hpp"

#include <map>

namespace vexto {

namespace {

struct Store {
    ResourceImages::Loader loader;
    std::map<std::string, std::shared_ptr<Image>, std::less<>> images;
};

Store& store()
{
    static Store shared;
    return shared;
}

} // namespace

void ResourceImages::setLoader(Loader loader)
{
    store().loader = std::move(loader);
}

std::shared_ptr<Image> ResourceImages::named(const std::string& name)
{
    Store& s = store();
    if (const auto found = s.images.find(name); found != s.images.end()) {
        return found->second;
    }
    if (!s.loader) {
        return nullptr;
    }
    auto image = s.loader(name);
    if (image) {
        s.images.emplace(name, image);
    }
    return image;
}

void ResourceImages::resetForTesting()
{
    store() = Store{};
}

} // namespace vexto
