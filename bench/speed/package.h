#ifndef KORVIXSDK_BENCH_SPEED_PACKAGE_H_
#define KORVIXSDK_BENCH_SPEED_PACKAGE_H_

#include <cstddef>
#include <string>

namespace speed {

/// What has to be done with a package, by hand: libcurl into a text that was reserved beforehand,
/// one write, one digest. Answers the digest in hexadecimal.
std::string PrepareByHand(const std::string& url, std::size_t size, const std::string& path);

}  // namespace speed

#endif  // KORVIXSDK_BENCH_SPEED_PACKAGE_H_
