#!/bin/sh
# Runs a command in a PID namespace of its own, with its own /proc: the processes it finds by
# name are only those it started, and whatever it leaves running ends with it. Other test runs
# and the user's own daemon on the same machine are thus never seen, counted or signalled.
# Where no namespace can be made (no privilege, no user namespaces), the command runs as it is.
own="unshare --pid --fork --mount-proc --kill-child"
if [ "$(id -u)" -ne 0 ]; then
    own="unshare --map-root-user --pid --fork --mount-proc --kill-child"
fi
if $own true 2>/dev/null; then
    exec $own "$@"
fi
echo "own-pid-namespace: no PID namespace here; running in the machine's" >&2
exec "$@"
