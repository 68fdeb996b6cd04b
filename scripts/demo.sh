#!/usr/bin/env bash
# Sets up, builds, and runs the demo: the live run draws the order process of
# examples/order.txt, typed step by step into a new sheet inside an office
# with the extension, and saves out/order.ods, out/order.xlsx and out/order.png.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
mkdir -p out
build/cli/nivarel draw examples/order.txt -o out/order.ods -o out/order.xlsx --png out/order.png
