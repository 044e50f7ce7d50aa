// Runs a harness on kept inputs, without a fuzzer: replay FOLDER...

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> FilesIn(const char* folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::vector<std::uint8_t> ReadFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  stream.exceptions(std::ios::badbit | std::ios::failbit);
  stream.peek();  // fails for a file that cannot be read, not for an empty one
  stream.exceptions(std::ios::badbit);
  return {std::istreambuf_iterator<char>(stream), {}};
}

int Replay(int folder_count, char** folders) {
  int replayed = 0;
  for (int i = 0; i < folder_count; ++i) {
    for (const std::filesystem::path& file : FilesIn(folders[i])) {
      // Printed first: a check that does not hold ends the program.
      std::printf("%s\n", file.string().c_str());
      std::fflush(stdout);
      const std::vector<std::uint8_t> input = ReadFile(file);
      LLVMFuzzerTestOneInput(input.data(), input.size());
      ++replayed;
    }
  }
  std::printf("%d inputs replayed\n", replayed);
  return replayed > 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Replay(argc - 1, argv + 1);
  } catch (const std::exception& exception) {
    std::fprintf(stderr, "replay: %s\n", exception.what());
    return 1;
  }
}
