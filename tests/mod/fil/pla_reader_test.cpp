// The reader of PLA files: what it stores, what it says, and where it goes on.
#include <gtest/gtest.h>
#include <sstream>

#include "fil/pla_writer.h"
#include "support/read_text.h"

namespace ostrel {
namespace {

std::string rowsOf(const PlaFile& file) {
  std::string rows;
  for (std::size_t i = 0; i < file.inputRows.size(); ++i) {
    rows.append(file.inputRows.row(i)).append(" ").append(file.outputRows.row(i)).append(";");
  }
  return rows;
}

const std::string header = ".i 2\n.o 2\n.ilb A B\n.ob X Y\n";

TEST(Reader, StoresRows) {
  const std::string spans = "product term spans more than one line\n";
  const struct {
    const char* text;
    const char* rows;
    std::string err;
  } table[] = {
      {"0x 01\n", "0- ~1;", ""},
      {"-1 23\n1- 4~\n2- -0\n", "-1 -~;1- 1~;-- -~;", ""},
      {".type fr\n11 01\n00 2-\n", "11 01;00 --;", ""},
      {"1- 10\n.type fdr\n0- 10\n", "1- 1~;0- 10;", ""},
      {"0 | 1 |\t1 0 rest\n", "01 1~;", ""},
      {"01\n1\n\n0\n", "01 1~;", spans + spans + spans},
      {"garbage 01 11\n", "01 11;", ""},
      {"01 11\n.end\n10 11\n", "01 11;10 11;", ""},
      {"01 1", "01 1~;", ""},
      {"0", "0- ~~;", ""},
      {"01\r\n\r11\r\n10 11\r\n", "01 ~1;10 11;", spans},
  };
  for (const auto& row : table) {
    const Reading reading = readText(header + row.text);
    EXPECT_EQ(reading.status, Status::Ok) << row.text;
    EXPECT_EQ(rowsOf(reading.file), row.rows) << row.text;
    EXPECT_EQ(reading.err, row.err) << row.text;
  }
}

TEST(Reader, ReportsFaultsAndGoesOn) {
  const struct {
    const char* text;
    Status status;
    const char* out;
    const char* err;
  } table[] = {
      {".i 3\n.o 1\n", Status::Ok, "", "Extra .i ignored\nExtra .o ignored\n"},
      {".p 1\n.p 2\n10 11\n", Status::Ok, "", "Extra .p ignored\n"},
      {"10 11\n.p 9\n", Status::Ok, "", "Extra .p ignored\n"},
      {"10 11\n.phase 10\n", Status::Ok, "Extra .phase ignored\n", ""},
      {"#.phase 10\n#.phase 11\n", Status::Ok, "Extra #.phase ignored\n", ""},
      {".type fx\n10 11\n", Status::Ok, "", "Unsupported value 'fx' in .type"},
      {". x\n10 11\n", Status::Ok, "", "Warning, no pla command follows '.'\n"},
      {"#$ TOTAL x\n#$ whatever\n", Status::Ok,
       "#$ TOTAL is not recognized\n#$ whatever is not recognized\n", ""},
      {"# plain\n#KX TITLE x\n#KL TITLE x\n#\n10 11\n", Status::Ok, "", ""},
      {"#$ FLIPFLOPS x\n10 11\n", Status::Ok, "", "Error reading #$ FLIPFLOPS\n"},
      {"#$ FLIPFLOPS 2 a\n.e\n10 11\n", Status::Ok, "",
       "Number of names mis-matched in #$ FLIPFLOPS.\n"},
      {"#$ STATEBITS x\n", Status::Ok, "", "Error reading number of StateBits names\n"},
      {"#$ STATEBITS 1 a b\n10 11\n", Status::Ok, "",
       "Number of bits mis-matched in #$ STATEBITS.\n"},
      {"#$ STATEBITS 0", Status::Ok, "", "Error reading input names in #$ STATEBITS.\n"},
      {"#$", Status::Ok, "", "Error reading comment\n"},
      {".type", Status::Fatal, "", "Error reading type in .type\n"},
      {".", Status::Fatal, "", "Error reading dot commands\n"},
      {".p -1\n10 11\n", Status::Fatal, "", "Error reading number in .p\n"},
      {".p 2147483648\n", Status::Fatal, "", "Error reading number in .p\n"},
      {".p 0x\n", Status::Fatal, "", "Error reading number in .p\n"},
      {".p 1\n10 11\n01 11\n", Status::Fatal, "", "Number of terms greater than .p field\n"},
      {".ilb A\n.e\n", Status::Fatal, "", "Number of inputs mis-matched in .ilb\n"},
      {".ob A\n.e\n", Status::Fatal, "", "Number of outputs mis-matched in .o\n"},
      {".ilb A", Status::Fatal, "", "Error reading input names in .ilb\n"},
      {"#$ PINS x\n", Status::Fatal, "", "Error reading #$ PINS\n"},
      {"#$ PINS 1000001\n", Status::Fatal, "", "Error reading #$ PINS\n"},
      {"#$ PINS 2 A", Status::Fatal, "", "Error reading names in #$ PINS\n"},
      {"#$ PINS 2 A\n.e\n", Status::Fatal, "", "Number of names mis-matched in #$ PINS.\n"},
      {"#$ NODES 1 A\n10 11\n", Status::Fatal, "", "Number of names mis-matched in #$ NODES.\n"},
  };
  for (const auto& row : table) {
    const Reading reading = readText(header + row.text);
    EXPECT_EQ(reading.status, row.status) << row.text;
    EXPECT_EQ(reading.out, row.out) << row.text;
    EXPECT_EQ(reading.err, row.err) << row.text;
  }
}

TEST(Reader, NeedsInputsAndOutputs) {
  EXPECT_EQ(readText(".i 2\n").status, Status::Fatal);
  EXPECT_EQ(readText(".i 2\n").err, "");
  EXPECT_EQ(readText("10 11\n").err, "Input file is not a correct PLA file.\n");
  EXPECT_EQ(readText(".o 1\n10 11\n").err,
            "no inputs found in PLA. (.ilb must be declared before terms)\n");
  EXPECT_EQ(readText(".i 1\n10 11\n").err,
            "no outputs found in PLA. (.ob must be declared before terms)\n");
  EXPECT_EQ(readText(".phase 1\n.i 010\n.o 0x2\n").err,
            "no outputs found in PLA. (.o must be declared before .phase)\n");
  EXPECT_EQ(readText(".i 010\n.o 0x2\n").file.count(NameKind::Input), 8);
  EXPECT_EQ(readText(".i 1000001\n.o 1\n").err, "Error reading number in .i\n");
  // Without .p a file may have inputs times outputs rows.
  const Reading full = readText(".i 3\n.o 1\n.ilb A B C\n.ob Y\n1-- 1\n1-- 1\n1-- 1\n1-- 1\n");
  EXPECT_EQ(full.err, "Number of terms greater than .p field\n");
  EXPECT_EQ(full.file.termCount, 3);
}

TEST(Reader, SurvivesDirectivesInTheWrongOrder) {
  // Names in front of their count have no table to stand in, and rows without names only count.
  const Reading early = readText(".ilb\n.ob\n.i 2\n.o 1\n11 1\n");
  EXPECT_EQ(early.status, Status::Ok);
  EXPECT_EQ(early.file.name(NameKind::Input, 1).base, "");
  const Reading bare = readText(".i 900000\n.o 900000\n.p 2000000000\n1\n1\n1\n");
  EXPECT_EQ(bare.file.termCount, 3);
  EXPECT_EQ(readText(header + "#$ PINS 1 A\n#$ PINS 2 B C\n").file.name(NameKind::Pin, 2).base,
            "C");
  EXPECT_EQ(readText(header + ".ilb C- D\n").file.name(NameKind::Input, 0).polarity,
            Polarity::Inverted);
}

TEST(Reader, KeepsProperties) {
  const PlaFile file =
      readText(header + "#$ TITLE  x\n#KOL title y\n#$ TITLE\n#$\nMODULE m\n").file;
  EXPECT_EQ(file.properties[13], "#$ TITLE   x\n#$ TITLE  y\n#$ TITLE ");
  EXPECT_EQ(file.properties[propertyModule], "#$ MODULE  m");
  const std::string wide(1100, 'w');
  EXPECT_EQ(readText(header + "#$ TOOL" + wide + "\n#$ DEVICE " + wide + "\n10 11\n")
                .file.properties[2]
                .size(),
            std::string("#$ DEVICE ").size() + 1023);
}

TEST(PlaName, TakesAWordApart) {
  const struct {
    std::string word;
    std::string withPin;
    const char* extension;
    int half, polarity, pin, type, percent;
    std::string out, err;
  } table[] = {
      {"Q3.D:14", "Q3.D:14", ".D", 0, 0, 14, 0, 0, "", ""},
      {"ab.oe", "ab.OE", ".OE", 0, 0, 0, 0, 0, "", ""},
      {"A.D.X2", "A.D.X2", ".D", 2, 0, 0, 0, 0, "", ""},
      {"A.X2", "A.X2", ".X2", 2, 0, 0, 0, 0, "", ""},
      {"A.x1.foo-", "A.X1-", ".X1", 1, 1, 0, 0, 0, "", ""},
      {"A-:5", "A-:5", "", 0, 1, 5, 0, 0, "", ""},
      {"A-+:reg_t", "A+", "", 0, 2, 0, 3, 0, "", ""},
      {"A:XYZ", "A", "", 0, 0, 0, 0, 0, "", ""},
      {"A%", "A", "", 0, 0, 0, 0, 1, "", ""},
      {"A.D%", "A.D", ".D", 0, 0, 0, 0, 1, "", ""},
      {"A-%", "A-", "", 0, 1, 0, 0, 1, "", ""},
      {"A%-", "A", "", 0, 0, 0, 0, 1, "", ""},
      {"A:5%", "A:5", "", 0, 0, 5, 0, 0, "", ""},
      {"A:%", "A", "", 0, 0, 0, 0, 1, "", ""},
      {"A:9999999999", "A", "", 0, 0, 0, 0, 0, "", ""},
      {"A.bad", "A", "", 0, 0, 0, 0, 0, "", "Error: undefined extension name .BAD is used\n"},
      {"A.", "A", "", 0, 0, 0, 0, 0, "", "Error: undefined extension name . is used\n"},
      {"!A.c", "A.C", ".C", 0, 0, 0, 0, 0, "'!' ignored in !A.c\n", ""},
      {std::string(151, 'n'), std::string(150, 'n'), "", 0, 0, 0, 0, 0,
       "Warning: Signal '" + std::string(150, 'n') + "'\nwas truncated at 150 characters\n", ""},
  };
  for (const auto& row : table) {
    std::ostringstream out;
    std::ostringstream err;
    const PlaName name = PlaName::parse(row.word, {out, err});
    EXPECT_EQ(name.format(NameFormat::WithPin), row.withPin);
    EXPECT_EQ(extensionText(name.extension), row.extension) << row.word;
    EXPECT_EQ(static_cast<int>(name.xorHalf), row.half) << row.word;
    EXPECT_EQ(static_cast<int>(name.polarity), row.polarity) << row.word;
    EXPECT_EQ(name.pin, row.pin) << row.word;
    EXPECT_EQ(static_cast<int>(name.registerType), row.type) << row.word;
    EXPECT_EQ(name.percent, row.percent == 1) << row.word;
    EXPECT_EQ(out.str(), row.out);
    EXPECT_EQ(err.str(), row.err);
  }
}

TEST(Writer, WrapsNamesAtTheLineWidth) {
  PlaFile file = makePlaFile({2, 2, 1, 0}, PlaType::fr);
  auto& inputs = file.table(NameKind::Input).records;
  auto& outputs = file.table(NameKind::Output).records;
  inputs[0].base = std::string(74, 'a');  // column 5 + 74 + 1 = 80: the next name must wrap
  inputs[1].base = "b";
  outputs[0].base = std::string(74, 'x');  // the mark behind the name counts for the next one only
  outputs[0].percent = true;
  outputs[1].base = "y";
  outputs[1].polarity = Polarity::Inverted;
  file.table(NameKind::Pin).records[0].base = std::string(68, 'p');  // 12 + 68 reaches 80
  file.properties[propertyDate] = "#$ DATE x";
  std::ostringstream text;
  writePla(file, text, "unused");
  EXPECT_EQ(text.str(), "#$ DATE x\n#$ PINS 1 " + std::string(68, 'p') +
                            "\n.type fr\n.i 2\n.o 2\n.ilb " + std::string(74, 'a') + "\n b\n.ob " +
                            std::string(74, 'x') + "%\n y-\n.phase 11\n.p 0\n.end\n");
}

// But for register types, which no name is written with, and a blank in front of each property.
TEST(Writer, GivesBackWhatWasRead) {
  const std::string properties = "#$ DATE  then\n#$ MODULE  m\n#$ TITLE  all of it\n";
  const std::string rest =
      "#$ PINS 4 A:1 B+:2 Q-:12 Y\n#$ NODES 1 N\n#$ FLIPFLOPS 2 Q N\n"
      "#$ STATEBITS 2 Q N\n#$ STATEBITS 1 N\n"
      ".type fdr\n.i 4\n.o 5\n.ilb A B- Q.FB N\n.ob Q.D- Q.C Y% N.T.X1 N.T.X2\n.phase 10101\n"
      ".p 3\n1-0- 10~~-\n-011 ~1~01\n---- ~~1~~\n.end\n";
  const std::string typed = std::string(rest).replace(rest.find(":12"), 3, ":12:REG_D");
  const std::string shuffled = "#$ TITLE  all of it\n#$ DATE  then\n#$ MODULE  m\n" + typed;
  for (const std::string& text : {properties + rest, shuffled}) {
    Reading reading = readText(text);
    ASSERT_EQ(reading.status, Status::Ok) << reading.err;
    std::ostringstream written;
    writePla(reading.file, written, "unused");
    std::string back = written.str();
    for (std::size_t at = 0; (at = back.find("   ")) != std::string::npos;) back.erase(at, 1);
    EXPECT_EQ(back, properties + rest);
  }
}

}  // namespace
}  // namespace ostrel
