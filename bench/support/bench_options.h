// The command line every load benchmark takes: --rows N and --repeat N.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace varnel::bench {

struct BenchOptions {
  int32_t rows = 1000000;
  int repeat = 1;
};

inline BenchOptions ReadBenchOptions(int argc, char** argv, int default_repeat) {
  BenchOptions options;
  options.repeat = default_repeat;
  for (int i = 1; i + 1 < argc; i += 2) {
    if (std::strcmp(argv[i], "--rows") == 0) {
      options.rows = std::atoi(argv[i + 1]);
    } else if (std::strcmp(argv[i], "--repeat") == 0) {
      options.repeat = std::max(1, std::atoi(argv[i + 1]));
    }
  }
  return options;
}

}  // namespace varnel::bench
