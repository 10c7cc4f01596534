#!/usr/bin/env bash
# Installs what is missing, builds kvxml in Release and runs the sample program.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release -DKVXML_BUILD_TESTS=OFF -DKVXML_BUILD_FUZZERS=OFF >/dev/null
cmake --build build/release -j"$(nproc)" >/dev/null
./build/release/examples/product_demo
