#!/usr/bin/env bash
# Installs a build into a folder of its own and uses it from there: install_test.sh BUILD_DIR
# Then makes the Debian package and looks into it.
set -euo pipefail
build=$(cd "$1" && pwd)
tests=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() {
    echo "FAILED: $*" >&2
    exit 1
}

cmake --install "$build" --prefix "$work/usr" >"$work/install.log"
program=$work/usr/bin/tessaro
share=$work/usr/share
# Nothing of the build may be needed: its libraries are out of reach by name.
cd "$work"
unset TESSARO_MODULE TESSARO_ROOT LD_LIBRARY_PATH
grep -q "$build" <<<"$(readelf -d "$program")" && fail "the program looks into its build folder"
grep -qx HEXTOUT <<<"$("$program" commands)" || fail "the installed program does not find its module"
"$tests/runpath_test.sh" "$work/usr/bin" "$(dirname "$(find "$work/usr" -name libtolmar.so)")" || fail "libraries are looked for elsewhere"
# grep reads no pipe here: it ends at the first match, and what still writes then fails.
libraries=$(ldd "$program")
grep -q "libtolmar.so => .*$(basename "$work")" <<<"$libraries" || fail "the program takes another libtolmar.so: $libraries"

cp -r "$share/tessaro/examples/install" root
status=0
"$program" run HEXTOUT RVMOUT --model "$share/tessaro/examples/pump-station.json" --root root --out out --progress none \
    --report report.json -q || status=$?
[ "$status" -eq 0 ] || [ "$status" -eq 3 ] || fail "the installed program ended with status $status"
"$program" check hext root/temp/hext || fail "the installed program wrote a folder that is not whole"
"$program" check rvm out || fail "the installed program wrote RVM files that are not whole"

# Every option and sub-command of the help stands on the page.
page=$(sed 's/\\-/-/g; s/\\fR//g; s/\\fB//g' "$share/man/man1/tessaro.1")
words_of() { "$program" "$@" --help | sed '/^Examples:/,$d' | grep -oE -- '--[a-z][a-z-]+' | sort -u; }
for option in $(words_of run) $(words_of model info) $(words_of model tree) $(words_of model generate) $(words_of check rvm); do
    [ "$option" = --help ] || grep -q -- "$option" <<<"$page" || fail "the manual page lacks $option"
done

# Every page and picture that the README links to was installed beside it.
for link in $(grep -oE '\]\([a-z][^)]*\)' "$share/doc/tessaro/README.md" | tr -d '()]'); do
    [ -f "$share/doc/tessaro/$link" ] || fail "the README links to $link, which is not installed"
done

# Completion offers what the program has.
offered() {
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) COMPREPLY=()
    _tessaro || true
    echo " ${COMPREPLY[*]} "
}
source "$share/bash-completion/completions/tessaro"
[[ $(offered "$program" "") == *" model "* ]] || fail "no sub-command is completed"
[[ $(offered "$program" run HEX) == *" HEXTOUT "* ]] || fail "no command is completed"
[[ $(offered "$program" run HEXTOUT --sel) == *" --select --select-file "* ]] || fail "no option is completed"
[[ $(offered "$program" check "") == *" hext "* ]] || fail "no kind of output is completed"
# The same in zsh, where there is one.
offered_by_zsh() {
    zsh -fc 'compadd() { print -r -- " $* "; }; _files() { :; }; words=("${@:2}"); CURRENT=$#words; source $1' \
        zsh "$share/zsh/site-functions/_tessaro" "$@"
}
if command -v zsh >/dev/null; then
    [[ $(offered_by_zsh "$program" "") == *" model "* ]] || fail "zsh completes no sub-command"
    [[ $(offered_by_zsh "$program" run "") == *" HEXTOUT "* ]] || fail "zsh completes no command"
    [[ $(offered_by_zsh "$program" check rvm --) == *" --strict "* ]] || fail "zsh completes no option"
fi

(cd "$work" && cpack --config "$build/CPackConfig.cmake" -B "$work/deb" >"$work/cpack.log" 2>&1) || { cat "$work/cpack.log"; fail "no package"; }
package=("$work"/deb/*.deb)
dpkg-deb -c "${package[0]}" >"$work/contents"
for file in usr/bin/tessaro libtessaro.so libtolmar.so libnwcreate.so man1/tessaro.1 completions/tessaro vendor-completions/_tessaro examples/pump-station.json; do
    grep -q "$file" "$work/contents" || fail "the package lacks $file"
done
dpkg-deb -x "${package[0]}" "$work/unpacked"
"$tests/runpath_test.sh" "$work/unpacked/usr/bin" "$(dirname "$(find "$work/unpacked" -name libtolmar.so)")" || fail "the package looks for libraries elsewhere"
grep -q liblua5.1 <<<"$(dpkg-deb -f "${package[0]}" Depends)" || fail "the package does not name its dependencies"
echo "installed, used and packed"
