#!/usr/bin/env bash
# fuzz.sh [SECONDS] [TARGET...]: builds the libFuzzer targets with clang into
# build-fuzz and runs each (default: all) for SECONDS (default 60), starting
# from its seed corpus under fuzz/corpus/<target>/. New inputs go to
# build-fuzz/corpus/<target>/, crashes to build-fuzz/artifacts/<target>/.
# Exits non-zero when a target crashes or violates what it checks.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-60}
shift || true
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  targets=(query_condition format_value exp_reduced connection_string pg_translator)
fi

# clang 15 or later: the engine uses std::source_location, which libstdc++
# offers to clang only from 15 on.
cc=${FUZZ_CC:-clang-15}
cxx=${FUZZ_CXX:-clang++-15}
flags="-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
CC=$cc CXX=$cxx cmake -S "$root" -B "$root/build-fuzz" -G Ninja \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVARNEL_FUZZ=ON -DVARNEL_BUILD_TESTS=OFF \
  -DVARNEL_BUILD_BENCH=OFF -DVARNEL_BUILD_APPS=OFF \
  -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" >/dev/null
cmake --build "$root/build-fuzz" -j "$(nproc)" --target "${targets[@]/#/fuzz_}"

export ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
status=0
for target in "${targets[@]}"; do
  work="$root/build-fuzz/corpus/$target"
  artifacts="$root/build-fuzz/artifacts/$target"
  mkdir -p "$work" "$artifacts"
  echo "== fuzz_$target for ${seconds}s"
  if ! "$root/build-fuzz/fuzz/fuzz_$target" -max_total_time="$seconds" -print_final_stats=1 \
      -artifact_prefix="$artifacts/" "$work" "$root/fuzz/corpus/$target" \
      >"$root/build-fuzz/fuzz_$target.log" 2>&1; then
    echo "fuzz_$target FAILED: see build-fuzz/fuzz_$target.log and $artifacts/"
    tail -n 40 "$root/build-fuzz/fuzz_$target.log"
    status=1
  else
    grep -E "^stat::number_of_executed_units|^stat::new_units_added" \
      "$root/build-fuzz/fuzz_$target.log" || true
  fi
done
exit $status
