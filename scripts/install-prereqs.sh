#!/usr/bin/env bash
# Installs, with apt-get, whatever the build and the tests need and this machine lacks.
# Safe to run again: it installs nothing when everything is there.
set -euo pipefail

packages=(
    cmake make g++ zlib1g-dev
    # libdeflate: Debian's build for the native tests; its source package for the Windows build.
    libdeflate-dev dpkg-dev
    g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64
    libz-mingw-w64-dev
    wine wine64 xvfb
    googletest
    ccache
    # Zone data: the date tests run Wine with TZ=Europe/Berlin.
    tzdata
    # Keyboard and mouse for the chooser dialogs of the end-to-end tests on the test display.
    xdotool
    # Info-ZIP: the zip tests check our archives with it and unpack its archives.
    zip unzip
    # The zip interoperability test and the zip benchmark (GNU time: the benchmark's peak memory).
    python3 time
    # The release checks: Authenticode signing with a throwaway certificate, the HTML reference.
    osslsigncode openssl cmark-gfm
    # The picture tests compare our scaling with ImageMagick's; the picture benchmark races it.
    imagemagick
    # arm64 Linux: the cross compiler, qemu for its tests, and the arm64 libraries it links
    # (multiarch packages; zlib and libdeflate go into the plug-in from their static archives).
    g++-aarch64-linux-gnu binutils-aarch64-linux-gnu qemu-user
    libc6-dev:arm64 libstdc++6:arm64 zlib1g-dev:arm64 libdeflate-dev:arm64
    # The Linux plug-in's picture codecs, linked from their static archives for both machines
    # (libtiff's own dependencies too; JBIG-KIT is installed with libtiff-dev, never linked), and
    # ImageMagick, whose pictures the codec tests decode.
    libjpeg62-turbo-dev libpng-dev libgif-dev libtiff-dev libwebp-dev libzstd-dev liblzma-dev
    liblerc-dev
    libjpeg62-turbo-dev:arm64 libpng-dev:arm64 libgif-dev:arm64 libtiff-dev:arm64
    libwebp-dev:arm64 libzstd-dev:arm64 liblzma-dev:arm64 liblerc-dev:arm64
    imagemagick
)

# The arm64 packages come from this machine's own sources once dpkg takes the architecture.
if ! dpkg --print-foreign-architectures | grep -qx arm64; then
    dpkg --add-architecture arm64
    apt-get -o DPkg::Lock::Timeout=900 update -qq
fi

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    # Several checkouts may install at once: wait for the package lock instead of failing.
    apt-get -o DPkg::Lock::Timeout=900 update -qq
    apt-get -o DPkg::Lock::Timeout=900 install -y -qq "${missing[@]}" >/dev/null
fi

"$(dirname "$0")/fetch-libdeflate.sh"
