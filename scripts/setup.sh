#!/usr/bin/env bash
# Installs what Nivarel needs on Debian 12 (when missing) and builds it with
# both cores. Run as root on a fresh machine; later runs only rebuild.
set -euo pipefail
cd "$(dirname "$0")/.."

# libreoffice-draw brings the office's SVG filter, which `nivarel export` writes .svg pictures with.
packages=(libreoffice-calc libreoffice-draw libreoffice-dev cmake g++ make pkgconf libgtest-dev nlohmann-json3-dev libzip-dev libxml2-dev libgsf-1-dev libpng-dev zip unzip librsvg2-bin fonts-dejavu-core fonts-liberation2)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -q
  apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j2
