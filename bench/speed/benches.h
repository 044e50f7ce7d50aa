#ifndef KORVIXSDK_BENCH_SPEED_BENCHES_H_
#define KORVIXSDK_BENCH_SPEED_BENCHES_H_

namespace speed {

/// Each checks that the library and its peers answer alike, then registers what is to be measured,
/// as "WHAT/ours/CASE" and "WHAT/PEER/CASE". bench/report knows these names.
void RegisterReader();
void RegisterLookup();
void RegisterSha256();
void RegisterDeviceId();
void RegisterVersions();

}  // namespace speed

#endif  // KORVIXSDK_BENCH_SPEED_BENCHES_H_
