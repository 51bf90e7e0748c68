// Planted faults are found and shown, and harmless changes pass.
#include "verify/compare/judge.h"

#include <gtest/gtest.h>
#include <map>

#include "support/verdicts.h"

namespace ostrel::verify {
namespace {

/// The value of a combinational signal, by a plain reading of the rows.
bool valueOf(const PlaFile& file, const std::string& name,
             const std::map<std::string, bool>& given) {
  if (const auto known = given.find(name); known != given.end()) return known->second;
  bool value = false;
  for (std::size_t c = 0; c < file.table(NameKind::Output).records.size(); ++c) {
    const PlaName& output = file.name(NameKind::Output, static_cast<int>(c));
    if (output.base != name) continue;
    bool on = false;
    for (std::size_t r = 0; r < file.outputRows.size(); ++r) {
      bool term = file.outputRows.row(r)[c] == '1';
      for (std::size_t i = 0; term && i < file.inputRows.row(r).size(); ++i) {
        const char literal = file.inputRows.row(r)[i];
        const std::string& column = file.name(NameKind::Input, static_cast<int>(i)).base;
        term = literal == '-' || valueOf(file, column, given) == (literal == '1');
      }
      on = on || term;
    }
    value = value != (on != ((output.polarity == Polarity::Inverted) != output.percent));
  }
  return value;
}

TEST(Verify, FindsPlantedFaultsAndShowsThem) {
  const struct {
    const char *what, *from, *to, *subject;
  } faults[] = {{"literal flipped", "11-- 1", "10-- 1", "Y, logic"},
                {"row dropped", "--01 1~~~,", "", "Y, logic"},
                {"mark removed", "Z-", "Z", "Z, logic"},
                {"mark of a half", "N.X1", "N.X1-", "N, logic"},
                {"outputs exchanged", "Y Z- N.X1", "Z Y- N.X1", "Y, logic"},
                {"inputs exchanged", "A B C N|", "B A C N|", "Z, logic"},
                {"half lost", "N.X1 N.X2|11-- 1~~~,--01 1~~~,0-1- ~1~~,1--- ~~1~,-0-- ~~~1",
                 "N.X1|11-- 1~~,--01 1~~,0-1- ~1~,1--- ~~1", "N, logic"},
                {"node changed", "-0-- ~~~1", "-1-- ~~~1", "N, logic"}};
  for (const auto& fault : faults) {
    const std::string changed = replaced(base, fault.from, fault.to);
    const PlaFile in = fileOf(base);
    const PlaFile out = fileOf(changed);
    const Verdict verdict = verify(in, out, {}, {});
    const auto found = std::ranges::find_if(
        verdict.findings, [&](const Finding& f) { return f.subject == fault.subject; });
    ASSERT_NE(found, verdict.findings.end()) << fault.what;
    ASSERT_EQ(found->outcome, Outcome::Different) << fault.what;
    // The assignment must settle the matter whatever the inputs are that it does not name.
    for (unsigned bits = 0; bits < 8; ++bits) {
      std::map<std::string, bool> given{{"A", bits & 1U}, {"B", bits & 2U}, {"C", bits & 4U}};
      for (const std::string& word : wordsOf(found->detail)) {
        if (word.size() > 2 && word[1] == '=') given[word.substr(0, 1)] = word[2] == '1';
      }
      const std::string name(1, fault.subject[0]);
      EXPECT_NE(valueOf(in, name, given), valueOf(out, name, given)) << fault.what << found->detail;
      EXPECT_NE(
          found->detail.find(std::string("INPUT says ") + (valueOf(in, name, given) ? "1" : "0")),
          std::string::npos);
    }
  }
}

TEST(Verify, AcceptsHarmlessChanges) {
  const std::vector<std::pair<std::string, std::string>> changes[] = {
      {{"11-- 1~~~", "110- 1~~~,111- 1~~~"}},
      {{"Y Z-", "Y- Z"},
       {"11-- 1~~~,--01 1~~~,0-1- ~1~~",
        "0-1- 1~~~,-01- 1~~~,0--0 1~~~,"
        "-0-0 1~~~,1--- ~1~~,--0- ~1~~"}},
      {{"Y Z-", "Y% Z%"}, {"11-- 1~~~,--01 1~~~", "0-1- 1~~~,-01- 1~~~,0--0 1~~~,-0-0 1~~~"}},
      {{"|N|", "|N M|"},
       {"C N|", "C N M|"},
       {"N.X2|", "N.X2 M|"},
       {"11-- 1~~~,--01 1~~~,0-1- ~1~~,1--- ~~1~,-0-- ~~~1",
        "----1 1~~~~,--01- 1~~~~,0-1-- ~1~~~,1---- ~~1~~,-0--- ~~~1~,11--- ~~~~1"}},
      {{"N.X1 N.X2", "N"},
       {"1--- ~~1~,-0-- ~~~1", "11-- ~~1~,00-- ~~1~"},
       {"Z- N|", "Z- N Y.X2|"},
       {"Y Z-", "Y.X1 Z-"}}};
  for (const auto& edits : changes) {
    std::string changed = base;
    for (const auto& [from, to] : edits) changed = replaced(changed, from, to);
    EXPECT_EQ(summary(judge(base, changed)), "=") << changed;
  }
  // A node that came, one that went, and a shared one that is read in the place of its terms.
  const std::string flat = "A B Y Z||f|A B|Y Z|11 11,00 ~1";
  const std::string deep = "A B Y Z|M|f|A B M|Y Z M|--1 11~,00- ~1~,11- ~~1";
  EXPECT_EQ(summary(judge(flat, deep)), "=");
  EXPECT_EQ(summary(judge(deep, flat)), "=");
  EXPECT_EQ(summary(judge(flat, replaced("A B Y Z||f|A B Y|Y Z|11- 1~,--1 ~1,00- ~1", "", ""))),
            "=");
}

TEST(Verify, ComparesOnTheCareSet) {
  const std::string open = "A B Y Z|N|fr|A B N|Y Z N|--1 11~,--0 00~,11- ~~1";
  expectAll({
      {"A B Y||fr|A B|Y|11 1,00 0", "A B Y||f|A B|Y|1- 1", "", "="},
      {"A B Y||fr|A B|Y|11 1,00 0", "A B Y||f|A B|Y|-- 1", "",
       "!Y, logic: with A=0 B=0: INPUT says 0"},
      {"A B Y||fr|A B|Y|1- 1,-1 0", "A B Y||f|A B|Y|1- 1", "", "="},  // 11 is both, and open
      {"A B Y||fr|A B|Y-|1- 1,0- 0", "A B Y||f|A B|Y|0- 1", "", "="},
      {"A B Y||f|A B|Y|11 1,0- -", "A B Y||f|A B|Y|-1 1", "", "="},
      {"A B Y||f|A B|Y|11 1,0- -", "A B Y||f|A B|Y|1- 1", "", "!Y, logic: with A=1 B=0"},
      {"A B Y||f|A B|Y|11 1", "A B Y||f|A B|Y|11 1,00 -", "", "!Y: OUTPUT leaves points open"},
      {"A B Y||f|A B|Y|11 1", "A B Y||fr|A B|Y|11 1,0- 0,-0 0", "", "!OUTPUT: its type is not f"},
      {"A B Y||fr|A B|Y|-- ~", "A B Y||f|A B|Y|-- 1", "", "="},
      {"A B Y||f|A B|Y|-- ~", "A B Y||f|A B|Y|11 1", "", "!Y, logic: with A=1 B=1"},
      // A node that OUTPUT lacks is open but for 11: one choice has to do for both readers.
      {open, "A B Y Z||f|A B|Y Z|1- 11", "", "="},
      {open, "A B Y Z||f|A B|Y Z|-0 11", "", "!Y, logic: with A=1 B=1"},
      {open, "A B Y Z||f|A B|Y Z|1- 10,11 01", "", "suits either it or Z, logic"},
      {open, "A B Y Z|N|f|A B N|Y Z N|-1- 111", "", "="},
      {open, "A B Y Z|N|f|A B N|Y Z N|1-- 110,-1- ~~1", "", "!Y, logic: with A="},
  });
}

TEST(Verify, KnowsTheFlipFlopInFrontOfTheInverter) {
  const std::string toggles = "A Y|N|f|A N|Y N.D N.C N.AR|-1 1~~~,-0 ~1~~,1- ~~1~,0- ~~~1";
  const std::string turned = "A Y|N|f|A N|Y N.D N.C N.AP|-0 1~~~,-0 ~1~~,1- ~~1~,0- ~~~1";
  const std::string pin = "A Q Y||f|A Q.Q|Q.D Q.C Q.AR Y|1- 1~~~,-1 ~1~1,0- ~~1~";
  const std::string inverted = "A Q Y||f|A Q.Q|Q.D- Q.C Q.AP Y|0- 1~~~,-0 ~1~1,0- ~~1~";
  const std::string lost = "(`-ff_inv yes` and changes of polarity outside the choice of sets)";
  expectAll({
      {toggles, turned, "-ff_inv yes", "="},
      {toggles, turned, "", "!Y, logic: with N=1: "},
      {toggles, replaced(turned, "-0 1~~~", "-1 1~~~"), "-ff_inv yes", "!"},
      {toggles, replaced(turned, ".AP", ".AR"), "-ff_inv yes", "!N, "},
      {toggles, replaced(toggles, ".AR", ".AP"), "-ff_inv -xor -split 3", "!N, "},
      {pin, inverted, "-ff_inv yes", "="},
      {pin, inverted, "", "!"},
      {pin, replaced(inverted, "-0 ~1~1", "-1 ~1~1"), "-ff_inv yes",
       "!Q, clock: with Q.Q=1, so OUTPUT reads Q.Q=0: "},
      {pin, replaced(inverted, ".AP", ".AR"), "-ff_inv yes",
       "!Q, reset: OUTPUT has no such function " + lost},
      {pin, replaced(inverted, ".AP", ".AR"), "-ff_inv yes -sr no", "(`-ff_inv yes -sr no`)"},
      {replaced(pin, ".AR", ".ASYNC"), replaced(inverted, ".AP", ".SYNC"), "-ff_inv yes",
       "(Swapping `.SYNC` and `.ASYNC`)"},
  });
}

TEST(Verify, TellsAPinThatCanBeOffFromItsOwnValue) {
  const std::string tri = "A E P Y||f|A E P|P P.OE Y|1-- 1~~,-1- ~1~,--1 ~~1";
  const std::string on = replaced(tri, "-1- ~1~", "--- ~1~");
  expectAll({
      {tri, replaced(tri, "A E P|P", "A E P.PIN|P"), "", "="},
      {tri, replaced(tri, "A E P|P", "A E P.FB|P"), "", "!Y, logic: with"},
      {on, replaced(on, "A E P|P", "A E P.D|P"), "", "="},
      {on, "A E P Y||f|A E P|P Y|1-- 1~,--1 ~1", "", "="},  // always on, with and without a column
      {replaced(tri, "A E P|P", "A E P.FB|P"), replaced(tri, "--1 ~~1", "1-- ~~1"), "", "="},
      {tri, replaced(tri, "--1 ~~1", "1-- ~~1"), "", "!Y, logic: with"},
  });
}

TEST(Verify, AsksBothFilesWhereTheirLoopsAreAtRest) {
  const std::string plain = "A B Y||f|A B Y|Y|11- 1";
  const std::string latch = "A B Y||f|A B Y|Y|11- 1,--1 1";
  const std::string nodes = "A B Y|M N|f|A B M N|Y M N|---1 1~~,11-- ~1~,--1- ~~1,---1 ~1~";
  expectAll({
      {latch, latch, "", "="},
      {plain, latch, "", "!Y, logic: with B=0 Y=1: INPUT says 0, OUTPUT says 1"},
      {latch, plain, "", "!Y, logic: with B=0 Y=1: INPUT says 1, OUTPUT says 0"},
      // Oscillation is no state: the two agree where Y is at rest, and elsewhere none is.
      {"A Y||f|A Y|Y|-0 1,1- 1", "A Y||f|A Y|Y|10 1,00 1,11 1", "", "="},
      {"A Y||f|A Y|Y-|1- 1", "A Y||f|A Y|Y-|11 1", "", "!Y, logic: with A=1 Y=0: INPUT says 0"},
      // Nodes that INPUT alone has keep a state, which OUTPUT must have somewhere.
      {nodes, nodes, "", "="},
      {nodes, "A B Y||f|A B|Y|11 1", "", "!Y, logic: "},
      {nodes, "A B Y||f|A B|Y|-- 1", "", "!Y, logic: "},
      // Each node repeats the other, in both files.
      {"A Y|M N|f|A M N|Y M N|-1- 1~~,1-- 1~~,--1 ~1~,-1- ~~1",
       "A Y|M N|f|A M N|Y M N|--1 1~~,1-- 1~~,--1 ~1~,-1- ~~1", "", "="},
  });
}

TEST(Verify, GivesUpWithinTheEffort) {
  const auto [in, out] = parity();
  EXPECT_EQ(summary(judge(in, out)), "=");
  EXPECT_EQ(summary(verify(fileOf(in), fileOf(out), {}, {0, {}})),
            "?Y, logic: the effort was not enough\n");
}

}  // namespace
}  // namespace ostrel::verify
