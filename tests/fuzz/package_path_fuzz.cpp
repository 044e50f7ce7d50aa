// The package's name and path against their rules, written once more.
// Input: cache directory, download address.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "fuzz/fields.h"
#include "update/package_path.h"

namespace korvixsdk::test {
namespace {

std::string ExpectedName(const std::string& url) {
  bool slash_seen = false;
  bool question_mark_seen = false;
  std::string name;
  for (const char c : url) {
    if (c == '/') {
      slash_seen = true;
      question_mark_seen = false;
      name.clear();
    } else if (c == '?') {
      question_mark_seen = true;
    } else if (!question_mark_seen) {
      name += c;
    }
  }
  return slash_seen && !name.empty() ? name : "update_package.bin";
}

#ifdef _WIN32
/// Drives, roots and characters outside the code page have rules of their own, which are the
/// system's and not repeated here.
bool IsPlain(const std::string& text) {
  for (const char c : text) {
    if (c < ' ' || c > '~' || c == ':' || c == '\\') return false;
  }
  return text.compare(0, 2, "//") != 0;
}

constexpr char kSeparator = '\\';
#else
bool IsPlain(const std::string&) { return true; }

constexpr char kSeparator = '/';
#endif

/// `name` holds no slash.
std::string Joined(const std::string& folder, const std::string& name) {
  const bool is_path = (folder + name).find('\0') == std::string::npos;
  if (is_path && (folder.empty() || folder.back() == '/')) return folder + name;
  return folder + kSeparator + name;
}

}  // namespace
}  // namespace korvixsdk::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace korvixsdk;
  using namespace korvixsdk::test;
  const std::vector<std::string> fields = SplitExactly(data, size, 2);
  const std::string& cache = fields[0];
  const std::string& url = fields[1];
  const std::string name = ExpectedName(url);
  Check(PackageFileName(url) == name, "the file's name");
  const std::string folder = PackageDirectory(cache);
  const std::string path = PackagePath(cache, url);
  if (IsPlain(cache)) Check(folder == Joined(cache, "updates"), "the folder");
  if (IsPlain(cache) && IsPlain(name)) Check(path == Joined(folder, name), "the path");
  return 0;
}
