#include "run/run.h"

#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <span>
#include <system_error>
#include <utility>

#include "fil/clock.h"
#include "fil/console.h"
#include "fil/pla_reader.h"
#include "fil/pla_writer.h"
#include "run/answers.h"
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
#include "run/progress.h"
#include "run/run_report.h"
#include "run/same_file.h"
#include "run/strict.h"
#include "run/verification.h"

namespace ostrel {
namespace {

constexpr int exitDesign = 1;
constexpr int exitFile = 2;

int failToRead(const std::string& name) {
  error({"failed to read ", name, "\a"});
  return exitFile;
}

int failToWrite(const std::string& name) {
  error({"failed to write ", name, "\a"});
  return exitFile;
}

Status readSource(std::istream& input, PlaFile& source) {
  OrderedConsole console(standardConsole());
  return readPla(input, console.streams(), source);
}

/// What a run leaves: its exit code, and whether the file of the output's name is its own, which it
/// is not if it could not be opened, and nobody knows after a fault in writing it.
struct Outcome {
  int exitCode;
  bool hasOutput;
};

/// Reads the input, runs the passes and writes the output, which is empty after a fault.
Outcome optimize(const std::vector<std::string>& words, const StepWatch& watch,
                 OutputFile& output) {
  const Options& opts = options();
  std::ifstream input(opts.input, std::ios::binary);
  if (!input.is_open()) return {failToRead(opts.input), true};
  PlaFile source;
  const Status status = readSource(input, source);
  input.close();
  if (status != Status::Ok) {
    error({"failed to read PLA data in ", opts.input, "\a"});
    return {exitFile, true};
  }
  heartMsg();
  Run run(source);
  watch("read the input", run.design);
  if (runPipeline(run, lastStep, watch) != Status::Ok) return {exitDesign, true};
  const auto content = [&run](std::ostream& stream) { writePla(run.target, stream, fileDate()); };
  if (opts.verify && !isVerified(words, content)) return {exitDesign, true};
  watch("verify", run.design);
  if (!output.write(content)) return {failToWrite(opts.output), false};
  watch("write the output", run.design);
  return {0, true};
}

/// Opens the output before anything is read.
Outcome runOptimizer(const std::vector<std::string>& words, const StepWatch& watch) {
  const Options& opts = options();
  OutputFile output;
  if (isSameFile(opts.output, opts.input) || !output.open(opts.output)) {
    return {failToWrite(opts.output), false};
  }
  return optimize(words, watch, output);
}

void writePreamble(const std::vector<std::string>& words, std::time_t start) {
  message(toLog, {title, "(", buildDate, ")  ", timeText(start), "\n\n"});
  for (const std::string& word : words) message(toLog, {word, " "});
  logText(toLog, "\n");
}

int runLogged(const std::vector<std::string>& words, std::time_t start,
              std::span<const std::string> sources, const StepWatch& watch) {
  const Options& opts = options();
  writePreamble(words, start);
  std::error_code ignored;
  if (!std::filesystem::exists(opts.input, ignored)) return failToRead(opts.input);
  const auto [exitCode, hasOutput] = runOptimizer(words, watch);
  const auto seconds = static_cast<long>(std::time(nullptr) - start + 1);
  message(toLog, {words.front(), " completed in ", std::to_string(seconds), " seconds\n"});
  if (opts.percent) {
    writePercentCompanion(hasOutput ? opts.output : std::string(), opts.percentFile, sources);
  }
  return exitCode;
}

/// A run on which a report looks.
int runReported(const std::vector<std::string>& words, std::time_t start,
                std::span<const std::string> sources) {
  const Options& opts = options();
  RunRecorder recorder;
  const StepWatch watch = [&recorder](std::string_view step, const Design& design) {
    recorder.step(step, design);
  };
  const int exitCode = runLogged(words, start, sources, watch);
  std::vector<std::string> kept(sources.begin(), sources.end());
  kept.insert(kept.end(), {opts.output, opts.percentFile});
  recorder.write(words, exitCode, kept);
  return exitCode;
}

}  // namespace

int runProgram(const std::vector<std::string>& words) {
  const std::time_t start = std::time(nullptr);
  CommandLine line = parseCommandLine(words);
  setOptions(line.options);
  if (options().gui) {
    linkHost(static_cast<int>(line.result));
  } else {
    setHeartBeat(nullptr);
  }
  if (line.result == ParseResult::Question) return answer(options(), std::cout, std::cerr);
  if (line.result != ParseResult::Run) {
    printBanner(std::cout, line.result == ParseResult::Help);
    if (line.result == ParseResult::Help) printHelp(std::cout, words.front());
    std::cout.flush();
    return exitFile;
  }
  if (options().strict) {
    const std::vector<std::string> faults = complaints(line);
    for (const std::string& fault : faults) std::cerr << "ostrel: " << fault << '\n';
    if (!faults.empty()) return exitFile;
  }
  std::vector<std::string> sources(line.optionFiles.opened.begin(), line.optionFiles.opened.end());
  sources.push_back(options().input);
  std::vector<std::string> kept = sources;
  kept.insert(kept.end(), {options().output, options().percentFile, options().report});
  openLog(options().log, options().err, kept);
  if (line.optionFileLevel >= maxOptionFileLevel) {
    warning({"only ", std::to_string(maxOptionFileLevel),
             " levels of nested command line @file were read"});
  }
  const Progress progress;
  const int result = options().report.empty()
                         ? runLogged(words, start, sources, [](std::string_view, const Design&) {})
                         : runReported(words, start, sources);
  closeLog();
  return result;
}

}  // namespace ostrel
