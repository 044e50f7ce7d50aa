#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <thread>

#include "host/hostile_service.h"
#include "support/host_config.h"
#include "support/linux_own_mounts.h"
#include "support/temp_folder.h"

namespace korvixsdk::test {
namespace {

constexpr char kNameServer[] = "127.0.0.53";
constexpr char kName[] = "updates.example";
constexpr std::size_t kHeaderLength = 12;

/// The reply to a question for `kName`: 127.0.0.1, and no address of the other family.
std::string Answer(std::string question) {
  const std::size_t type = kHeaderLength + sizeof(kName) + 1;  // behind two labels and their end
  if (question.size() < type + 4) return {};
  question[2] = '\x81';  // a response
  question[3] = '\x80';  // and no error
  const bool asks_for_ipv4 = question[type] == '\0' && question[type + 1] == '\1';
  if (!asks_for_ipv4) return question;
  question[7] = '\1';  // one answer: the question's name, A, IN, no second to live
  return question + std::string("\xC0\x0C\0\1\0\1\0\0\0\0\0\4\x7F\0\0\1", 16);
}

/// Takes questions at `kNameServer`, and answers them if it is told to.
class NameServer {
 public:
  explicit NameServer(bool answers) : socket_(socket(AF_INET, SOCK_DGRAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(53);
    inet_pton(AF_INET, kNameServer, &address.sin_addr);
    EXPECT_EQ(bind(socket_, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    thread_ = std::thread([this, answers] { Run(answers); });
  }
  ~NameServer() {
    stopping_ = true;
    thread_.join();
    close(socket_);
  }
  NameServer(const NameServer&) = delete;
  NameServer& operator=(const NameServer&) = delete;

  int questions() const { return questions_; }

 private:
  void Run(bool answers) {
    while (!stopping_) {
      pollfd readable{socket_, POLLIN, 0};
      if (poll(&readable, 1, 50) == 1) TakeQuestion(answers);
    }
  }

  void TakeQuestion(bool answers) {
    char bytes[512];
    sockaddr_in client{};
    socklen_t length = sizeof(client);
    auto* const from = reinterpret_cast<sockaddr*>(&client);
    const ssize_t size = recvfrom(socket_, bytes, sizeof(bytes), 0, from, &length);
    if (size <= 0) return;
    ++questions_;
    if (!answers) return;
    const std::string answer = Answer(std::string(bytes, static_cast<std::size_t>(size)));
    sendto(socket_, answer.data(), answer.size(), 0, from, length);
  }

  const int socket_;
  std::atomic<bool> stopping_{false};
  std::atomic<int> questions_{0};
  std::thread thread_;
};

/// A machine that asks `kNameServer` only, and waits this long for an answer about each name. A
/// name that is not found is asked for once more, within the machine's own domain.
void BecomeMachineThatWaits(std::chrono::seconds timeout, const TempFolder& folder) {
  EnterOwnNetwork();
  WriteBytes(folder.path() / "resolv.conf", std::string("nameserver ") + kNameServer +
                                                "\nsearch example.net\noptions timeout:" +
                                                std::to_string(timeout.count()) + " attempts:1\n");
  WriteBytes(folder.path() / "nsswitch.conf", "hosts: dns\n");
  MountFile(folder.Entry("resolv.conf"), "/etc/resolv.conf");
  MountFile(folder.Entry("nsswitch.conf"), "/etc/nsswitch.conf");
}

/// The host's service, by its name.
class HostOfNamedService {
 public:
  HostOfNamedService() : server_(Script::Response(200, kSoundBody)) {
    EXPECT_TRUE(sdk.Init(HostConfig(folder_, Address())).ok());
  }
  UpdateInfo Offer() const { return OfferAt(Address()); }

  KorvixSDK sdk;

 private:
  std::string Address() const {
    const std::string by_number = server_.address();
    return std::string("http://") + kName + by_number.substr(by_number.rfind(':'));
  }

  TempFolder folder_;
  ScriptedServer server_;
};

template <typename Operation>
double SecondsOf(const Operation& operation) {
  const auto start = std::chrono::steady_clock::now();
  operation();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void ExpectToPassWithOwnMounts(const std::function<void()>& steps) {
  const MountedRun run = RunWithOwnMounts(steps);
  if (run == MountedRun::kNotAllowed) GTEST_SKIP() << "this process may not mount anything";
  EXPECT_EQ(run, MountedRun::kPassed);
}

// libcurl gives up in time, and then waits for its thread, which waits for the system's resolver.

TEST(SlowNameServers, ThatNeverAnswerHoldAnUpdateCheckBeyondTwentySeconds) {
  const TempFolder folder;
  ExpectToPassWithOwnMounts([&] {
    BecomeMachineThatWaits(std::chrono::seconds(13), folder);
    const NameServer server(false);
    HostOfNamedService host;
    Result<UpdateInfo> check;
    const double seconds = SecondsOf([&] { check = host.sdk.CheckForUpdate(); });
    EXPECT_EQ(check.error.code, kNetworkError);
    EXPECT_EQ(check.error.message,
              std::string("HTTP request failed: ") + curl_easy_strerror(CURLE_OPERATION_TIMEDOUT));
    EXPECT_GT(seconds, 25);
    EXPECT_LT(seconds, 45);
    EXPECT_GE(server.questions(), 2);
  });
}

TEST(SlowNameServers, ThatNeverAnswerHoldADownloadBeyondThirtySeconds) {
  const TempFolder folder;
  ExpectToPassWithOwnMounts([&] {
    BecomeMachineThatWaits(std::chrono::seconds(18), folder);
    const NameServer server(false);
    HostOfNamedService host;
    Result<PreparedUpdate> prepared;
    const double seconds = SecondsOf([&] { prepared = host.sdk.PrepareUpdate(host.Offer()); });
    EXPECT_EQ(prepared.error.code, kNetworkError);
    EXPECT_EQ(prepared.error.message, std::string("Update download failed: ") +
                                          curl_easy_strerror(CURLE_OPERATION_TIMEDOUT));
    EXPECT_GT(seconds, 35);
    EXPECT_LT(seconds, 60);
    EXPECT_GE(server.questions(), 2);
  });
}

TEST(NameServers, ThatAnswerHoldNothing) {
  const TempFolder folder;
  ExpectToPassWithOwnMounts([&] {
    BecomeMachineThatWaits(std::chrono::seconds(18), folder);
    const NameServer server(true);
    HostOfNamedService host;
    const double seconds = SecondsOf([&] {
      const Result<UpdateInfo> check = host.sdk.CheckForUpdate();
      EXPECT_TRUE(check.value.has_update) << check.error.message;
      const Result<PreparedUpdate> prepared = host.sdk.PrepareUpdate(host.Offer());
      EXPECT_TRUE(prepared.ok()) << prepared.error.message;
    });
    EXPECT_LT(seconds, 10);
    EXPECT_GE(server.questions(), 2);
  });
}

}  // namespace
}  // namespace korvixsdk::test
