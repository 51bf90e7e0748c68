// Random designs with random options, run as told and with --lossless: how many are proven, and
// which outputs the option changes although nothing is lost without it. survey COUNT [FIRST
// [FOLDER]]: a line for each design that is out of the ordinary, then the counts. With a folder
// each design goes there as SEED.tt2, its options as SEED.words, and nothing is run.
#include <array>
#include <fstream>
#include <iostream>
#include <map>
#include <random>
#include <sstream>

#include "support/checked_run.h"
#include "support/make_design.h"
#include "support/read_text.h"

namespace {

constexpr std::int64_t effort = 1'000'000;

struct Sample {
  std::string text;
  std::vector<std::string> words;
};

Sample sampleOf(unsigned seed) {
  std::mt19937 random(seed);
  std::array<std::uint8_t, optionBytes> options{};
  for (auto& byte : options) byte = static_cast<std::uint8_t>(random());
  std::vector<std::uint8_t> bytes(20 + random() % 200);
  for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
  Bytes source(bytes);
  return {makeDesign(source), wordsFrom(options)};
}

void store(const Sample& sample, const std::string& path) {
  std::ofstream(path + ".tt2") << sample.text;
  std::ofstream words(path + ".words");
  for (const std::string& word : sample.words) words << word << ' ';
}

/// The first line of the log that says what went wrong or was chosen.
std::string reasonIn(const std::string& log, std::string_view kind) {
  std::istringstream lines(log);
  for (std::string line; std::getline(lines, line);) {
    if (line.find(kind) != std::string::npos) return line;
  }
  return "";
}

std::string classOf(const Sample& sample, std::string& detail) {
  const Reading input = readText(sample.text);
  if (input.status != ostrel::Status::Ok) return "can't be read";
  std::vector<std::string> words = sample.words;
  const RunResult told = runWith(input.file, words);
  const bool isToldProven = !told.written.empty() && judge(input.file, told, effort).isProven;
  words.emplace_back("--lossless");
  const RunResult lossless = runWith(input.file, words);
  if (lossless.written.empty()) {
    detail = reasonIn(lossless.log, "Error");
    return lossless.status == ostrel::Status::Ok ? "no columns" : "refused";
  }
  const Judgement judgement = judge(input.file, lossless, effort);
  detail = judgement.different;
  if (!detail.empty()) return "DIFFERENT";
  if (!judgement.isProven) return "undecided";
  if (told.written == lossless.written) return "proven, the same bytes";
  if (!isToldProven) return "proven, and a loss without the option";
  std::istringstream lines(lossless.log);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("<Note>") && told.log.find(line) == std::string::npos) {
      detail += line + " ";
    }
  }
  return "proven either way, with other bytes";
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const auto count = static_cast<unsigned>(std::stoul(argv[1]));
  const auto first = static_cast<unsigned>(argc > 2 ? std::stoul(argv[2]) : 0);
  std::map<std::string, unsigned> counts;
  std::cerr.setstate(std::ios::badbit);  // a design without columns is reported there
  for (unsigned seed = first; seed < first + count; ++seed) {
    const Sample sample = sampleOf(seed);
    if (argc > 3) {
      store(sample, std::string(argv[3]) + "/" + std::to_string(seed));
      continue;
    }
    std::string detail;
    const std::string name = classOf(sample, detail);
    ++counts[name];
    if (!detail.empty() || name == "undecided")
      std::cout << seed << ": " << name << ": " << detail << std::endl;
  }
  for (const auto& [name, number] : counts) std::cout << number << " " << name << "\n";
  return counts.contains("DIFFERENT") || counts.contains("undecided") ? 1 : 0;
}
