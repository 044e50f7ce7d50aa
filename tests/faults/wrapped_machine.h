#ifndef KORVIXSDK_TESTS_FAULTS_WRAPPED_MACHINE_H_
#define KORVIXSDK_TESTS_FAULTS_WRAPPED_MACHINE_H_

#include <optional>
#include <string>
#include <vector>

namespace korvixsdk::test {

/// What the system says of the machine, and what it was asked to start.
struct WrappedMachine {
  /// Text that the system answers in place of the real property.
  std::optional<std::string> machine_guid;
  std::optional<std::string> computer_name;
  /// Answers of the C runtime's code page query (Windows).
  std::optional<unsigned int> locale_code_page;
  /// Attributes that every file and folder has besides its own, until it is opened (Windows).
  unsigned long added_attributes = 0;
  /// The error with which every folder fails to be looked at, or to be created without being tried,
  /// and the folders that were to be created (Windows).
  std::optional<unsigned long> folder_query_error;
  std::optional<unsigned long> folder_creation_error;
  std::vector<std::wstring> folders_to_create;
  /// Processes are not started but recorded, as program and argument or as command line.
  bool record_processes = false;
  std::vector<std::string> processes;
};

/// The one record; tests begin with `wrapped_machine = {}`.
extern WrappedMachine wrapped_machine;

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_FAULTS_WRAPPED_MACHINE_H_
