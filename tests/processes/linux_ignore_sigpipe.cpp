#include <signal.h>

/// As a host with several threads does: libcurl ignores and restores the signal around every
/// transfer, for the whole process.
[[maybe_unused]] static const auto action_before = signal(SIGPIPE, SIG_IGN);
