// exchange_count WHO OPERATION TIMES SERVER FOLDER: the same exchanges, a fixed number of them, for
// an instruction counter. WHO is ours or libcurl, OPERATION is check or report. Under callgrind the
// counts are cut behind each exchange.
#include <valgrind/callgrind.h>

#include <cstdlib>
#include <string>

#include "exchange.h"
#include "require.h"

int main(int argc, char** argv) {
  speed::Require(argc == 6, "usage: exchange_count WHO OPERATION TIMES SERVER FOLDER");
  const bool ours = std::string(argv[1]) == "ours";
  const bool check = std::string(argv[2]) == "check";
  const int times = std::atoi(argv[3]);
  speed::Host host(argv[4], argv[5]);
  for (int done = 0; done < times; ++done) {
    if (!ours) {
      speed::FetchByHand(check ? host.update_url() : host.install_url());
    } else if (check) {
      host.Check();
    } else {
      host.Report();
    }
    CALLGRIND_DUMP_STATS;
  }
  return 0;
}
