#ifndef KORVIXSDK_TESTS_FUZZ_FIELDS_H_
#define KORVIXSDK_TESTS_FUZZ_FIELDS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace korvixsdk::test {

/// Cuts an input into at most `most` texts. Its first byte is the separator, so that a text may
/// hold any byte; the last text takes the rest.
inline std::vector<std::string> SplitFields(const std::uint8_t* data, std::size_t size,
                                            std::size_t most) {
  std::vector<std::string> fields(1);
  for (std::size_t i = 1; i < size; ++i) {
    if (data[i] == data[0] && fields.size() < most) {
      fields.emplace_back();
    } else {
      fields.back().push_back(static_cast<char>(data[i]));
    }
  }
  return fields;
}

/// Exactly `count` texts; those that the input lacks are empty.
inline std::vector<std::string> SplitExactly(const std::uint8_t* data, std::size_t size,
                                             std::size_t count) {
  std::vector<std::string> fields = SplitFields(data, size, count);
  fields.resize(count);
  return fields;
}

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_FUZZ_FIELDS_H_
