// --report: looks on while a run goes, and tells afterwards what it did.
#pragma once

#include <chrono>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "report/report.h"

namespace ostrel {

/// Hears the messages and sees the steps of one run, from its making on. The only one at a time.
class RunRecorder {
 public:
  RunRecorder();
  RunRecorder(const RunRecorder&) = delete;
  RunRecorder& operator=(const RunRecorder&) = delete;
  ~RunRecorder();

  /// A step is done; the time since the one before is its own.
  void step(std::string_view name, const Design& design);

  /// Writes the report where the options say, "-" being a table on standard error. A warning names
  /// a file that can't be written, or that is one of those `kept` which the run read or wrote.
  void write(const std::vector<std::string>& words, int exitCode,
             std::span<const std::string> kept);

 private:
  bool writeFile(std::span<const std::string> kept) const;

  RunReport report_;
  std::chrono::steady_clock::time_point last_;
};

}  // namespace ostrel
