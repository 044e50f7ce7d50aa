#ifndef KORVIXSDK_TESTS_SUPPORT_CHILD_PROCESS_H_
#define KORVIXSDK_TESTS_SUPPORT_CHILD_PROCESS_H_

#include <memory>
#include <string>
#include <vector>

namespace korvixsdk::test {

/// A program that runs beside the test and speaks with it in lines over its standard streams.
/// Killed, if it still runs, when this object goes.
class ChildProcess {
 public:
  /// The program and its arguments, which hold no double quotes.
  explicit ChildProcess(const std::vector<std::string>& command);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  void WriteLine(const std::string& line);
  /// Waits for a whole line; what there is of it when the program ends before.
  std::string ReadLine();
  /// Waits until the program ends by itself; its exit status, or something above 127 where it
  /// crashed.
  unsigned Wait();
  /// Ends the program at once, wherever it is, and waits until it is gone.
  void Kill();

 private:
  struct System;

  std::unique_ptr<System> system_;
};

}  // namespace korvixsdk::test

#endif  // KORVIXSDK_TESTS_SUPPORT_CHILD_PROCESS_H_
