#!/usr/bin/env bash
# vexto-plist against damaged and hostile files: a one-line reason and exit status 1, never a
# crash, and converting a file onto itself never destroys it.
set -u
plist=$1
hostile=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

expect() { # FILE STATUS REASON
    local output status
    output=$("$plist" lint "$hostile/$1" 2>&1)
    status=$?
    if [ "$status" -ne "$2" ] || [[ "$output" != *"$3"* ]]; then
        echo "lint $1: status $status, said: $output (wanted $2 and \"$3\")"
        failures=$((failures + 1))
    fi
}

expect utf16-nul-key.bplist 1 "text holds a NUL character"
expect shared-references.bplist 1 "holds more than 100000 values"
expect apostrophe-nesting.plist 1 "not a property list"
expect invalid-utf8.plist 1 "text is not valid UTF-8"
expect colour-superclass-chain.plist 0 "OK"

# Printing decodes colours: the endless superclass chain reads as plain data.
if ! "$plist" print "$hostile/colour-superclass-chain.plist" | grep -q '<data 90013 bytes'; then
    echo "print of the superclass chain did not show plain data"
    failures=$((failures + 1))
fi

for file in "$hostile"/*; do
    cp "$file" "$work/copy"
    for format in binary xml; do
        "$plist" convert "$format" "$work/copy" -o "$work/copy" 2>/dev/null
        if [ -s "$work/copy" ] && ! "$plist" lint "$work/copy" >/dev/null 2>&1 &&
            ! cmp -s "$file" "$work/copy"; then
            echo "converting $(basename "$file") to $format onto itself destroyed it"
            failures=$((failures + 1))
        fi
    done
done

[ "$failures" -eq 0 ]
