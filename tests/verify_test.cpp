// The verifier: planted faults are found and shown, harmless changes pass, and what a run gives up
// by itself is a difference that is named.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <unistd.h>

#include "fil/pla_reader.h"
#include "run/command_line.h"
#include "support/program.h"
#include "verify/check/strict_reader.h"
#include "verify/command.h"
#include "verify/compare/judge.h"
#include "verify/compare/losses.h"

namespace ostrel::verify {
namespace {

std::vector<std::string> wordsOf(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

/// A file: "pins|nodes|type|inputs|outputs|rows", rows like "1-0 1~" with a comma between two.
std::string plaText(const std::string& design) {
  std::vector<std::string> parts(6);
  std::istringstream stream(design);
  for (std::string& part : parts) std::getline(stream, part, '|');
  const auto counted = [](const std::string& head, const std::string& names) {
    return head + " " + std::to_string(wordsOf(names).size()) + " ";
  };
  std::string text = counted("#$ PINS", parts[0]) + parts[0] + "\n";
  if (!parts[1].empty()) text += counted("#$ NODES", parts[1]) + parts[1] + "\n";
  text += ".type " + parts[2] + counted("\n.i", parts[3]) + counted("\n.o", parts[4]);
  text += "\n.ilb " + parts[3] + "\n.ob " + parts[4] + "\n.p " +
          std::to_string(1 + std::ranges::count(parts[5], ',')) + "\n";
  std::ranges::replace(parts[5], ',', '\n');
  return text + parts[5] + "\n.end\n";
}

PlaFile fileOf(const std::string& design) {
  std::istringstream stream(plaText(design));
  PlaFile file;
  EXPECT_EQ(readPla(stream, standardConsole(), file), Status::Ok) << design;
  return file;
}

Verdict judge(const std::string& in, const std::string& out, const std::string& options = "") {
  return verify(fileOf(in), fileOf(out),
                parseCommandLine(wordsOf("ostrel -input - " + options)).options, {});
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

/// The verdict in one line: "=" for all proven, else what is not, as "subject: detail" in front of
/// a ! for different and a ? for undecided, with the head of the loss's heading.
std::string summary(const Verdict& verdict) {
  std::string text;
  for (const Finding& f : verdict.findings) {
    if (f.outcome == Outcome::Proven) continue;
    text += (f.outcome == Outcome::Different ? "!" : "?") + f.subject + ": " + f.detail;
    text += f.loss.empty() ? "\n" : " (" + std::string(f.loss) + ")\n";
  }
  return text.empty() ? "=" : text;
}

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

const std::string base =
    "A B C Y Z|N|f|A B C N|Y Z- N.X1 N.X2|11-- 1~~~,--01 1~~~,0-1- ~1~~,1--- ~~1~,-0-- ~~~1";

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

struct Case {
  std::string in, out, options, expected;  // expected: the whole summary, or a part of it
};

void expectAll(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    const std::string seen = summary(judge(c.in, c.out, c.options));
    EXPECT_TRUE(c.expected == "=" ? seen == "=" : seen.find(c.expected) != std::string::npos)
        << c.in << "\n"
        << c.out << "\n"
        << c.options << "\n"
        << seen;
  }
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

TEST(Verify, NamesWhatARunProbablyLost) {
  const std::string reg = "A B Q||fr|A B|Q.D Q.C|0- 0~,-1 ~0";
  expectAll({
      {reg, "A B Q||f|A B|Q.D-|0- 1", "", "!Q, clock: OUTPUT has no such function (Keeping the ON"},
      {reg, "A B Q||f|A B|Q.D- Q.C-|0- 1~,-1 ~1", "-ck min", "="},
      {"A B Q||f|A B|Q.D Q.C|0- 1~,-1 ~1", "A B Q||f|A B|Q.D|0- 1", "-ck off",
       "such function (Keeping the OFF set of a control function)"},
      {"A B Q||f|A B|Q.D Q.C|0- 1~,-1 ~1", "A B Q||f|A B|Q.D|0- 1", "",
       "!Q, clock: OUTPUT has no such function\n"},
      {"A B Y||fd|A B|Y|-- ~", "A B Y||f|A B|A|-- ~", "", "(An empty column of an `fd` file)"},
      // A clock of two terms became a literal of N, whose name mark gives the wrong sense.
      {"A B Q|N-|f|A B N|Q.D Q.C N|1-- 1~~,11- ~11,00- ~11",
       "A B Q|N-|f|A B N|Q.D Q.C N|1-- 1~~,--0 ~1~,11- ~~1,00- ~~1", "",
       "!Q, clock: with A=1 B=0, so OUTPUT reads N=0: INPUT says 0, OUTPUT says 1 (A control"},
      {"A B Y|N|f|A B N|Y- N.X1 N.X2|--1 1~~,1-- ~1~,-1- ~~1",
       "A B Y||f|A B|Y.X1- Y.X2-|1- 1~,-1 ~1", "", "(Folding by a reader with a mark)"},
      {"A Y Z||f|A|Y.X1 Y.X2 Y.OE Z|1 1~~1", "A Y Z||f|A|Z|1 1", "",
       "(A pair with a half that has no ON terms)"},
      // What reads a Signal with a loss shares it.
      {"A B Y Z|M|fr|A B M Y|Y M Z|1--- 1~~,-1-- 1~~,-01- 0~~,0--- ~1~,1--- ~0~,---1 ~~1,---0 ~~0",
       "A B Y Z||f|A B|Y- Z-|-0 11", "",
       "!Y, logic: with A=1 B=0: INPUT says 1, OUTPUT says 0 (Reading a node in its OFF set)\n"
       "!Z, logic: with A=1 B=0: INPUT says 1, OUTPUT says 0 (Reading a node in its OFF set)\n"},
      // Terms that P had are read at its pin, where it can be off.
      {"A B E P Q||f|A B E|P P.OE Q.D Q.C|11- 1~~1,00- 1~~1,--1 ~1~~,1-- ~~1~",
       "A B E P Q||f|A B E P.PIN|P P.OE Q.D Q.C|11-- 1~~~,00-- 1~~~,--1- ~1~~,1--- ~~1~,---1 ~~~1",
       "", "(A reused pin with an output enable)"},
      {"A C Q:REG_L||f|A C|Q.D Q.C|1- 1~,-1 ~1", "A C Q||f|A C|Q.D Q.C|1- 1~,-1 ~1", "",
       "!Q: the register type was REG_L and is REG_D (A register type that the columns don't"},
  });
}

TEST(Verify, KnowsTheLossesOfTheDecisions) {
  std::istringstream decisions(readFile(OSTREL_DECISIONS));
  std::vector<std::string> headings;
  bool isThere = false;
  std::string text;
  for (std::string line; std::getline(decisions, line);) {
    if (line.starts_with("## ")) isThere = line == "## Where a run can change a function";
    if (isThere) text += line + " ";
  }
  for (std::size_t at = 0; (at = text.find("- **", at)) != std::string::npos; ++at) {
    headings.push_back(text.substr(at + 4, text.find("**", at + 4) - at - 4));
    if (headings.back().ends_with('.')) headings.back().pop_back();
  }
  std::vector<std::string> ids;
  for (const Loss& loss : losses()) ids.emplace_back(loss.id);
  std::ranges::sort(headings);
  std::ranges::sort(ids);
  EXPECT_EQ(ids, headings);
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

TEST(Verify, JudgesTheFormOfTheOutput) {
  const std::string wide = "A B C D Y||f|A B C D|Y|1--- 1,-1-- 1,--1- 1,---1 1";
  const std::string pair = "A B C D Y||f|A B C D|Y.X1 Y.X2|1--- 1~,-1-- 1~,--1- 1~,---1 ~1";
  const std::string d = "A B Q|N|f|A B|Q.D Q.C|1- 1~,-1 ~1";
  expectAll({
      {wide, wide, "-split 4", "="},
      {wide, wide, "-split 3", "!Y: 4 terms, and the options allow 3"},
      {wide, wide, "-split 3 -xor -reduce none", "!Y: 4 terms, and the options allow 3"},
      {pair, pair, "-split 4", "="},
      {pair, pair, "-split 3 -cluster 4", "!Y: 3 terms, and the options allow 2"},
      {pair, pair, "-split 3 -cluster 5", "="},
      {d, replaced(d, "Q.D", "Q.T"), "", "!Q: the register type was REG_D and is REG_T"},
      {d, replaced(d, "B Q|", "B Q:REG_L|"), "", "!Q: the register type was REG_D and is REG_L"},
      {replaced(d, "Q.D", "Q.D.X1"), d, "", "="},  // a half alone is the function
      {d, replaced(d, "Q.D", "Q.D.X1"), "", "!Q: only one half of an XOR pair is left"},
      {pair,
       replaced(replaced(replaced(pair, "Y.X2|", "Y.X2 Y.D|"), "1~,", "1~~,"), "---1 ~1",
                "---1 ~1~"),
       "", "!Y: a plain column stands beside the XOR pair"},
      {d, replaced(d, "Q.C", "Q.CE"), "", "!Q, clock: OUTPUT has no such function"},
      {d, replaced(d, "A B Q|", "A Q|"), "", "!OUTPUT: B stands in a column but is not declared"},
      {d, replaced(d, "A B Q|", "A B Q X|"), "", "!X: the pin is not in INPUT"},
      {d, replaced(d, "A B Q|", "A B- Q|"), "", "!B: the mark of its declaration has changed"},
      {d, replaced(d, "A B Q|", "A B Q:3|"), "", "!Q: its pin number was 0 and is 3"},
      {d, replaced(d, "Q.D Q.C", "Q.D Q.D"), "", "!OUTPUT: Q.D is given a second time"},
      {d, replaced(d, "Q.C", "Q.J"), "", "!OUTPUT: Q.J is not supported"},
      {d, replaced(d, "A B Q|N", "A Q|B N"), "", "!B: the pin has become a node"},
      {"A B Y|N|f|A B N|N.D N.C Y|1-- 1~~,-1- ~1~,--1 ~~1", "A B Y||f|A B|Y|1- 1", "",
       "!N: the registered node is missing in OUTPUT"},
      {wide, "A B C D Y|M|f|A B C D M|Y M.D M.C|----1 1~~,1---- ~1~,-1--- ~~1", "",
       "!M: the new node is not combinational"},
      {wide, "A B C D Y|M|f|A B C D M|Y|1---- 1,-1--- 1,--1-- 1,---1- 1", "",
       "!M: the new node has no function"},
      {d, "A Q|N|f|A|Q.D Q.C|1 1~,1 ~1", "", "!B: the pin is missing in OUTPUT"},
      {wide, "A B C D Y|M N|f|A B C D M N|Y M N|----1- 1~~,-----1 ~1~,----1- ~~1", "",
       "new nodes of OUTPUT form a loop"},
      // A node that nothing reads is gone, and may give its name to a new one.
      {"A B Y|Y_0|f|A B|Y|11 1,00 1", "A B Y|Y_0|f|A B Y_0|Y Y_0|--1 10,11- 01,00- 01", "", "="},
      {"A B Y|Y_0|f|A B Y_0|Y Y_0|11- 10,00- 11", "A B Y|Y_0|f|A B Y_0|Y Y_0|--1 10,11- 01,00- 01",
       "", "="},
      {"A B Y|N|f|A B N|Y N|11- 10,00- 11", "A B Y|N|f|A B N|Y N|11- 10,00- 10,10- 01", "",
       "!N, logic: with"},
      // The last pin can go, although a file without pins is no input.
      {"P|A Y|f|A|Y|1 1", "|A Y|f|A|Y|1 1", "", "="},
  });
  EXPECT_EQ(judge("|A Y|f|A|Y|1 1", "|A Y|f|A|Y|1 1").faults.size(), 1U);
}

// The parity of eight inputs as 128 terms and as four pairs.
std::pair<std::string, std::string> parity() {
  std::string in = "A B C D E F G H Y||f|A B C D E F G H|Y|";
  for (unsigned v = 0; v < 256; ++v) {
    if (__builtin_popcount(v) % 2 == 0) continue;
    for (unsigned bit = 0; bit < 8; ++bit) in += (v >> bit & 1U) != 0 ? '1' : '0';
    in += " 1,";
  }
  in.pop_back();
  return {in,
          "A B C D E F G H Y|P R|f|A B C D E F G H P R|Y.X1 Y.X2 P.X1 P.X2 R.X1 R.X2|"
          "--------10 1~~~~~,--------01 1~~~~~,------10-- ~1~~~~,------01-- ~1~~~~,"
          "10-------- ~~1~~~,01-------- ~~1~~~,--10------ ~~~1~~,--01------ ~~~1~~,"
          "----1----- ~~~~1~,-----1---- ~~~~~1"};
}

TEST(Verify, GivesUpWithinTheEffort) {
  const auto [in, out] = parity();
  EXPECT_EQ(summary(judge(in, out)), "=");
  EXPECT_EQ(summary(verify(fileOf(in), fileOf(out), {}, {0, {}})),
            "?Y, logic: the effort was not enough\n");
}

class OnTheCommandLine : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = std::filesystem::temp_directory_path() /
              ("ostrel_verify_test_" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder_);
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  std::string write(const char* name, const std::string& text) {
    std::ofstream(folder_ / name) << text;
    return (folder_ / name).string();
  }

  std::filesystem::path folder_;
};

TEST_F(OnTheCommandLine, Answers) {
  const std::string a = write("a", "#$ TITLE  one\n" + plaText(base));
  const std::string retitled = write("retitled", "#$ TITLE two\n" + plaText(base));
  const std::string named = write("named", "#$ MODULE  m\n#$ TITLE   one\n" + plaText(base));
  const std::string b = write("b", plaText(replaced(base, "11-- 1", "10-- 1")));
  const std::string split = write("opts", "-split\n2 -clust 5\n");
  const std::string log =
      write("log", "ostrel\n\nostrel -input b -split 1 @" + split + " \nmore\n");
  const std::string reg = write("reg", plaText("A Q||f|A|Q.D Q.C|1 1~,0 ~1"));
  const std::string noClock = write("noclock", plaText("A Q||f|A|Q.D|1 1"));
  const std::string announced = write("announced", replaced(plaText(base), ".p 5", ".p 9"));
  const std::string small = write("small", replaced(plaText(base), ".p 5", ".p 4"));
  const std::string cut = write("cut", replaced(plaText(base), ".end", ""));
  const std::string percent = write("percent", replaced(plaText(base), "Z-", "Z%"));
  const auto [in, out] = parity();
  const std::string hard = write("in", plaText(in)) + " " + write("out", plaText(out));
  const struct {
    std::string arguments;
    int code;
    const char *out, *err;
  } runs[] = {
      {a + " " + a, 0, "proven: 3 functions\n", ""},
      {b + " " + b + " -split 2 -OUTPUT x -Foo 1 --new=x", 0, "proven: 3", ""},
      {"--list " + a + " " + a, 0, "proven: Y, logic\nproven: Z, logic\n", ""},
      {a + " " + b, 1, "2 functions proven, 2 different, 0 undecided\n", ""},
      {b + " " + b + " @" + split, 0, "proven", ""},
      {b + " " + b + " --log " + log, 0, "proven", ""},
      {b + " " + b + " --log=" + log + " -split 1 -reduce none -clust 1 -split 2", 0, "", ""},
      {b + " " + b + " --log " + write("empty", ""), 2, "", "there is no command line in it"},
      {a + " " + retitled, 1, "different: OUTPUT: the property TITLE has changed\n", ""},
      {a + " " + named, 1, "different: OUTPUT: the property MODULE has changed\n", ""},
      {a + " " + named + " -mod m", 0, "", ""},
      {b + " " + announced, 1, "different: OUTPUT: it announces 9 rows and has 5\n", ""},
      {b + " " + small, 1, "Number of terms greater than .p field", ""},
      {b + " " + cut, 1, "different: OUTPUT: it is cut off: .end is missing\n", ""},
      {b + " " + b + "x", 1, "different: OUTPUT: it can't be read\n", ""},
      {b + " " + percent + " -percent " + retitled, 1, "is not OUTPUT with dashes", ""},
      {announced + " " + percent + " -percent " + write("pc", plaText(base)), 0, "", ""},
      {reg + " " + noClock + " -CKx off", 1,
       "  probably: the options keep the OFF set of this function, and it has none"
       " (Keeping the OFF set of a control function)\nhint: a run with --lossless keeps",
       ""},
      {hard + " --effort 0", 3, "0 functions proven, 0 different, 1 undecided\n", ""},
      {hard + " --effort=100000", 0, "", ""},
      {small + " " + a, 2, "", "is not a usable PLA file\n"},
      {noClock + "x " + a, 2, "", "it can't be read"},
      {a, 2, "", "usage: "},
      {"-xor " + a + " " + a, 2, "", "unknown option -xor"},
      {a + " " + a + " --effort=x", 2, "", "--effort needs a number"},
      {"--foo " + a + " " + a, 2, "", "unknown option --foo"},
      {"--check " + b, 0, "", ""},
      {"--check " + cut, 1, ":14: the file is cut off: .end is missing\n", ""},
      {"--help", 0, "Exit code: 0 proven", ""},
      {"--version", 0, "ostrel-verify ", ""}};
  for (const auto& run : runs) {
    std::ostringstream seen;
    std::ostringstream err;
    EXPECT_EQ(verifyMain(wordsOf(run.arguments), seen, err), run.code) << run.arguments << "\n"
                                                                       << seen.str() << err.str();
    EXPECT_NE(seen.str().find(run.out), std::string::npos) << run.arguments << "\n" << seen.str();
    EXPECT_NE(err.str().find(run.err), std::string::npos) << run.arguments << "\n" << err.str();
  }
}

TEST(Check, SaysWhatTheReaderTakesInSilence) {
  const std::string good = plaText("A B Y||f|A B|Y|11 1,0- 1");
  const struct {
    const char *from, *to;
    std::size_t line;
    const char* text;
  } faults[] = {{"PINS 3", "PINS 4", 1, "PINS says 4, and there are 3 names"},
                {"A B Y", "A B Y y", 1, "y is Y of line 1 in another spelling"},
                {"PINS", "PINSS", 1, "unknown property PINSS"},
                {".type f", ".type g", 2, "unknown type, read as f"},
                {".i 2", ".i 3", 5, ".i says 3, and there are 2 names"},
                {".o 1", ".o 0x1", 4, "no decimal number behind .o"},
                {".ilb A B", ".ilb A C", 5, "C is not declared"},
                {".ob Y", ".ob Y.DD", 6, "unknown extension in Y.DD, read as none"},
                {".ob Y", ".obb Y", 6, "unknown directive .obb"},
                {".p 2", ".p 3", 7, ".p says 3, and there are 2 rows"},
                {"11 1", "11", 8, "a row of 2 characters, and .i and .o make 3"},
                {"11 1", "111 1", 8, "a row of 4 characters, and .i and .o make 3"},
                {"11 1", "1\n1 1", 9, "a row of 2 characters, and .i and .o make 3"},
                {"11 1", "1x 1", 8, "the character x in a row"},
                {"11 1", "1- 1", 5, "no row uses B"},
                {"11 1", "stray", 8, "text that is passed over: stray"},
                {".end", ".end\n11 1", 11, "behind .end, which ends nothing: it is read"},
                {".end", "", 10, "the file is cut off: .end is missing"}};
  EXPECT_TRUE(readStrictly(good).empty());
  for (const auto& fault : faults) {
    const std::vector<Complaint> seen = readStrictly(replaced(good, fault.from, fault.to));
    EXPECT_TRUE(std::ranges::any_of(
        seen, [&](const Complaint& c) { return c.line == fault.line && c.text == fault.text; }))
        << fault.to << ": " << (seen.empty() ? "none" : seen[0].text);
  }
}

TEST_F(OnTheCommandLine, ASecondSolverAgreesOnTheQuestions) {
  const std::string solver = OSTREL_SECOND_SOLVER;
  if (solver.empty()) GTEST_SKIP() << "neither minisat nor picosat is installed";
  for (const std::string circuit : {"clip", "alu2", "5xp1"}) {
    const std::string in = std::string(OSTREL_CIRCUITS) + "/" + circuit + ".tt2";
    const std::string out = (folder_ / "out.tt3").string();
    const auto questions = folder_ / circuit;
    ASSERT_EQ(runIn(folder_.string(), OSTREL_PROGRAM,
                    {"ostrel", "-input", in, "-output", out, "-xor", "-split", "5"})
                  .exitCode,
              0);
    std::ostringstream seen;
    std::ostringstream err;
    ASSERT_EQ(
        verifyMain({in, out, "-xor", "-split", "5", "--export", questions.string()}, seen, err), 0)
        << seen.str() << err.str();
    int asked = 0;
    for (const auto& entry : std::filesystem::directory_iterator(questions)) {
      if (entry.path().extension() != ".cnf") continue;
      auto proof = entry.path();
      const bool isProven = std::filesystem::exists(proof.replace_extension(".drat"));
      const int code = runIn(folder_.string(), solver, {solver, entry.path().string()}).exitCode;
      EXPECT_EQ(code, isProven ? 20 : 10) << entry.path();
      ++asked;
    }
    EXPECT_GT(asked, 3) << circuit;
  }
}

}  // namespace
}  // namespace ostrel::verify
