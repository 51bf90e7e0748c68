// A whole run in this process: arbitrary bytes as the input file, with options from the first four
// bytes. The output must be readable again, and the verifier must not call it different.
#include <cstdint>
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

ostrel::Options optionsFrom(const std::uint8_t* bytes) {
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

[[noreturn]] void fail(std::string_view why, const std::string& output) {
  std::cerr.clear();
  std::cerr << why << "\n" << output;
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 4) return 0;
  std::cerr.setstate(std::ios::badbit);  // a design without columns is reported there
  const ostrel::Options options = optionsFrom(data);
  ostrel::setOptions(options);
  ostrel::PlaFile input;
  const std::string text(reinterpret_cast<const char*>(data + 4), size - 4);
  if (readQuietly(input, text) != ostrel::Status::Ok) return 0;
  ostrel::Design design(input);
  if (ostrel::runPipeline(design) != ostrel::Status::Ok) return 0;
  std::ostringstream written;
  design.targetPla.write(written);
  if (design.columns().empty() || design.targetPla.count(ostrel::NameKind::Output) == 0) return 0;

  ostrel::PlaFile output;
  if (readQuietly(output, written.str()) != ostrel::Status::Ok) {
    fail("the output can't be read", written.str());
  }
#ifdef OSTREL_VERIFY
  constexpr int effort = 2000;
  const auto verdict = ostrel::verify::verify(input, output, judgedOptions(options), effort);
  for (const auto& finding : verdict.findings) {
    if (finding.outcome == ostrel::verify::Outcome::Different) {
      fail(finding.subject + ": " + finding.detail, written.str());
    }
  }
#endif
  return 0;
}
