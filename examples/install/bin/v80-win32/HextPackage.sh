#!/bin/sh
# Stands in the packaging program's place: puts the macro files of temp/hext into one archive, temp/hext.tar.
# HEXTOUT starts it with this folder as working directory. The same files give the same bytes.
set -eu

cd ../../temp
archive=hext.tar
part=$archive.$$.part
trap 'rm -f "$part"' EXIT

find hext -type f ! -name '.*' | LC_ALL=C sort |
    tar --create --file "$part" --files-from - --format ustar \
        --mtime @0 --owner 0 --group 0 --numeric-owner --mode u=rw,go=r
mv "$part" "$archive"
