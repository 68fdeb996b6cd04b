#!/usr/bin/env bash
# Sets up, builds, and runs the demo: a headless office with the extension
# draws a small flowchart and saves it as out/demo.ods and out/demo.xlsx.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
build/cli/nivarel demo out
