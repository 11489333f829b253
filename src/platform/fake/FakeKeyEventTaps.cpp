#include "platform/fake/FakeKeyEventTaps.hpp"

namespace vexto {

std::unique_ptr<KeyEventTap> FakeKeyEventTaps::createTap(Callback callback)
{
    ++created_;
    return KeyEventTapList::createTap(std::move(callback));
}

} // namespace vexto
