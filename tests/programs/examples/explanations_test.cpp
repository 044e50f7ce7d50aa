#include "desktop_host/explanations.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "offer_check/offer_check.h"

namespace desktop_host {
namespace {

using korvixsdk::Error;
using korvixsdk::UpdateInfo;

std::string Sentence(Step step, std::int32_t code) {
  return Explain(step, Error{code, "the library's words"}, "Editor").sentence;
}

TEST(Explanation, KeepsTheLibrarysCodeAndMessageForTheDetails) {
  const Explanation explanation =
      Explain(Step::kCheck, Error{korvixsdk::kNetworkError, "HTTP request failed: x"}, "Editor");
  EXPECT_EQ(explanation.details, "Code 7\nHTTP request failed: x");
  EXPECT_EQ(explanation.sentence.find("HTTP"), std::string::npos);
}

TEST(Explanation, TellsNetworkFailuresOfTheCheckFromThoseOfTheDownload) {
  EXPECT_EQ(Sentence(Step::kCheck, korvixsdk::kNetworkError),
            "The update service could not be reached. Check your internet connection and try again "
            "later.");
  EXPECT_EQ(Sentence(Step::kPrepare, korvixsdk::kNetworkError),
            "The update could not be downloaded. Check your internet connection and try again "
            "later.");
}

TEST(Explanation, TellsWhatToDoWhereTheUpdaterIsMissing) {
  EXPECT_EQ(Sentence(Step::kLaunch, korvixsdk::kNotFound),
            "The program that installs updates is missing. Please install Editor again.");
}

TEST(Explanation, OfARefusedOfferHasASentenceOfItsOwnAndTheReasonInTheDetails) {
  UpdateInfo offer;
  offer.download_url = "https://updates.example.com/NUL";
  const Explanation explanation = Explain(
      Step::kPrepare, offer_check::CheckOffer(offer, {"https://updates.example.com"}), "Editor");
  EXPECT_EQ(explanation.sentence,
            "The update service offers a download that Editor does not trust, so nothing was "
            "downloaded. Try again later.");
  EXPECT_EQ(explanation.details, "Code 51\nThe package's name is that of a device on Windows");
}

TEST(Explanation, DiffersForEveryCodeAtEveryStepThatCanHaveIt) {
  const std::set<std::string> sentences = {Sentence(Step::kStart, korvixsdk::kInvalidArgument),
                                           Sentence(Step::kStart, korvixsdk::kInvalidState),
                                           Sentence(Step::kIdentify, korvixsdk::kPlatformError),
                                           Sentence(Step::kCheck, korvixsdk::kNetworkError),
                                           Sentence(Step::kCheck, korvixsdk::kInvalidResponse),
                                           Sentence(Step::kPrepare, korvixsdk::kInvalidArgument),
                                           Sentence(Step::kPrepare, korvixsdk::kNetworkError),
                                           Sentence(Step::kPrepare, korvixsdk::kHashMismatch),
                                           Sentence(Step::kPrepare, korvixsdk::kFileSystemError),
                                           Sentence(Step::kPrepare, korvixsdk::kPlatformError),
                                           Sentence(Step::kPrepare, offer_check::kOfferRefused),
                                           Sentence(Step::kLaunch, korvixsdk::kInvalidState),
                                           Sentence(Step::kLaunch, korvixsdk::kNotFound)};
  EXPECT_EQ(sentences.size(), 13u);
}

TEST(Explanation, OfAnUnknownCodeIsStillASentence) {
  EXPECT_FALSE(Sentence(Step::kCheck, 4711).empty());
}

TEST(Explanation, OfARejectionCarriesTheServicesWords) {
  const Explanation explanation = ExplainRejection("Licence has expired");
  EXPECT_EQ(explanation.details, "The service's message:\nLicence has expired");
  EXPECT_FALSE(explanation.sentence.empty());
}

TEST(Explanation, OfAMismatchTellsBothDigests) {
  korvixsdk::Result<korvixsdk::PreparedUpdate> prepared;
  prepared.error = {korvixsdk::kHashMismatch, "Downloaded update package sha256 mismatch"};
  prepared.value.expected_sha256 = "aa";
  prepared.value.actual_sha256 = "bb";
  EXPECT_EQ(ExplainMismatch(prepared, "Editor").details,
            "Code 5\nDownloaded update package sha256 mismatch\nAnnounced:\naa\nDownloaded:\nbb");
}

TEST(WhyMandatory, NamesTheOldestSupportedVersionWhereThisOneIsOlder) {
  UpdateInfo offer;
  offer.min_supported_version = "1.10.0";
  EXPECT_EQ(WhyMandatory(offer, "Editor", "1.4.0"),
            "This update is required: versions before 1.10.0 are no longer supported. Until it is "
            "installed, Editor cannot be used.");
}

TEST(WhyMandatory, NamesThePublisherWhereTheServiceSaysSo) {
  UpdateInfo offer;
  offer.min_supported_version = "1.0.0";
  EXPECT_EQ(WhyMandatory(offer, "Editor", "1.4.0"),
            "This update is required: its publisher wants version 1.4.0 replaced. Until it is "
            "installed, Editor cannot be used.");
}

}  // namespace
}  // namespace desktop_host
