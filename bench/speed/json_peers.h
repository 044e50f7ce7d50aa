#ifndef KORVIXSDK_BENCH_SPEED_JSON_PEERS_H_
#define KORVIXSDK_BENCH_SPEED_JSON_PEERS_H_

#include <string>

#include "network/json_reader.h"

namespace speed {

/// Other libraries' readers doing the strict reader's work: the whole text is checked, the known
/// members of the outermost object are kept. Each keeps its parser from call to call, as its manual
/// advises; one thread only.
korvixsdk::ResponseEnvelope ReadWithRapidJson(const std::string& body);
korvixsdk::ResponseEnvelope ReadWithBoostJson(const std::string& body);

/// Builds a tree first. `body` must have gone through `AddSimdJsonPadding`.
korvixsdk::ResponseEnvelope ReadWithSimdJson(const std::string& body);

/// Gives the body the room behind its end that this reader wants.
void AddSimdJsonPadding(std::string& body);

}  // namespace speed

#endif  // KORVIXSDK_BENCH_SPEED_JSON_PEERS_H_
