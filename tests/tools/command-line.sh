#!/usr/bin/env bash
# vexto-plist's command line as a user meets it: help and version on standard output, and every
# error naming what was wrong, with the exit status the README gives. Files that are not regular
# files are refused at once with what they are, never waited on.
#   command-line.sh VEXTO-PLIST
set -u
plist=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

check() { # STATUS OUT-PATTERN ERR-PATTERN ARGS...
    local status=$1 out=$2 err=$3
    shift 3
    timeout 5 "$plist" "$@" >"$work/out" 2>"$work/err"
    local actual=$?
    if [ "$actual" -ne "$status" ] || { [ -n "$out" ] && ! grep -q -- "$out" "$work/out"; } ||
        { [ -n "$err" ] && ! grep -q -- "$err" "$work/err"; }; then
        echo "vexto-plist $*: status $actual (wanted $status)"
        echo "  out: $(cat "$work/out")"
        echo "  err: $(cat "$work/err")"
        failures=$((failures + 1))
    fi
}

mkfifo "$work/fifo"
mkdir "$work/folder"
ln -s /dev/zero "$work/zero"
printf '<plist version="1.0"><dict/></plist>' >"$work/ok.plist"

check 0 'usage: vexto-plist lint FILE' '' --help
check 0 '^vexto-plist [0-9]' '' --version
check 2 '' 'no command given'
check 2 '' 'unknown command "frobnicate"' frobnicate
check 2 '' 'lint takes one FILE' lint
check 2 '' 'convert needs a format, xml or binary, not "json"' convert json "$work/ok.plist" -o -
check 2 '' 'convert takes FORMAT FILE -o OUT' convert xml "$work/ok.plist"
check 1 '' 'missing.plist: cannot be read (No such file or directory)' lint "$work/missing.plist"
check 1 '' 'fifo: cannot be read (is a FIFO)' lint "$work/fifo"
check 1 '' 'fifo: cannot be read (is a FIFO)' print "$work/fifo"
check 1 '' 'fifo: cannot be read (is a FIFO)' convert xml "$work/fifo" -o -
check 1 '' 'folder: cannot be read (is a directory)' lint "$work/folder"
check 1 '' 'zero: cannot be read (is a device)' lint "$work/zero"
check 1 '' 'cannot be written (' convert xml "$work/ok.plist" -o "$work/no/such/folder/out"
check 0 'ok.plist: OK' '' lint "$work/ok.plist"

# A hostile file's strings reach the terminal escaped: no escape sequence, no C1 control.
printf '<plist version="1.0"><dict><key>k&#x1b;]0;t&#x7;</key><string>&#x1b;[2J&#x9b;1m&#x202e;</string></dict></plist>' \
    >"$work/escapes.plist"
check 0 '"k\\u001b\]0;t\\u0007" = "\\u001b\[2J\\u009b1m\\u202e"' '' print "$work/escapes.plist"
if LC_ALL=C grep -q $'[\x01-\x08\x0b-\x1f\x7f]\|\xc2[\x80-\x9f]' "$work/out"; then
    echo "vexto-plist print: control characters reach the terminal"
    failures=$((failures + 1))
fi

[ "$failures" -eq 0 ]
