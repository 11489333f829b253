#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexto {

// Who runs under a name, without walking every process of the machine. A process that wants to
// be found enters itself: it holds a lock on a file named after it in a folder of the user's
// runtime files for as long as it lives, and the kernel lets go of the lock however it ends. The
// holder of each lock is the process; a file whose lock nobody holds is what an ended process
// left, and is removed.
//
// The folder is $XDG_RUNTIME_DIR/vexto, else /tmp/vexto-UID; it is used only when it is a folder
// of this user's that no one else may enter, so another user can neither plant nor read entries.
// While no folder exists (nothing entered or looked since the machine started), the register
// cannot say and the caller walks the process list; the first look creates it.
class ProcessRegister {
public:
    // Enters this process under `name` until it ends: the returned descriptor holds the lock (and
    // is not inherited). -1 when it could not be entered.
    static int enter(std::string_view name);
    // Takes this process's entry away again, as it ends.
    static void leave(std::string_view name, int fd);
    // The PIDs (as this process sees them) of the living processes entered under `name`, in
    // rising order; none when there is no register to ask.
    static std::optional<std::vector<int>> processesNamed(std::string_view name);

    // The register's folder; with `create`, made when missing. None when it cannot be trusted.
    static std::optional<std::string> folder(bool create);
};

} // namespace vexto
