#include <gtest/gtest.h>
#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>
#endif

#include <chrono>
#include <filesystem>
#include <future>
#include <string>

#include "processes/barren_folder.h"
#include "processes/expect_error.h"
#include "processes/partner_host.h"

namespace korvixsdk::test {
namespace {

constexpr char kNoFolder[] = "Failed to create fallback device id directory";
constexpr char kNotOpened[] = "Failed to write fallback device id";
constexpr char kNotWritten[] = "Failed to persist fallback device id";

TEST(FallbackIdFile, FailsWhereFileStandsInPlaceOfItsFolder) {
  const TempFolder folder;
  WriteBytes(folder.path() / "file", "x");
  FileHost host(folder.Entry("cache"), Join(folder.Entry("file"), "id"));
  ExpectNoId(host, kNoFolder);
}

TEST(FallbackIdFile, FailsWhereFolderStandsInItsPlace) {
  const TempFolder folder;
  std::filesystem::create_directory(folder.path() / "id");
  FileHost host(folder.Entry("cache"), folder.Entry("id"));
  ExpectNoId(host, kNotOpened);
}

TEST(FallbackIdFile, FailsWhereNothingCanBeCreated) {
  if (!std::filesystem::exists(kBarrenFolder)) GTEST_SKIP() << "no " << kBarrenFolder;
  const TempFolder folder;
  FileHost host(folder.Entry("cache"), Join(kBarrenFolder, "korvixsdk-id"));
  ExpectNoId(host, kNotOpened);
}

TEST(FallbackIdFile, FailsWhereItsFolderCannotBeCreated) {
  if (!std::filesystem::exists(kBarrenFolder)) GTEST_SKIP() << "no " << kBarrenFolder;
  const TempFolder folder;
  FileHost host(folder.Entry("cache"), Join(Join(kBarrenFolder, "korvixsdk"), "id"));
  ExpectNoId(host, kNoFolder);
}

TEST(FallbackIdFile, FailsForNameLongerThanTheSystemTakes) {
  const TempFolder folder;
  FileHost file(folder.Entry("cache"), folder.Entry(std::string(300, 'n')));
  ExpectNoId(file, kNotOpened);
  FileHost below(folder.Entry("cache"), Join(folder.Entry(std::string(300, 'n')), "id"));
  ExpectNoId(below, kNoFolder);
}

TEST(FallbackIdFile, FailsForPathLongerThanTheSystemTakes) {
  const TempFolder folder;
  FileHost file(folder.Entry("cache"), folder.Entry(std::string(40000, 'n')));
  ExpectNoId(file, kNotOpened);
  FileHost below(folder.Entry("cache"), Join(folder.Entry(std::string(40000, 'n')), "id"));
  ExpectNoId(below, kNoFolder);
}

TEST(FallbackIdFile, FailsOnFullDisk) {
  const TempFolder folder;
#ifdef _WIN32
  // Wine shows Linux's file that opens, holds nothing and takes no text.
  const std::string path = "Z:\\proc\\self\\clear_refs";
  if (!std::filesystem::exists(path)) GTEST_SKIP() << "no file that takes no text";
#else
  std::filesystem::create_symlink("/dev/full", folder.path() / "id");
  const std::string path = folder.Entry("id");
#endif
  FileHost host(folder.Entry("cache"), path);
  ExpectNoId(host, kNotWritten);
}

/// A host of its own fails to write to `path`. One that waits there for ever is killed.
void ExpectNotOpenedAtOnce(const std::string& path) {
  SCOPED_TRACE(path);
  const TempFolder folder;
  PartnerHost host(folder.text(), path, "mock://package-ok");
  host.Begin();
  std::future<std::string> answer = std::async(std::launch::async, [&] { return host.End(); });
  if (answer.wait_for(std::chrono::minutes(1)) != std::future_status::ready) host.Kill();
  EXPECT_EQ(answer.get(), "failed: 11 0 " + std::string(kNotOpened));
}

#ifdef _WIN32
TEST(FallbackIdFile, IsNoDevice) {
  const TempFolder folder;
  for (const std::string name : {"NUL", "nul", "CON", "CONIN$", "CONOUT$", "AUX", "PRN", "COM1",
                                 "COM7", "LPT1", "\\\\.\\COM7", "\\\\.\\NUL", "\\\\?\\NUL"}) {
    ExpectNotOpenedAtOnce(name);
  }
  ExpectNotOpenedAtOnce(folder.Entry("NUL"));
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(FallbackIdFile, IsNoPipeNorConnectsToOne) {
  const std::string name = "pipe\\korvixsdk-" + std::to_string(GetCurrentProcessId());
  const HANDLE pipe = CreateNamedPipeA(("\\\\.\\" + name).c_str(), PIPE_ACCESS_DUPLEX,
                                       PIPE_TYPE_BYTE | PIPE_NOWAIT, 1, 0, 0, 0, nullptr);
  ASSERT_NE(pipe, INVALID_HANDLE_VALUE);
  for (const std::string prefix : {"\\\\.\\", "\\\\?\\", "//./"}) {
    ExpectNotOpenedAtOnce(prefix + name);
    EXPECT_FALSE(ConnectNamedPipe(pipe, nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PIPE_LISTENING}) << "somebody connected";
  }
  CloseHandle(pipe);
}

TEST(FallbackIdFile, MayBeNamedInTheWaysOfDevices) {
  const TempFolder folder;
  for (const std::string prefix : {"\\\\.\\", "\\\\?\\"}) {
    std::filesystem::remove(folder.path() / "id");
    FileHost host(folder.Entry("cache"), prefix + folder.Entry("id"));
    const Result<std::string> id = host.GetDeviceId();
    EXPECT_TRUE(IsFallbackId(id.value)) << id.error.message;
    EXPECT_EQ(FileBytes(folder.path() / "id"), id.value);
    EXPECT_EQ(host.GetDeviceId().value, id.value);
  }
}
#else
TEST(FallbackIdFile, IsNoPipeThatNobodyReads) {
  const TempFolder folder;
  ASSERT_EQ(mkfifo((folder.path() / "id").c_str(), 0600), 0);
  ExpectNotOpenedAtOnce(folder.Entry("id"));
}

TEST(FallbackIdFile, IsNoTerminal) {
  const int controller = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  ASSERT_TRUE(grantpt(controller) == 0 && unlockpt(controller) == 0);
  const std::string path = ptsname(controller);
  const int terminal = open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  ASSERT_EQ(tcflow(terminal, TCOOFF), 0) << "a stopped terminal takes nothing";
  ExpectNotOpenedAtOnce(path);
  close(terminal);
  close(controller);
}
#endif

TEST(FallbackIdFile, IsWrittenOnceTheObstacleIsGone) {
  const TempFolder folder;
  std::filesystem::create_directory(folder.path() / "id");
  FileHost host(folder.Entry("cache"), folder.Entry("id"));
  ExpectNoId(host, kNotOpened);
  std::filesystem::remove(folder.path() / "id");
  const Result<std::string> id = host.GetDeviceId();
  EXPECT_TRUE(IsFallbackId(id.value)) << id.error.message;
  EXPECT_EQ(FileBytes(folder.path() / "id"), id.value);
  EXPECT_EQ(host.GetLastError(), "");
}

}  // namespace
}  // namespace korvixsdk::test
