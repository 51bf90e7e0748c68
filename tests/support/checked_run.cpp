#include "support/checked_run.h"

#include <array>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string_view>
#include <vector>

#include "fil/pla_writer.h"
#include "run/command_line.h"
#include "run/pipeline.h"
#include "support/read_text.h"
#ifdef OSTREL_VERIFY
#include "verify/compare/judge.h"
#endif

namespace {

using Words = std::vector<std::string>;

/// The options of the run, as words of its command line.
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
  if (bytes[1] / 24 % 2 == 1) line << " --minimize";
  unsigned modes = bytes[3];
  for (const char* word : {" -ck ", " -ce ", " -ar ", " -ap ", " -oe "}) {
    line << word << sets[modes % 3];
    modes /= 3;
  }
  std::istringstream stream(line.str());
  return {std::istream_iterator<std::string>(stream), {}};
}

[[noreturn]] void fail(std::string_view why, const Words& words, const std::string& input,
                       const std::string& output) {
  std::cerr.clear();
  std::cerr << why << "\n";
  for (const std::string& word : words) std::cerr << word << ' ';
  std::cerr << "\n" << input << output;
  std::abort();
}

}  // namespace

void runChecked(std::span<const std::uint8_t, optionBytes> bytes, const std::string& text) {
  std::cerr.setstate(std::ios::badbit);  // a design without columns is reported there
  const Words words = wordsFrom(bytes);
  Words line = words;
  line.insert(line.begin(), "ostrel");
  ostrel::setOptions(ostrel::parseCommandLine(line).options);
  const Reading input = readText(text);
  if (input.status != ostrel::Status::Ok) return;
  ostrel::Run run(input.file);
  if (ostrel::runPipeline(run) != ostrel::Status::Ok) return;
  std::ostringstream written;
  writePla(run.target, written, "today");
  if (run.design.columns().empty() || run.target.count(ostrel::NameKind::Output) == 0) return;

  const Reading output = readText(written.str());
  if (output.status != ostrel::Status::Ok) {
    fail("the output can't be read", words, text, written.str());
  }
#ifdef OSTREL_VERIFY
  // A run may lose what it was told to lose.
  constexpr int effort = 2000;
  const auto verdict =
      ostrel::verify::verify(input.file, output.file, ostrel::options(), {effort, {}});
  for (const auto& finding : verdict.findings) {
    if (finding.outcome == ostrel::verify::Outcome::Different && finding.loss.empty()) {
      fail(finding.subject + ": " + finding.detail, words, text, written.str());
    }
  }
#endif
}
