// What a run did, as a value, and its two forms: JSON for programs and a table for people.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fil/sha256.h"
#include "report/history.h"
#include "report/measure.h"

namespace ostrel {

struct StepTime {
  std::string_view name;
  double seconds = 0;
};

struct RunReport {
  std::string version;
  std::vector<std::string> words;  ///< of the command line, the program's name first
  int exitCode = 0;
  std::optional<FileHash> input;
  std::optional<FileHash> output;
  std::vector<StepTime> steps;
  History history;
  Measure before;  ///< the design as it was read
  Measure after;   ///< as it was written; empty for a run that came to no end
};

/// The words for a role, in JSON and in the table.
std::string_view roleName(Role role);

/// Why a function can go missing in a step.
std::string_view whyGivenUp(std::string_view step);

/// Writes the report as docs/report-schema.json describes it, with the options of the present run.
void writeJson(const RunReport& report, std::ostream& stream);

/// Writes a line for each function, the totals, and what the run told about functions.
void writeTable(const RunReport& report, std::ostream& stream);

}  // namespace ostrel
