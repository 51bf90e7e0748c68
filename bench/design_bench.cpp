// Whole designs in memory: reading, building and writing by rows; the passes in front of splitting
// against reading and writing; splitting with shared terms by the number of Equations.
#include <benchmark/benchmark.h>
#include <random>
#include <set>
#include <sstream>
#include <string>

#include "fil/pla_writer.h"
#include "run/options.h"
#include "run/pipeline.h"
#include "support/read_text.h"

namespace {

using ostrel::PlaFile;
using ostrel::Run;

constexpr int inputs = 64;

std::string header(int outputs, int rows) {
  std::string ins;
  std::string outs;
  for (int i = 0; i < inputs; ++i) ins += " i" + std::to_string(i);
  for (int o = 0; o < outputs; ++o) outs += " o" + std::to_string(o);
  return "#$ PINS " + std::to_string(inputs + outputs) + ins + outs + "\n.i 64\n.o " +
         std::to_string(outputs) + "\n.ilb" + ins + "\n.ob" + outs + "\n.p " +
         std::to_string(rows) + "\n";
}

std::string randomTerm(std::mt19937& random, unsigned literalsIn16) {
  std::string text(inputs, '-');
  for (char& c : text) {
    if (random() % 16 < literalsIn16) c = random() % 2 == 0 ? '0' : '1';
  }
  return text;
}

/// Rows with a mark in half of 32 columns.
std::string rowsFile(int rows) {
  std::mt19937 random(1);
  std::string text = header(32, rows);
  for (int r = 0; r < rows; ++r) {
    text += randomTerm(random, 8) + " ";
    for (int o = 0; o < 32; ++o) text += random() % 2 == 0 ? '0' : '1';
    text += "\n";
  }
  return text;
}

/// Functions of `terms` terms each, drawn from 3,000.
std::string sharedFile(int functions, int terms) {
  constexpr int pool = 3000;
  std::mt19937 random(1);
  std::vector<std::string> marks(pool, std::string(static_cast<std::size_t>(functions), '0'));
  for (int o = 0; o < functions; ++o) {
    std::set<unsigned> chosen;
    while (chosen.size() < static_cast<std::size_t>(terms))
      chosen.insert(static_cast<unsigned>(random() % pool));
    for (const unsigned r : chosen) marks[r][static_cast<std::size_t>(o)] = '1';
  }
  std::string text = header(functions, pool);
  for (const std::string& mark : marks) text += randomTerm(random, 3) + " " + mark + "\n";
  return text;
}

void throughTheSystem(benchmark::State& state) {
  ostrel::setOptions({});
  const std::string text = rowsFile(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    const PlaFile file = readText(text).file;
    Run run(file);
    ostrel::runPipeline(run);
    std::ostringstream written;
    writePla(run.target, written, "today");
    benchmark::DoNotOptimize(written.str().size());
  }
}
BENCHMARK(throughTheSystem)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void readingAndWriting(benchmark::State& state) {
  ostrel::setOptions({});
  const std::string text = sharedFile(2000, 20);
  for (auto _ : state) {
    PlaFile file = readText(text).file;
    std::ostringstream written;
    writePla(file, written, "today");
    benchmark::DoNotOptimize(written.str().size());
  }
}
BENCHMARK(readingAndWriting)->Unit(benchmark::kMillisecond);

void passesBeforeSplitting(benchmark::State& state) {
  ostrel::setOptions({});
  const PlaFile file = readText(sharedFile(2000, 20)).file;
  for (auto _ : state) {
    state.PauseTiming();
    Run run(file);
    ostrel::runPipeline(run, "build");
    state.ResumeTiming();
    ostrel::runPipeline(run, "absorb inversions");
  }
}
BENCHMARK(passesBeforeSplitting)->Unit(benchmark::kMillisecond);

void splittingSharedTerms(benchmark::State& state) {
  ostrel::Options options;
  options.splitMax = 16;
  options.shareMin = 2;
  ostrel::setOptions(options);
  const PlaFile file = readText(sharedFile(static_cast<int>(state.range(0)), 200)).file;
  for (auto _ : state) {
    Run run(file);
    ostrel::runPipeline(run);
    benchmark::DoNotOptimize(run.design.columns().size());
  }
}
BENCHMARK(splittingSharedTerms)->Arg(32)->Arg(64)->Unit(benchmark::kMillisecond);

}  // namespace
