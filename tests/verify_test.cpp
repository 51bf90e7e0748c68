// The verifier: planted faults are found and shown, harmless changes pass, and what a run gives up
// by itself is neither.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

#include "fil/pla_reader.h"
#include "verify/command.h"
#include "verify/judge.h"

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
  return verify(fileOf(in), fileOf(out), readRunOptions(wordsOf(options)), defaultEffort);
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

/// The verdict in one line: "=" for all proven, else what is not, as "subject: detail" in front of
/// a ! for different and a ? for not comparable.
std::string summary(const Verdict& verdict) {
  std::string text;
  for (const Finding& f : verdict.findings) {
    if (f.outcome == Outcome::Equivalent) continue;
    text += (f.outcome == Outcome::Different ? "!" : "?") + f.subject + ": " + f.detail + "\n";
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
    const Verdict verdict = verify(in, out, {}, defaultEffort);
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
  expectAll({
      {"A B Y||fr|A B|Y|11 1,00 0", "A B Y||f|A B|Y|1- 1", "", "="},
      {"A B Y||fr|A B|Y|11 1,00 0", "A B Y||f|A B|Y|-- 1", "",
       "!Y, logic: with A=0 B=0: INPUT says 0"},
      {"A B Y||fr|A B|Y|1- 1,-1 0", "A B Y||f|A B|Y|1- 1", "", "="},  // 11 is both, and open
      {"A B Y||fr|A B|Y-|1- 1,0- 0", "A B Y||f|A B|Y|0- 1", "", "="},
      {"A B Y||f|A B|Y|11 1,0- -", "A B Y||f|A B|Y|-1 1", "", "="},
      {"A B Y||f|A B|Y|11 1,0- -", "A B Y||f|A B|Y|1- 1", "", "!Y, logic: with A=1 B=0"},
      {"A B Y||f|A B|Y|11 1", "A B Y||f|A B|Y|11 1,00 -", "", "!Y, logic: with A=0 B=0"},
      {"A B Y||fr|A B|Y|-- ~", "A B Y||f|A B|Y|-- 1", "", "="},
      {"A B Y||f|A B|Y|-- ~", "A B Y||f|A B|Y|11 1", "", "!Y, logic: with A=1 B=1"},
      // What INPUT leaves open in a node it must leave open in the readers, in the same sense.
      {"A B Y|N|fr|A B N|Y N|--1 1~,--0 0~,11- ~1", "A B Y|N|f|A B N|Y N|1-- 11", "", "="},
      {"A B Y|N|fr|A B N|Y N|--1 1~,--0 0~,11- ~1", "A B Y|N|f|A B N|Y N|1-- 1~,-1- ~1", "",
       "!Y, logic: with A="},
      {"A B Y|N|fr|A B N|Y N|--1 1~,--0 0~,11- ~1", "A B Y||f|A B|Y|-0 1", "",
       "!Y, logic: with A=1 B=1"},
  });
}

TEST(Verify, NamesWhatTheRunItselfGivesUp) {
  const std::string reg = "A B Q||fr|A B|Q.D Q.C|0- 0~,-1 ~0";
  expectAll({
      {reg, "A B Q||f|A B|Q.D-|0- 1", "", "?Q, clock: the ON set of a control function"},
      {reg, "A B Q||f|A B|Q.D- Q.C-|0- 1~,-1 ~1", "-ck min", "="},
      {reg, "A B Q||f|A B|Q.C-|-1 1", "-ck min -reduce none", "?Q, logic: the options keep the ON"},
      {reg, "A B Q||f|A B|Q.C-|-1 1", "-ck min", "!Q, logic: OUTPUT has no such function"},
      {"A B Q||f|A B|Q.D Q.C|0- 1~,-1 ~1", "A B Q||f|A B|Q.D|0- 1", "-ck off",
       "?Q, clock: -ck off"},
      {"A B Q||f|A B|Q.D Q.C|0- 1~,-1 ~1", "A B Q||f|A B|Q.D|0- 1", "", "!Q, clock: OUTPUT has no"},
      {"A B Y||fd|A B|Y|-- ~", "A B Y||f|A B|A|-- ~", "", "?Y, logic: a column of an fd file"},
      // A clock of two terms became a literal of N, whose name mark gives the wrong sense.
      {"A B Q|N-|f|A B N|Q.D Q.C N|1-- 1~~,11- ~11,00- ~11",
       "A B Q|N-|f|A B N|Q.D Q.C N|1-- 1~~,--0 ~1~,11- ~~1,00- ~~1", "", "?Q, clock: it became"},
      {"A B Q|N|f|A B N|Q.D Q.C N|1-- 1~~,11- ~11,00- ~11",
       "A B Q|N|f|A B N|Q.D Q.C N|1-- 1~~,--0 ~1~,11- ~~1,00- ~~1", "", "!Q, clock: with"},
      // A half that became a literal and was then, with the other half, exchanged for its OFF set.
      {"A B C S Q||fdr|A B C S|S Q.T.X1- Q.T.X2|---- ~11,---- ~1~,--0- 000,010- 000",
       "A B C S Q||f|A B C S.PIN|S Q.T.X1 Q.T.X2-|--1- 11~,---0 ~~1", "",
       "?Q, logic: it became a literal of S"},
      {"A B S|M N Q|fdr|A B M.Q N|S Q.T.X1- Q.T.X2|---- ~1~,10-- 111,01-- 111,---- ~~0,---0 00~,"
       "-00- 00~",
       "A B S|N Q|f|A B N S.D|S- Q.T.X1 Q.T.X2-|--0- 1~~,-0-- 1~~,---- ~1~,---1 ~~1", "",
       "?Q, logic: rows of 0 alone read M"},
      // A literal of a node that reads itself, beside one of a pin that can be off.
      {"A B P|N Q|f|A B N.Q|P P.OE N Q.T.X1- Q.T.X2|--0 ~~11~,--- ~~11~,01- ~~~~1,00- 1~111,11- "
       "1~111",
       "A B P|N Q|f|A B N.Q P.PIN|P P.OE N Q.T.X1 Q.T.X2-|00-- 1~~~~,11-- 1~~~~,---- ~~1~~,01-- "
       "~~~1~,"
       "---1 ~~~1~,--1- ~~~~1",
       "", "?Q, logic: terms that P already had"},
      {"A B Y|N|f|A B N|Y- N.X1 N.X2|--1 1~~,1-- ~1~,-1- ~~1",
       "A B Y||f|A B|Y.X1- Y.X2-|1- 1~,-1 ~1", "", "?Y, logic: it took over the XOR pair of N"},
      {"A Y Z||f|A|Y.X1 Y.X2 Z|1 1~1", "A Y Z||f|A|Z|1 1", "",
       "?Y, logic: an XOR half without rows of 1"},
      {"A Y Z||f|A|Y.X1 Y.X2 Y.OE Z|1 1~~1", "A Y Z||f|A|Z|1 1", "",
       "?Y, output enable: an output enable that is never on"},
      // Where rows of 1 and of 0 meet, the value is open, and can be 0 all over.
      {"A Y Z||fr|A|Y Y.OE Z|- 00~,1 ~11", "A Y Z||f|A|Z|1 1", "-oe min",
       "?Y, output enable: an output enable that is never on"},
      // Only the row of 0 that stands for Y read M, and M went as unread.
      {"A B Y|M|fr|A B M|Y M|1-- 1~,-1- 1~,-01 0~,0-- ~1,1-- ~0", "A B Y||f|A B|Y-|-0 1", "",
       "?Y, logic: rows of 0 alone read M"},
      // Terms that P had are read at its pin, where it can be off.
      {"A B E P Q||f|A B E|P P.OE Q.D Q.C|11- 1~~1,00- 1~~1,--1 ~1~~,1-- ~~1~",
       "A B E P Q||f|A B E P.PIN|P P.OE Q.D Q.C|11-- 1~~~,00-- 1~~~,--1- ~1~~,1--- ~~1~,---1 ~~~1",
       "", "?Q, clock: terms that P already had"},
  });
}

TEST(Verify, KnowsTheFlipFlopInFrontOfTheInverter) {
  const std::string toggles = "A Y|N|f|A N|Y N.D N.C N.AR|-1 1~~~,-0 ~1~~,1- ~~1~,0- ~~~1";
  const std::string turned = "A Y|N|f|A N|Y N.D N.C N.AP|-0 1~~~,-0 ~1~~,1- ~~1~,0- ~~~1";
  const std::string pin = "A Q Y||f|A Q.Q|Q.D Q.C Q.AR Y|1- 1~~~,-1 ~1~1,0- ~~1~";
  const std::string inverted = "A Q Y||f|A Q.Q|Q.D- Q.C Q.AP Y|0- 1~~~,-0 ~1~1,0- ~~1~";
  expectAll({
      {toggles, turned, "-ff_inv yes", "="},
      {toggles, turned, "", "!Y, logic: with N=1: "},
      {toggles, replaced(turned, "-0 1~~~", "-1 1~~~"), "-ff_inv yes", "!"},
      {toggles, replaced(turned, ".AP", ".AR"), "-ff_inv yes", "!N, "},
      {pin, inverted, "-ff_inv yes", "="},
      {pin, inverted, "", "!"},
      {pin, replaced(inverted, "-0 ~1~1", "-1 ~1~1"), "-ff_inv yes",
       "!Q, clock: with Q.Q=1, so OUTPUT reads Q.Q=0: "},
      {pin, replaced(inverted, ".AP", ".AR"), "-ff_inv yes", "!Q, reset"},
      {pin, replaced(inverted, ".AP", ".AR"), "-ff_inv yes -sr no", "?Q, reset: -sr no"},
      {replaced(pin, ".AR", ".ASYNC"), replaced(inverted, ".AP", ".SYNC"), "-ff_inv yes",
       "?Q, reset: .ASYNC and .SYNC"},
  });
}

TEST(Verify, TellsAPinThatCanBeOffFromItsOwnValue) {
  const std::string tri = "A E P Y||f|A E P|P P.OE Y|1-- 1~~,-1- ~1~,--1 ~~1";
  expectAll({
      {tri, replaced(tri, "A E P|P", "A E P.PIN|P"), "", "="},
      {tri, replaced(tri, "A E P|P", "A E P.FB|P"), "", "!Y, logic: with"},
      {replaced(tri, "-1- ~1~", "--- ~1~"),
       replaced(replaced(tri, "-1- ~1~", "--- ~1~"), "A E P|P", "A E P.D|P"), "", "="},
      {replaced(tri, "A E P|P", "A E P.FB|P"), replaced(tri, "--1 ~~1", "1-- ~~1"), "", "="},
      {tri, replaced(tri, "--1 ~~1", "1-- ~~1"), "", "!Y, logic: with"},
  });
}

TEST(Verify, JudgesTheFormOfTheOutput) {
  const std::string wide = "A B C D Y||f|A B C D|Y|1--- 1,-1-- 1,--1- 1,---1 1";
  const std::string pair = "A B C D Y||f|A B C D|Y.X1 Y.X2|1--- 1~,-1-- 1~,--1- 1~,---1 ~1";
  const std::string d = "A B Q|N|f|A B|Q.D Q.C|1- 1~,-1 ~1";
  expectAll({
      {wide, wide, "-split 4", "="},
      {wide, wide, "-split 3", "!Y: 4 terms, and the options allow 3"},
      {pair, pair, "-split 4", "="},
      {pair, pair, "-split 3 -cluster 4", "!Y: 3 terms, and the options allow 2"},
      {pair, pair, "-split 3 -cluster 5", "="},
      {d, replaced(d, "Q.D", "Q.T"), "", "!Q: the register type has changed"},
      {d, replaced(d, "Q.C", "Q.CE"), "", "!Q, clock: OUTPUT has no such function"},
      {d, replaced(d, "A B Q|", "A Q|"), "", "!OUTPUT: B stands in a column but is not declared"},
      {d, replaced(d, "A B Q|", "A B Q X|"), "", "!X: the pin is not in INPUT"},
      {d, replaced(d, "Q.D Q.C", "Q.D Q.D"), "", "!OUTPUT: Q.D is given a second time"},
      {d, replaced(d, "Q.D Q.C", "Q.D Q.S"), "", "!OUTPUT: Q.S gives its signal a second register"},
      {d, replaced(d, "Q.C", "Q.J"), "", "!OUTPUT: Q.J is not supported"},
      {d, replaced(d, "|A B|", "|A B.OE|"), "", "!OUTPUT: B.OE cannot be an input column"},
      {d, replaced(d, "|N|", "|N A|"), "", "!OUTPUT: A is declared twice"},
      {d, replaced(d, "A B Q|N", "A Q|B N"), "", "!B: the pin has become a node"},
      {replaced(d, "A B Q|N", "A Q|B N"), d, "", "!B: the node has become a pin"},
      {"A B Y|N|f|A B N|N.D N.C Y|1-- 1~~,-1- ~1~,--1 ~~1", "A B Y||f|A B|Y|1- 1", "",
       "!N: the registered node is missing in OUTPUT"},
      {wide, "A B C D Y|M|f|A B C D M|Y M.D M.C|----1 1~~,1---- ~1~,-1--- ~~1", "",
       "!M: the new node is not combinational"},
      {wide, "A B C D Y|M|f|A B C D M|Y|1---- 1,-1--- 1,--1-- 1,---1- 1", "",
       "!M: the new node has no function"},
      {"A Y||f|A|Y.X1 Y.X2|1 1~", "A Y||f|A|Y.X1|1 1", "", "!Y, logic: only one half of an XOR"},
      {d, "A Q|N|f|A|Q.D Q.C|1 1~,1 ~1", "", "!B: the pin is missing in OUTPUT"},
      {wide, "A B C D Y|M N|f|A B C D M N|Y M N|----1- 1~~,-----1 ~1~,----1- ~~1", "",
       "new nodes of OUTPUT form a loop"},
      // A loop of the design itself is cut, on both sides at once.
      {"A B Y|N|f|A B N|Y N|--1 1~,11- ~1,1-1 ~1", "A B Y|N|f|A B N|Y N|--1 1~,11- ~1,1-1 ~1", "",
       "="},
  });
}

TEST(Verify, GivesUpWithinTheEffort) {
  std::string in = "A B C D E F G H Y||f|A B C D E F G H|Y|";
  for (unsigned v = 0; v < 256; ++v) {
    if (__builtin_popcount(v) % 2 == 0) continue;
    for (unsigned bit = 0; bit < 8; ++bit) in += (v >> bit & 1U) != 0 ? '1' : '0';
    in += " 1,";
  }
  const std::string out =
      "A B C D E F G H Y|P R|f|A B C D E F G H P R|Y.X1 Y.X2 P.X1 P.X2 R.X1 R.X2|"
      "--------10 1~~~~~,--------01 1~~~~~,------10-- ~1~~~~,------01-- ~1~~~~,"
      "10-------- ~~1~~~,01-------- ~~1~~~,--10------ ~~~1~~,--01------ ~~~1~~,"
      "----1----- ~~~~1~,-----1---- ~~~~~1";
  in.pop_back();
  EXPECT_EQ(summary(judge(in, out)), "=");
  EXPECT_EQ(summary(verify(fileOf(in), fileOf(out), {}, 0)),
            "?Y, logic: the effort was not enough\n");
}

TEST(Verify, AnswersOnTheCommandLine) {
  const auto folder = std::filesystem::temp_directory_path() / "ostrel_verify_test";
  std::filesystem::create_directories(folder);
  const auto write = [&](const char* name, const std::string& text) {
    std::ofstream(folder / name) << text;
    return (folder / name).string();
  };
  const std::string a = write("a", plaText(base));
  const std::string b = write("b", plaText(replaced(base, "11-- 1", "10-- 1")));
  const std::string split = write("opts", "-split\n2 -clust 5\n");
  const std::string reg = write("reg", plaText("A Q||f|A|Q.D Q.C|1 1~,0 ~1"));
  const std::string noClock = write("noclock", plaText("A Q||f|A|Q.D|1 1"));
  const std::string announced = write("announced", replaced(plaText(base), ".p 5", ".p 9"));
  const std::string broken = write("broken", ".i x\n");
  const struct {
    std::string arguments;
    int code;
    const char *out, *err;
  } runs[] = {{a + " " + a, 0, "equivalent: 3 functions proven\n", ""},
              {a + " " + a + " -split 2 -OUTPUT x -mod m -Foo 1", 0, "equivalent: 3", ""},
              {"--list " + a + " " + a, 0, "equivalent: Y, logic\nequivalent: Z, logic\n", ""},
              {a + " " + b, 1, "2 functions proven, 1 different, 0 not comparable\n", ""},
              {b + " " + b + " @" + split, 0, "equivalent", ""},
              {a + " " + announced, 1, "different: OUTPUT: it announces 9 rows and has 5\n", ""},
              {reg + " " + noClock + " -CKx off", 3, "not comparable: Q, clock: -ck off", ""},
              {reg + " " + noClock + " -ck", 1, "different: Q, clock", ""},
              {a + " " + a + " --effort 5 --effort=7", 0, "equivalent", ""},
              {a + " " + broken, 2, "", "is not a usable PLA file\n"},
              {noClock + "x " + a, 2, "", "cannot read"},
              {a, 2, "", "usage: "},
              {"-xor " + a + " " + a, 2, "", "usage: "},
              {a + " " + a + " --effort=x", 2, "", "--effort needs a number"},
              {a + " " + a + " --foo", 2, "", "unknown option --foo"},
              {"--help", 0, "Exit code: 0 equivalent", ""},
              {"--version", 0, "ostrel-verify ", ""}};
  for (const auto& run : runs) {
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(verifyMain(wordsOf(run.arguments), out, err), run.code) << run.arguments << out.str();
    EXPECT_NE(out.str().find(run.out), std::string::npos) << run.arguments << out.str();
    EXPECT_NE(err.str().find(run.err), std::string::npos) << run.arguments << err.str();
  }
  std::filesystem::remove_all(folder);
}

TEST(Verify, FollowsWhatTheRunTakesOut) {
  // A node in no column may give its name to a new node.
  EXPECT_EQ(summary(judge("A B Y|Y_0|f|A B|Y|11 1,00 1",
                          "A B Y|Y_0|f|A B Y_0|Y Y_0|--1 10,11- 01,00- 01")),
            "=");
  EXPECT_EQ(
      summary(judge("A B Y|Y_0|f|A B Y_0|Y Y_0|11- 10,00- 11",
                    "A B Y|Y_0|f|A B Y_0|Y Y_0|--1 10,11- 01,00- 01")),
      "?Y_0, logic: nothing reads it in INPUT, so the node of its name in OUTPUT is a new one\n");
  // A half without its other half is not written, and its word says nothing about the register.
  EXPECT_EQ(summary(judge("C A S||f|C A|S.D S.C S..X2|1- 101,-1 011",
                          "C A S||f|C A|S.D S.C|1- 10,-1 01")),
            "=");
  // The last pin can go, although a file without pins is no input.
  EXPECT_EQ(summary(judge("P|A Y|f|A|Y|1 1", "|A Y|f|A|Y|1 1")), "=");
  EXPECT_EQ(judge("|A Y|f|A|Y|1 1", "|A Y|f|A|Y|1 1").faults.size(), 1U);
}

}  // namespace
}  // namespace ostrel::verify
