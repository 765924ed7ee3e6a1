#!/bin/sh
# installer.sh VERSION: installs, upgrades and removes the plug-in with out/Zandermolite-VERSION-setup.exe
# under Wine, and looks at every file. Needs both Windows builds.
set -eu
version=$1
setup=$PWD/out/Zandermolite-$version-setup.exe
# Names of folders are not all of ASCII.
export LC_ALL=C.UTF-8
name=zandermolite-installer-test
drive=$(scripts/wine-run winepath -u 'C:\' | tr -d '\r'); drive=${drive%/}
folder=$drive/$name
uninstall_key='Software\Microsoft\Windows\CurrentVersion\Uninstall\Zandermolite'

fail() {
  echo "installer.sh: $*" >&2
  exit 1
}

# commands LINE...: of the system's shell.
commands() {
  printf '%s\r\n' '@echo off' "$@" > "$folder.cmd"
  scripts/wine-run cmd /c "C:\\$name.cmd" > /dev/null 2>&1 || true
  rm -f "$folder.cmd"
}

# registry_file BITS LINE...: what programs of so many bits shall see in the registry.
registry_file() {
  file=$folder.$1.reg; shift
  { printf '\377\376'
    printf '%s\r\n' 'Windows Registry Editor Version 5.00' "$@" | iconv -f UTF-8 -t UTF-16LE; } > "$file"
}
editors='HKEY_LOCAL_MACHINE\Software\Adobe\Photoshop'
programs='HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\App Paths'
clear_registry() {
  commands "reg delete \"$editors\\$name\" /f /reg:32" "reg delete \"$editors\\$name\" /f /reg:64" \
    "reg delete \"$programs\\$name.exe\" /f /reg:64" \
    "reg delete \"$programs\\$name-other.exe\" /f /reg:64" \
    "reg delete \"HKLM\\$uninstall_key\" /f /reg:64" "reg delete \"HKCU\\$uninstall_key\" /f /reg:64"
}
# holders: the processes that have loaded the plug-in from the folder of this test.
holders() {
  grep -l "/$name/Editor A/Plug-ins/Zandermolite.8bf" /proc/[0-9]*/maps 2> /dev/null |
    sed 's#^/proc/##; s#/maps$##'
}
leave() {
  # shellcheck disable=SC2046
  kill $(holders) 2> /dev/null || true
  rm -rf "$folder" "$folder".*
  clear_registry
}
rm -rf "$folder" "$folder".*; mkdir -p "$folder"
trap leave EXIT
clear_registry

# Editors: one of 32 bits that registers its plug-in folder, one of 64 bits that registers the program's, and
# one that registers nothing but its name, whose folder holds a plug-in. The last program has plug-ins of
# another kind.
mkdir -p "$folder/Editor A/Plug-ins" "$folder/Editor B/Plug-ins" "$folder/Größe/Plugins" \
  "$folder/Other/Plugins" "$folder/Chosen" "$folder/Chosen 64"
cp build/win64/shell/Zandermolite.8bf "$folder/Größe/Plugins/another.8bf"
: > "$folder/Größe/editor.exe"; : > "$folder/Other/other.exe"; : > "$folder/Other/Plugins/other.dll"
registry_file 32 "[$editors\\$name\\PluginPath]" "@=\"C:\\\\$name\\\\Editor A\\\\Plug-ins\\\\\""
registry_file 64 "[$editors\\$name]" "\"ApplicationPath\"=\"C:\\\\$name\\\\Editor B\\\\\"" \
  "[$programs\\$name.exe]" "@=\"\\\"C:\\\\$name\\\\Größe\\\\editor.exe\\\"\"" \
  "[$programs\\$name-other.exe]" "@=\"C:\\\\$name\\\\Other\\\\other.exe\""
commands "reg import C:\\$name.32.reg /reg:32" "reg import C:\\$name.64.reg /reg:64"
(cd "$folder" && find . -type f | sort) > "$folder.before"

# run_setup STATUS SETUP ARGUMENT...
run_setup() {
  expected=$1; shift
  status=0
  scripts/wine-run "$@" || status=$?
  [ "$status" -eq "$expected" ] || fail "status $status, not $expected, of $*"
}

# value ROOT NAME: of the registration; empty if there is none.
value() {
  scripts/wine-run reg query "$1\\$uninstall_key" /v "$2" /reg:64 2> /dev/null | tr -d '\r' |
    sed -n "s/^ *$2 *REG_[A-Z]* *//p"
}

# expect_copy FOLDER BITS: the plug-in and its help.
expect_copy() {
  cmp "build/win$2/shell/Zandermolite.8bf" "$1/Zandermolite.8bf" || fail "$1 has not the $2-bit plug-in"
  diff -r docs/help "$1/Brenvalder Help" || fail "$1 has not the help pages"
}

# expect_complete FOLDER: of the program.
expect_complete() {
  expect_copy "$1/win32" 32
  expect_copy "$1/win64" 64
  cmp LICENSE "$1/LICENSE"
  diff -r licences "$1/licences"
  there=$(ls "$1" | tr '\n' ' ')
  [ "$there" = 'LICENSE Uninstall.exe licences win32 win64 ' ] || fail "$1 has $there"
}

# digest: of all that is on the disk.
digest() {
  (cd "$folder" && find . -type f -exec md5sum {} + | sort)
}

# wait_for_removal FILE: the uninstaller goes on in a copy of itself.
wait_for_removal() {
  waited=0
  while [ -e "$1" ]; do
    waited=$((waited + 1)); [ "$waited" -le 100 ] || fail "$1 is still there"
    sleep 0.1
  done
}

# An older version, with a page that the newer one has not, elsewhere.
cp -r docs/help "$folder.help"
echo old > "$folder.help/old.htm"
cmake -DVERSION=2.9.0 "-DHELP=$folder.help" "-DOUTPUT=$folder.exe" -P cmake/installer.cmake
run_setup 0 "C:\\$name.exe" /S "/D=C:\\$name\\older"
rm -rf "$folder.help" "$folder.exe"
[ -e "$folder/Editor A/Plug-ins/Brenvalder Help/old.htm" ] || fail 'the older version was not installed'
[ "$(value HKLM DisplayVersion)" = 2.9.0 ] || fail 'the older version is not registered'
echo preferences > "$folder/Editor A/Plug-ins/Zandermolite3.prf"

# Over it, with two folders more.
run_setup 0 "$setup" /S "/PLUGINS32=C:\\$name\\Chosen;" "/PLUGINS64=C:\\$name\\Chosen 64" \
  "/D=C:\\$name\\program"
[ ! -e "$folder/older" ] || fail 'the older version stayed'
expect_complete "$folder/program"
expect_copy "$folder/Editor A/Plug-ins" 32
expect_copy "$folder/Editor B/Plug-ins" 64
expect_copy "$folder/Größe/Plugins" 64
expect_copy "$folder/Chosen" 32
expect_copy "$folder/Chosen 64" 64
[ "$(ls "$folder/Other/Plugins")" = other.dll ] || fail 'a folder without filters got the plug-in'
[ "$(value HKLM DisplayVersion)" = "$version" ] || fail 'the version is not registered'
[ "$(value HKLM QuietUninstallString)" = "\"C:\\$name\\program\\Uninstall.exe\" /S" ] ||
  fail 'the uninstaller is not registered'

# Nothing is changed where not all can be: a folder that nobody can write to, one that is not there, and a
# plug-in that an editor has loaded, which shows its About box.
digest > "$folder.all"
unchanged() {
  digest | cmp -s - "$folder.all" || fail "$1 changed files"
}
run_setup 3 "$setup" /S '/PLUGINS64=Z:\proc'
unchanged 'a folder that cannot be written'
run_setup 3 "$setup" /S '/D=Z:\proc\zandermolite'
unchanged 'a program folder that cannot be made'
run_setup 3 "$setup" /S "/PLUGINS32=C:\\$name\\missing"
unchanged 'a missing folder'
scripts/wine-run build/win32/host/zandermolite-run.exe --about \
  --filter "C:\\$name\\Editor A\\Plug-ins\\Zandermolite.8bf" > /dev/null 2>&1 & runner=$!
waited=0
while [ -z "$(holders)" ]; do
  waited=$((waited + 1)); [ "$waited" -le 100 ] || fail 'no program has loaded the plug-in'
  sleep 0.1
done
run_setup 4 "$setup" /S
unchanged 'a plug-in in use'
run_setup 4 "C:\\$name\\program\\Uninstall.exe" /S "_?=C:\\$name\\program"
unchanged 'the removal of a plug-in in use'
# shellcheck disable=SC2046
kill $(holders); wait "$runner" || true

# All of it goes, and nothing else.
run_setup 0 "C:\\$name\\program\\Uninstall.exe" /S
wait_for_removal "$folder/program"
(cd "$folder" && find . -type f ! -name Zandermolite3.prf | sort) | diff "$folder.before" - ||
  fail 'not what was there before'
[ "$(cat "$folder/Editor A/Plug-ins/Zandermolite3.prf")" = preferences ] || fail 'the preferences are gone'
for kept in 'Editor A/Plug-ins' 'Editor B/Plug-ins' Größe/Plugins Chosen 'Chosen 64'; do
  [ -d "$folder/$kept" ] && [ ! -e "$folder/$kept/Brenvalder Help" ] || fail "$kept is not as it was"
done
[ -z "$(value HKLM DisplayVersion)" ] || fail 'it is still registered'

# For one user alone, in the usual place, without looking for editors.
run_setup 0 "$setup" /S /CURRENTUSER /NOSEARCH
own=$(value HKCU InstallLocation)
case $own in
  *'\AppData\Local\Programs\Zandermolite') ;;
  *) fail "a user's own copy is in $own" ;;
esac
own=$(scripts/wine-run winepath -u "$own" | tr -d '\r')
expect_complete "$own"
[ ! -e "$folder/Editor A/Plug-ins/Zandermolite.8bf" ] || fail '/NOSEARCH found an editor'
[ -z "$(value HKLM DisplayVersion)" ] || fail "a user's own copy is registered for all"
run_setup 0 "$own/Uninstall.exe" /S
wait_for_removal "$own"
[ -z "$(value HKCU DisplayVersion)" ] || fail "a user's own copy is still registered"
echo "installed, upgraded and removed in $(basename "$setup")"
