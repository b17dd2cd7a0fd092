#!/usr/bin/env bash
# Checks the installed program, from the build folder it is run in; it never rebuilds.
#   check_install.sh tree BUILD SOURCE VERSION ID     install into a fresh prefix and check it
#   check_install.sh package BUILD VERSION            make the Debian package and list it
# A check whose tool is not installed is skipped with a message (scripts/setup.sh installs
# them all); the package check as a whole ends with 77 (skipped) without dpkg-deb.
set -euo pipefail

fail() {
    echo "FAIL: $*" >&2
    exit 1
}

tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
# The programs run below never see the settings or data of the person running the tests.
export HOME="$tmp/home" XDG_CONFIG_HOME="$tmp/home/.config" XDG_DATA_HOME="$tmp/home/.local/share"
mkdir -p "$HOME"

check_tree() {
    local build=$1 source=$2 version=$3 id=$4
    local prefix="$tmp/prefix"
    cmake --install "$build" --prefix "$prefix" >/dev/null
    local expected=(
        bin/ostrel bin/ostrel-cli
        "share/applications/$id.desktop"
        "share/metainfo/$id.metainfo.xml"
        "share/icons/hicolor/scalable/apps/$id.svg"
        "share/icons/hicolor/48x48/apps/$id.png"
        "share/icons/hicolor/128x128/apps/$id.png"
        share/man/man1/ostrel.1 share/man/man1/ostrel-cli.1
        share/ostrel/demo_glasses.csv
    )
    local f
    for f in "${expected[@]}"; do
        [ -f "$prefix/$f" ] || fail "$f is not installed"
    done
    if [ -d "$source/docs/help" ]; then
        [ -n "$(ls -A "$prefix/share/doc/ostrel" 2>/dev/null)" ] || fail "the guide is not installed"
    fi

    if command -v desktop-file-validate >/dev/null; then
        desktop-file-validate "$prefix/share/applications/$id.desktop" || fail "desktop entry"
    else
        echo "skipped: desktop-file-validate is not installed"
    fi
    if command -v appstreamcli >/dev/null; then
        appstreamcli validate --no-net "$prefix/share/metainfo/$id.metainfo.xml" >/dev/null ||
            fail "metainfo: $(appstreamcli validate --no-net "$prefix/share/metainfo/$id.metainfo.xml")"
    else
        echo "skipped: appstreamcli is not installed"
    fi

    [ "$("$prefix/bin/ostrel-cli" --version)" = "ostrel-cli $version" ] || fail "ostrel-cli --version"
    [ "$("$prefix/bin/ostrel" --version)" = "ostrel $version" ] || fail "ostrel --version"
    # The installed program finds its data under its own prefix, not in the build folder.
    local about
    about=$("$prefix/bin/ostrel-cli" --data-dir "$tmp/data" about)
    grep -qxF "demoCatalogue	$prefix/share/ostrel/demo_glasses.csv" <<<"$about" ||
        fail "the installed catalogue is not found: $about"
    if [ -d "$source/docs/help" ]; then
        grep -qxF "guide	$prefix/share/doc/ostrel" <<<"$about" || fail "the guide is not found: $about"
    fi
    mkdir -p "$tmp/data"
    "$prefix/bin/ostrel-cli" --data-dir "$tmp/data" demo "$tmp/demo" >/dev/null ||
        fail "demo from the installed catalogue"
    [ -f "$tmp/demo/Kelmora/FenmarkExA.mdb" ] || fail "the demo installation holds no database"
}

check_package() {
    local build=$1 version=$2
    local tool
    for tool in dpkg-deb dpkg-shlibdeps file; do
        if ! command -v "$tool" >/dev/null; then
            echo "skipped: $tool is not installed"
            exit 77
        fi
    done
    cpack --config "$build/CPackConfig.cmake" -G DEB -B "$tmp/package" >/dev/null
    local deb="$tmp/package/ostrel_${version}_$(dpkg --print-architecture).deb"
    [ -f "$deb" ] || fail "no package $deb: $(ls "$tmp/package")"
    local listing
    listing=$(dpkg-deb -c "$deb")
    local f
    for f in usr/bin/ostrel usr/bin/ostrel-cli usr/share/applications/org.ostrel.Ostrel.desktop \
        usr/share/metainfo/org.ostrel.Ostrel.metainfo.xml \
        usr/share/icons/hicolor/scalable/apps/org.ostrel.Ostrel.svg \
        usr/share/man/man1/ostrel-cli.1 usr/share/ostrel/demo_glasses.csv; do
        grep -q " \./$f\$" <<<"$listing" || fail "$f is not in the package"
    done
    [ "$(dpkg-deb -f "$deb" Section)" = science ] || fail "section"
    [ "$(dpkg-deb -f "$deb" Version)" = "$version" ] || fail "version"
    local depends
    depends=$(dpkg-deb -f "$deb" Depends)
    for f in libqt6widgets6 libsqlite3; do
        grep -q "$f" <<<"$depends" || fail "Depends lacks $f: $depends"
    done
}

case "${1:-}" in
    tree) check_tree "$2" "$3" "$4" "$5" ;;
    package) check_package "$2" "$3" ;;
    *) fail "usage: $0 tree BUILD SOURCE VERSION ID | package BUILD VERSION" ;;
esac
echo "ok"
