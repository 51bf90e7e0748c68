#include "run/run.h"

#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <span>
#include <system_error>
#include <utility>

#include "fil/clock.h"
#include "fil/console.h"
#include "fil/pla_file.h"
#include "run/command_line.h"
#include "run/heart.h"
#include "run/help.h"
#include "run/host_link.h"
#include "run/log.h"
#include "run/option_files.h"
#include "run/options.h"
#include "run/output_file.h"
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

int failToWrite(const std::string& name) {
  logMessage(toErrorAndLog, "<ERROR> %s: failed to write %s\a\n", toolTag, name.c_str());
  return exitFile;
}

Status readSource(std::istream& input, PlaFile& source) {
  OrderedConsole console(standardConsole());
  return source.read(input, console.streams());
}

/// What a run leaves: its exit code, and whether the file of the output's name is its own, which it
/// is not if it could not be opened, and nobody knows after a fault in writing it.
struct Outcome {
  int exitCode;
  bool hasOutput;
};

/// Reads the input, runs the passes and writes the output, which is empty after a fault.
Outcome optimize(OutputFile& output) {
  const Options& set = options();
  std::ifstream input(set.input);
  if (!input.is_open()) return {failToRead(set.input), true};
  PlaFile source;
  const Status status = readSource(input, source);
  input.close();
  if (status != Status::Ok) {
    logMessage(toErrorAndLog, "<ERROR> %s: failed to read PLA data in %s\a\n", toolTag,
               set.input.c_str());
    return {exitFile, true};
  }
  heartMsg();
  Run run(source);
  if (runPipeline(run) != Status::Ok) return {exitDesign, true};
  const auto content = [&run](std::ostream& stream) { run.target.write(stream); };
  if (!output.write(content)) return {failToWrite(set.output), false};
  return {0, true};
}

/// Opens the output before anything is read.
Outcome runOptimizer() {
  const Options& set = options();
  OutputFile output;
  if (isSameFile(set.output, set.input) || !output.open(set.output)) {
    return {failToWrite(set.output), false};
  }
  return optimize(output);
}

void writePreamble(const std::vector<std::string>& words, std::time_t start) {
  logMessage(toLog, "%s(%s)  %s\n\n", title.data(), buildDate.data(), timeText(start).c_str());
  for (const std::string& word : words) logMessage(toLog, "%s ", word.c_str());
  logMessage(toLog, "\n");
}

int runLogged(const std::vector<std::string>& words, std::time_t start,
              std::span<const std::string> sources) {
  const Options& set = options();
  writePreamble(words, start);
  std::error_code ignored;
  if (!std::filesystem::exists(set.input, ignored)) return failToRead(set.input);
  const auto [exitCode, hasOutput] = runOptimizer();
  const auto seconds = static_cast<long>(std::time(nullptr) - start + 1);
  logMessage(toLog, "%s completed in %ld seconds\n", words.front().c_str(), seconds);
  if (set.percent) {
    writePercentCompanion(hasOutput ? set.output : std::string(), set.percentFile, sources);
  }
  return exitCode;
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
  std::vector<std::string> sources(line.optionFiles.begin(), line.optionFiles.end());
  sources.push_back(options().input);
  std::vector<std::string> kept = sources;
  kept.insert(kept.end(), {options().output, options().percentFile});
  openLog(options().log, options().err, kept);
  if (line.optionFileLevel >= maxOptionFileLevel) {
    logMessage(toLog, "<Warning> %s: only %d levels of nested command line @file were read\n",
               toolTag, maxOptionFileLevel);
  }
  const int result = runLogged(words, start, sources);
  closeLog();
  return result;
}

}  // namespace ostrel
