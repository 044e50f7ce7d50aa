#include <benchmark/benchmark.h>

#include "benches.h"

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  speed::RegisterReader();
  speed::RegisterLookup();
  speed::RegisterSha256();
  speed::RegisterDeviceId();
  speed::RegisterVersions();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
