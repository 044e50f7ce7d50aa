#include "programs/doctor/examination.h"

#include <gtest/gtest.h>

#include <optional>
#include <sstream>

#include "doctor/doctor.h"
#include "doctor/options.h"

namespace korvixsdk::test {
namespace {

constexpr char kPackageDigest[] =
    "25967fb5be05c8fdc451e754115e0e99fe165398e585b480b59a5c69428b1e16";

}  // namespace

nlohmann::json Examination::Line(const std::string& id) const {
  for (const nlohmann::json& line : lines) {
    if (line.at("id") == id) return line;
  }
  ADD_FAILURE() << "there is no line " << id;
  return {{"status", ""}, {"reason", ""}, {"remedy", ""}, {"milliseconds", nullptr}};
}

Examination Examine(const TempFolder& folder, const std::string& address,
                    const std::vector<std::string>& options) {
  std::vector<std::string> arguments = {"korvix-doctor",
                                        "--product",
                                        "editor",
                                        "--version",
                                        "1.4.0",
                                        "--cache",
                                        folder.Entry("cache"),
                                        "--server",
                                        address,
                                        "--fallback-id",
                                        folder.Entry("device-id"),
                                        "--json"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  std::vector<char*> texts;
  for (std::string& argument : arguments) texts.push_back(argument.data());

  Examination examination;
  const std::optional<doctor::Options> read =
      doctor::ReadOptions(static_cast<int>(texts.size()), texts.data(), &examination.exit_status);
  if (!read) {
    ADD_FAILURE() << "the command line was not taken";
    return examination;
  }
  std::ostringstream out;
  examination.exit_status = doctor::Run(*read, out);
  examination.report = nlohmann::json::parse(out.str());
  examination.lines = examination.report.at("checks");
  return examination;
}

std::string UpdateReply(const std::string& download_url, const std::string& version) {
  const nlohmann::json reply = {{"code", 400},
                                {"version", version},
                                {"download_url", download_url},
                                {"sha256", kPackageDigest}};
  return reply.dump();
}

Service::Service(const std::string& address)
    : install(Script::Response(200, R"({"code":400,"allowed":true,"msg":"Welcome"})")),
      update(Script::Response(200, UpdateReply(address + "/editor.pkg"))),
      package(Script::Response(200, kPackage)) {}

std::vector<Script> Service::scripts() const {
  return {install, install, install, update, update, package, package};
}

}  // namespace korvixsdk::test
