#include "doctor/doctor.h"

#include "doctor/checklist.h"
#include "doctor/machine_checks.h"
#include "doctor/package_checks.h"
#include "doctor/print.h"
#include "doctor/service_checks.h"
#include "doctor/subject.h"

namespace doctor {

int Run(const Options& options, std::ostream& out) {
  Subject subject(options);
  Checklist checklist;
  CheckMachine(subject, checklist);
  CheckPackage(subject, CheckService(subject, checklist), checklist);
  if (options.json) {
    PrintJson(options, checklist.checks(), out);
  } else {
    PrintText(checklist.checks(), out);
  }
  return WorstOf(checklist.checks()) == Status::kFail ? kSomethingFailed : 0;
}

}  // namespace doctor
