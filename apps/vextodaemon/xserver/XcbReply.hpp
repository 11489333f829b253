#pragma once

#include <cstdlib>
#include <memory>

namespace vexto {

// An answer (or error) xcb hands over, which the caller frees with free(); none stays none.
template <typename Reply> using XcbReply = std::unique_ptr<Reply, decltype(&std::free)>;

template <typename Reply> XcbReply<Reply> owned(Reply* reply)
{
    return XcbReply<Reply>(reply, &std::free);
}

} // namespace vexto
