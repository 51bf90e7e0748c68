#include "run/run_report.h"

#include <algorithm>
#include <iostream>

#include "run/log.h"
#include "run/options.h"
#include "run/output_file.h"
#include "run/pipeline.h"
#include "run/same_file.h"

namespace ostrel {

RunRecorder::RunRecorder() : last_(std::chrono::steady_clock::now()) {
  report_.version = OSTREL_VERSION;
  setListener(
      [this](std::string_view kind, std::string_view text) { report_.history.hear(kind, text); });
}

RunRecorder::~RunRecorder() {
  setListener({});
}

void RunRecorder::step(std::string_view name, const Design& design) {
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - last_;
  report_.steps.push_back({name, taken.count()});
  report_.history.observe(name, design);
  if (name == firstStep) report_.before = measure(design);
  if (name == lastStep) report_.after = measure(design);
  last_ = std::chrono::steady_clock::now();  // to look on is no part of the next step
}

bool RunRecorder::writeFile(std::span<const std::string> kept) const {
  const std::string& name = options().report;
  const auto isReport = [&name](const std::string& other) { return isSameFile(name, other); };
  OutputFile file;
  return std::ranges::none_of(kept, isReport) && file.open(name) &&
         file.write([this](std::ostream& stream) { writeJson(report_, stream); });
}

void RunRecorder::write(const std::vector<std::string>& words, int exitCode,
                        std::span<const std::string> kept) {
  const Options& opts = options();
  report_.words = words;
  report_.exitCode = exitCode;
  report_.history.close();
  if (opts.report == "-") return writeTable(report_, std::cerr);
  report_.input = hashFile(opts.input);
  if (exitCode == 0) report_.output = hashFile(opts.output);
  if (writeFile(kept)) return;
  message(toErrorAndLog, {"<Warning> ", toolTag, ": failed to write ", opts.report, "\n"});
}

}  // namespace ostrel
