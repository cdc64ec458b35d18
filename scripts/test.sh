#!/usr/bin/env bash
# Builds quill and runs every test. On a fresh machine it first installs what
# is missing. With --full (or CI=true) it also runs the sanitizer builds, the
# timed fuzzers and the differential replay of what they kept.
set -euo pipefail
cd "$(dirname "$0")/.."

full=0
[ "${CI:-}" = "true" ] && full=1
for arg in "$@"; do
  case "$arg" in
    --full) full=1 ;;
    --quick) full=0 ;;
    *) echo "usage: scripts/test.sh [--full|--quick]" >&2; exit 2 ;;
  esac
done

bash scripts/install_deps.sh
jobs=$(nproc)

step() { echo; echo "=== $* ==="; }

# The engine's unit suite; the command-line and editor tests run in the dev
# build only. Test programs left unbuilt in a sanitizer build register as
# "<name>_NOT_BUILT" and are skipped there.
unit_targets=(quill quill_common_tests quill_format_tests quill_lint_tests quill_highlight_tests
              quill_abi_tests quill_robustness_tests quill_concurrency_tests quill_digest_tests)
not_unit='^cli\.|^lsp_|^package\.|installed_package|header_c_program|exported_symbols|_NOT_BUILT$'


step "dev build and tests"
cmake --preset dev >/dev/null
cmake --build --preset dev -j "$jobs"
ctest --preset dev -j "$jobs"

if [ "$full" = 1 ]; then
  step "AddressSanitizer + UndefinedBehaviorSanitizer (unit suite, leaks included)"
  cmake --preset asan >/dev/null
  cmake --build --preset asan -j "$jobs" --target "${unit_targets[@]}"
  ASAN_OPTIONS=detect_leaks=1 ctest --preset asan -j "$jobs" -E "$not_unit"

  step "ThreadSanitizer"
  cmake --preset tsan >/dev/null
  cmake --build --preset tsan -j "$jobs" --target quill quill_concurrency_tests quill_abi_tests \
    quill_lint_tests quill_highlight_tests
  ctest --preset tsan -j "$jobs" -R 'Concurrency' -E "$not_unit"

  if [ -f fuzz/CMakeLists.txt ]; then
    step "fuzzing"
    cmake --preset fuzz >/dev/null
    cmake --build --preset fuzz -j "$jobs"
    bash fuzz/run_fuzzers.sh build/fuzz "${QUILL_FUZZ_SECONDS:-60}"

    step "differential replay: fuzzer inputs, corpus and mutations against the Python models"
    python3 tools/crosscheck/replay.py --lib build/dev/core_engine/libquill.so \
      --fuzz-corpus build/fuzz/fuzz-work/corpus-format --fuzz-corpus build/fuzz/fuzz-work/corpus-lint \
      --fuzz-corpus build/fuzz/fuzz-work/corpus-highlight
  fi
fi
