#include "support/checked_run.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string_view>
#include <vector>

#include "fil/pla_writer.h"
#include "run/command_line.h"
#include "run/log.h"
#include "run/pipeline.h"
#include "support/read_text.h"
#ifdef OSTREL_VERIFY
#include "verify/compare/judge.h"
#endif

namespace {

using Words = std::vector<std::string>;

[[noreturn]] void fail(std::string_view why, const Words& words, const std::string& input,
                       const std::string& output) {
  std::cerr.clear();
  std::cerr << why << "\n";
  for (const std::string& word : words) std::cerr << word << ' ';
  std::cerr << "\n" << input << output;
  std::abort();
}

/// The choices that a log notes, in order.
Words notes(const RunResult& result) {
  Words found;
  std::istringstream stream(result.log);
  for (std::string line; std::getline(stream, line);) {
    if (line.starts_with("<Note>")) found.push_back(line);
  }
  std::ranges::sort(found);
  return found;
}

}  // namespace

Words wordsFrom(std::span<const std::uint8_t, optionBytes> bytes) {
  static constexpr std::array<std::string_view, 8> flags = {
      "-xor", "-speed", "-ff_inv yes", "-sr no", "-invert no", "-reduce none", "-ifb no", "-nxt"};
  static constexpr std::array<std::string_view, 3> sets = {"on", "min", "off"};
  std::ostringstream line;
  for (std::size_t i = 0; i < flags.size(); ++i) {
    if ((bytes[0] >> i & 1) != 0) line << flags[i] << ' ';
  }
  line << "-split " << bytes[1] % 24 << " -share " << 1 + bytes[2] % 5 << " -clust "
       << 1 + bytes[2] / 5 % 20;
  if (bytes[1] / 24 % 2 == 1) {
    static constexpr std::array<std::string_view, 5> ours = {
        " --minimize", " --factor", " --factor=1", " --factor --depth 1", " --factor=2 --depth 2"};
    line << ours[bytes[1] / 48 % ours.size()];
  }
  unsigned modes = bytes[3];
  for (const char* word : {" -ck ", " -ce ", " -ar ", " -ap ", " -oe "}) {
    line << word << sets[modes % 3];
    modes /= 3;
  }
  std::istringstream stream(line.str());
  return {std::istream_iterator<std::string>(stream), {}};
}

RunResult runWith(const ostrel::PlaFile& input, const Words& words) {
  Words line = words;
  line.insert(line.begin(), "ostrel");
  ostrel::setOptions(ostrel::parseCommandLine(line).options);
  std::ostringstream log;
  std::streambuf* console = std::cout.rdbuf(log.rdbuf());
  ostrel::openLog("", "", {});
  ostrel::Run run(input);
  RunResult result;
  result.status = ostrel::runPipeline(run);
  ostrel::closeLog();
  std::cout.rdbuf(console);
  result.log = log.str();
  const bool hasColumns =
      !run.design.columns().empty() && run.target.count(ostrel::NameKind::Output) > 0;
  if (result.status != ostrel::Status::Ok || !hasColumns) return result;
  std::ostringstream written;
  writePla(run.target, written, "today");
  result.written = written.str();
  return result;
}

Judgement judge([[maybe_unused]] const ostrel::PlaFile& input, const RunResult& result,
                [[maybe_unused]] std::int64_t effort) {
  Judgement judgement;
  const Reading output = readText(result.written);
  if (output.status != ostrel::Status::Ok) return {false, "the output can't be read", false};
#ifdef OSTREL_VERIFY
  const auto verdict = ostrel::verify::verify(input, output.file, ostrel::options(), {effort, {}});
  for (const auto& finding : verdict.findings) {
    if (finding.outcome != ostrel::verify::Outcome::Proven) judgement.isProven = false;
    if (finding.outcome != ostrel::verify::Outcome::Different || !judgement.isExplained) continue;
    judgement.different = finding.subject + ": " + finding.detail;
    judgement.isExplained = !finding.loss.empty();
  }
#endif
  return judgement;
}

void runChecked(std::span<const std::uint8_t, optionBytes> bytes, const std::string& text) {
  std::cerr.setstate(std::ios::badbit);  // a design without columns is reported there
  Words words = wordsFrom(bytes);
  const Reading input = readText(text);
  if (input.status != ostrel::Status::Ok) return;
  const RunResult told = runWith(input.file, words);
  if (!told.written.empty()) {
    const Judgement judgement = judge(input.file, told);
    if (!judgement.isExplained) fail(judgement.different, words, text, told.written);
  }
  words.emplace_back("--lossless");
  const RunResult lossless = runWith(input.file, words);
  if (lossless.written.empty()) return;
  const std::string different = judge(input.file, lossless).different;
  if (!different.empty()) fail(different, words, text, lossless.written);
  if (!told.written.empty() && told.written != lossless.written &&
      std::ranges::includes(notes(told), notes(lossless))) {
    fail("nothing says why the outputs differ", words, told.written, lossless.written);
  }
}
