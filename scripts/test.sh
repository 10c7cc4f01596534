#!/usr/bin/env bash
# Builds and runs the whole suite twice: plain (gcc), then under ASan+UBSan.
# With clang present the sanitized build uses clang and also links the fuzz
# targets with libFuzzer, which then run for a few seconds each; a third,
# small build runs the multi-threaded suites under ThreadSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh

jobs=$(nproc)
fuzz_seconds=${KVXML_FUZZ_SECONDS:-3}
passed=0
log=$(mktemp)
trap 'rm -f "$log"' EXIT

run_suite() {  # build-dir, cmake options... (KVXML_TARGET: build only those targets)
  local dir=$1; shift
  cmake -S . -B "$dir" "$@" >/dev/null
  # shellcheck disable=SC2086 # KVXML_TARGET may name several targets
  cmake --build "$dir" -j"$jobs" ${KVXML_TARGET:+--target $KVXML_TARGET}
  ctest --test-dir "$dir" --output-on-failure -j"$jobs" | tee "$log"
  local n
  n=$(sed -n 's/.*tests passed, 0 tests failed out of \([0-9]*\).*/\1/p' "$log" | tail -n 1)
  passed=$((passed + ${n:-0}))
}

echo "== plain build =="
run_suite build/test -DCMAKE_BUILD_TYPE=Release

echo "== AddressSanitizer + UndefinedBehaviorSanitizer =="
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
if command -v clang++ >/dev/null; then
  run_suite build/sanitize -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++ \
    -DKVXML_SANITIZE=ON -DKVXML_FUZZ_LIBFUZZER=ON
  if [[ "$fuzz_seconds" -gt 0 ]]; then
    echo "== fuzzing, ${fuzz_seconds}s a target =="
    for fuzzer in build/sanitize/fuzz/*_fuzzer; do
      name=$(basename "$fuzzer" _fuzzer)
      work=build/sanitize/corpus-work/$name
      mkdir -p "$work"
      if ! "$fuzzer" -max_total_time="$fuzz_seconds" -print_final_stats=0 "$work" "fuzz/corpus/$name" \
           >"$log" 2>&1; then
        tail -n 60 "$log"
        echo "fuzz target $name failed"
        exit 1
      fi
      echo "fuzz target $name: clean"
      passed=$((passed + 1))
    done
  fi
else
  run_suite build/sanitize -DCMAKE_BUILD_TYPE=Debug -DKVXML_SANITIZE=ON
fi

if command -v clang++ >/dev/null; then
  echo "== ThreadSanitizer, multi-threaded suites =="
  export TSAN_OPTIONS=halt_on_error=1
  KVXML_TARGET="kvxml_thread_tests kvxml-cli" run_suite build/tsan -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_COMPILER=clang++ -DKVXML_SANITIZE_THREAD=ON -DKVXML_BUILD_FUZZERS=OFF \
    -DKVXML_BUILD_EXAMPLES=OFF -DKVXML_INSTALL=OFF
fi

echo "all: ${passed} passed, 0 failed"
