#!/usr/bin/env bash
# Sets up, builds, and runs every test (each test binary shares one headless office).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
ctest --test-dir build --output-on-failure --timeout 900
