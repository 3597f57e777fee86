#!/bin/sh
# The compiler's -wrapper: links a test with lld, which takes a tenth of a second where the compiler's own linker takes two.
# Its arguments are that linker's command, of which all before the first -m is its name and its plugin.
set -eu
while [ "$1" != -m ]; do shift; done
exec ld.lld "$@"
