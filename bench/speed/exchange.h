#ifndef KORVIXSDK_BENCH_SPEED_EXCHANGE_H_
#define KORVIXSDK_BENCH_SPEED_EXCHANGE_H_

#include <korvixsdk/korvixsdk.h>

#include <string>

namespace speed {

/// A host of the shipped library, ready to call.
class Host {
 public:
  /// \param server the service's address
  /// \param folder for the package cache
  Host(const std::string& server, const std::string& folder);

  korvixsdk::KorvixSDK& sdk() { return sdk_; }
  /// What the service is asked, spelled out as the library spells it.
  const std::string& update_url() const { return update_url_; }
  const std::string& install_url() const { return install_url_; }

  /// Whole operations, which end the program when they fail.
  korvixsdk::UpdateInfo Check();
  korvixsdk::ServerResult Report();
  /// What both do before and with their exchange, by hand: the machine is asked who it is, three
  /// values are escaped, and the reply is fetched, of which nothing is made.
  std::string CheckByHand() const;
  std::string ReportByHand() const;

 private:
  korvixsdk::KorvixSDK sdk_;
  std::string server_;
  std::string device_id_;
  std::string update_url_;
  std::string install_url_;
};

/// The same request by hand: bare libcurl with the library's options on a new handle, nothing made
/// of the body.
std::string FetchByHand(const std::string& url);

}  // namespace speed

#endif  // KORVIXSDK_BENCH_SPEED_EXCHANGE_H_
