#include "run/run.h"

#include <array>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <system_error>

#include "fil/clock.h"
#include "fil/pla_file.h"
#include "run/command_line.h"
#include "run/heart.h"
#include "run/help.h"
#include "run/host_link.h"
#include "run/log.h"
#include "run/option_files.h"
#include "run/options.h"
#include "run/percent_companion.h"
#include "run/pipeline.h"
#include "run/same_file.h"

namespace ostrel {
namespace {

constexpr int exitDesign = 1;
constexpr int exitFile = 2;

int failToRead(const std::string& name) {
  logMessage(toErrorAndLog, "<ERROR> %s: failed to read %s\a\n", toolTag, name.c_str());
  return exitFile;
}

/// Reads the input, runs the passes and writes the output. The output is emptied before the input
/// is opened; on a fault it stays empty.
int runOptimizer() {
  const Options& set = options();
  std::ofstream output;
  if (!isSameFile(set.output, set.input)) output.open(set.output, std::ios::trunc);
  if (!output.is_open()) {
    logMessage(toErrorAndLog, "<ERROR> %s: failed to write %s\a\n", toolTag, set.output.c_str());
    return exitFile;
  }
  std::ifstream input(set.input);
  if (!input.is_open()) return failToRead(set.input);
  PlaFile source;
  const Status status = source.read(input, standardConsole());
  input.close();
  if (status != Status::Ok) {
    logMessage(toErrorAndLog, "<ERROR> %s: failed to read PLA data in %s\a\n", toolTag,
               set.input.c_str());
    return exitFile;
  }
  heartMsg();
  Run run(source);
  if (runPipeline(run) != Status::Ok) return exitDesign;
  run.target.write(output);
  return 0;
}

void writePreamble(const std::vector<std::string>& words, std::time_t start) {
  logMessage(toLog, "%s(%s)  %s\n\n", title.data(), buildDate.data(), timeText(start).c_str());
  for (const std::string& word : words) logMessage(toLog, "%s ", word.c_str());
  logMessage(toLog, "\n");
}

int runLogged(const std::vector<std::string>& words, std::time_t start) {
  const Options& set = options();
  writePreamble(words, start);
  std::error_code ignored;
  if (!std::filesystem::exists(set.input, ignored)) return failToRead(set.input);
  const int result = runOptimizer();
  const auto seconds = static_cast<long>(std::time(nullptr) - start + 1);
  logMessage(toLog, "%s completed in %ld seconds\n", words.front().c_str(), seconds);
  if (set.percent) writePercentCompanion(set.output, set.percentFile, set.input);
  return result;
}

}  // namespace

int runProgram(const std::vector<std::string>& words) {
  const std::time_t start = std::time(nullptr);
  CommandLine line = parseCommandLine(words);
  setOptions(std::move(line.options));
  if (options().gui) {
    linkHost(static_cast<int>(line.result));
  } else {
    setHeartBeat(nullptr);
  }
  if (line.result != ParseResult::Run) {
    printBanner(std::cout, line.result == ParseResult::Help);
    if (line.result == ParseResult::Help) printHelp(std::cout, words.front());
    std::cout.flush();
    return exitFile;
  }
  const std::array kept = {options().input, options().output, options().percentFile};
  openLog(options().log, options().err, kept);
  if (line.optionFileLevel >= maxOptionFileLevel) {
    logMessage(toLog, "<Warning> %s: only %d levels of nested command line @file were read\n",
               toolTag, maxOptionFileLevel);
  }
  const int result = runLogged(words, start);
  closeLog();
  return result;
}

}  // namespace ostrel
