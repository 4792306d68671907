// benchmark_main supplies main(); each Bench*.cpp of this folder registers its cases.
#include <benchmark/benchmark.h>
