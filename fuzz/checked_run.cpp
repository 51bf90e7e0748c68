#include "checked_run.h"

#include <array>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string_view>

#include "design/design.h"
#include "fil/pla_file.h"
#include "run/options.h"
#include "run/pipeline.h"
#ifdef OSTREL_VERIFY
#include "verify/judge.h"
#endif

namespace {

ostrel::Options optionsFrom(std::span<const std::uint8_t, optionBytes> bytes) {
  ostrel::Options options;
  options.xorSynthesis = (bytes[0] & 1) != 0;
  options.speed = (bytes[0] & 2) != 0;
  options.ffBeforeInverter = (bytes[0] & 4) != 0;
  options.swapSetReset = (bytes[0] & 8) == 0;
  options.invert = (bytes[0] & 16) == 0;
  options.reduce = (bytes[0] & 32) == 0;
  options.internalFeedback = (bytes[0] & 64) == 0;
  options.noXorOnT = (bytes[0] & 128) != 0;
  options.splitMax = bytes[1] % 24;
  options.shareMin = 1 + bytes[2] % 5;
  options.clusterSize = 1 + bytes[2] / 5 % 20;
  unsigned modes = bytes[3];
  for (auto* mode :
       {&options.ckMode, &options.ceMode, &options.arMode, &options.apMode, &options.oeMode}) {
    *mode = static_cast<ostrel::SetSelector>((1 + modes) % 3);
    modes /= 3;
  }
  return options;
}

#ifdef OSTREL_VERIFY
ostrel::verify::RunOptions judgedOptions(const ostrel::Options& options) {
  ostrel::verify::RunOptions judged;
  const auto choice = [](ostrel::SetSelector s) {
    return static_cast<ostrel::verify::SetChoice>(s);
  };
  judged.clock = choice(options.ckMode);
  judged.clockEnable = choice(options.ceMode);
  judged.reset = choice(options.arMode);
  judged.set = choice(options.apMode);
  judged.outputEnable = choice(options.oeMode);
  judged.splitMax = options.splitMax;
  judged.clusterSize = options.clusterSize;
  judged.xorSynthesis = options.xorSynthesis;
  judged.reduce = options.reduce;
  judged.ffBeforeInverter = options.ffBeforeInverter;
  judged.swapSetReset = options.swapSetReset;
  judged.speed = options.speed;
  judged.invert = options.invert;
  return judged;
}
#endif

/// Reads a file without a word on the console.
ostrel::Status readQuietly(ostrel::PlaFile& file, const std::string& text) {
  std::istringstream stream(text);
  std::ostringstream silent;
  silent.setstate(std::ios::badbit);
  return file.read(stream, {silent, silent});
}

/// The command line of the run, to try it again by hand.
std::string wordsFor(const ostrel::Options& options) {
  static constexpr std::array<std::string_view, 3> sets = {"off", "on", "min"};
  std::ostringstream words;
  words << (options.xorSynthesis ? "-xor " : "") << (options.speed ? "-speed " : "")
        << (options.noXorOnT ? "-nxt " : "") << (options.ffBeforeInverter ? "-ff_inv yes " : "")
        << (options.swapSetReset ? "" : "-sr no ") << (options.invert ? "" : "-invert no ")
        << (options.reduce ? "" : "-reduce none ") << (options.internalFeedback ? "" : "-ifb no ")
        << "-split " << options.splitMax << " -share " << options.shareMin << " -clust "
        << options.clusterSize;
  const auto set = [&](std::string_view word, ostrel::SetSelector mode) {
    words << " " << word << " " << sets[static_cast<std::size_t>(mode)];
  };
  set("-ck", options.ckMode);
  set("-ce", options.ceMode);
  set("-ar", options.arMode);
  set("-ap", options.apMode);
  set("-oe", options.oeMode);
  return words.str();
}

[[noreturn]] void fail(std::string_view why, const std::string& input, const std::string& output) {
  std::cerr.clear();
  std::cerr << why << "\n" << wordsFor(ostrel::options()) << "\n" << input << output;
  std::abort();
}

}  // namespace

void runChecked(std::span<const std::uint8_t, optionBytes> bytes, const std::string& text) {
  std::cerr.setstate(std::ios::badbit);  // a design without columns is reported there
  const ostrel::Options options = optionsFrom(bytes);
  ostrel::setOptions(options);
  ostrel::PlaFile input;
  if (readQuietly(input, text) != ostrel::Status::Ok) return;
  ostrel::Design design(input);
  if (ostrel::runPipeline(design) != ostrel::Status::Ok) return;
  std::ostringstream written;
  design.targetPla.write(written);
  if (design.columns().empty() || design.targetPla.count(ostrel::NameKind::Output) == 0) return;

  ostrel::PlaFile output;
  if (readQuietly(output, written.str()) != ostrel::Status::Ok) {
    fail("the output can't be read", text, written.str());
  }
#ifdef OSTREL_VERIFY
  constexpr int effort = 2000;
  const auto verdict = ostrel::verify::verify(input, output, judgedOptions(options), effort);
  for (const auto& finding : verdict.findings) {
    if (finding.outcome == ostrel::verify::Outcome::Different) {
      fail(finding.subject + ": " + finding.detail, text, written.str());
    }
  }
#endif
}
