#ifndef KORVIXSDK_TESTS_SUPPORT_TEMP_FOLDER_H_
#define KORVIXSDK_TESTS_SUPPORT_TEMP_FOLDER_H_

#include <filesystem>
#include <string>

namespace korvixsdk::test {

/// A new empty folder with an ASCII path, removed with all it holds at the end.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  /// The folder's path as narrow text.
  std::string text() const { return path_.string(); }
  /// The path of an entry as narrow text, joined with the platform's separator.
  std::string Entry(const std::string& name) const;

 private:
  std::filesystem::path path_;
};

/// The bytes of a file; a failure of the test when there is none.
std::string FileBytes(const std::filesystem::path& path);
void WriteBytes(const std::filesystem::path& path, const std::string& bytes);

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_SUPPORT_TEMP_FOLDER_H_
