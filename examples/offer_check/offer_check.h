#ifndef KORVIXSDK_EXAMPLES_OFFER_CHECK_OFFER_CHECK_H_
#define KORVIXSDK_EXAMPLES_OFFER_CHECK_OFFER_CHECK_H_

// To copy into a host, with offer_check.cpp: a look at an offer before `PrepareUpdate` acts on it.

#include <korvixsdk/error.h>
#include <korvixsdk/update_info.h>

#include <cstdint>
#include <string>
#include <vector>

namespace offer_check {

/// A code of this host's own; no operation of the library answers with it by itself.
constexpr std::int32_t kOfferRefused = 51;

/// The longest name of a package; with it a path on Windows has room for a cache folder.
constexpr std::size_t kLongestName = 120;

/// Whether `PrepareUpdate` may be called with this offer: it then fetches from where the host
/// wants packages from, writes `cache_dir`/updates/`PackageName` and no other file, on Windows as
/// on Linux, and compares a digest.
///
/// \param trusted  addresses; a package's address must have the scheme, the host and the port of
///   one of them. The host is compared without regard to capitals and the rest as it stands, so a
///   port that only one of the two spells out makes another origin. What follows does not count:
///   on a server with several tenants an offer may name another's package. An address of the
///   library's mock mode is allowed where its first part is listed, such as "mock://package-ok",
///   and plain HTTP where an "http:" address is.
/// \return code 0, or `kOfferRefused` and a fixed text that says what is wrong. Nothing of the
///   offer stands in the text.
/// Throws nothing whatever the offer holds, short of memory running out. Does not block, touches no
/// disk. Any thread.
korvixsdk::Error CheckOffer(const korvixsdk::UpdateInfo& offer,
                            const std::vector<std::string>& trusted);

/// The name that the library's own package service gives the file of this address: what follows
/// the last slash of the whole address, up to a question mark, or "update_package.bin".
std::string PackageName(const std::string& address);

}  // namespace offer_check

#endif  // KORVIXSDK_EXAMPLES_OFFER_CHECK_OFFER_CHECK_H_
