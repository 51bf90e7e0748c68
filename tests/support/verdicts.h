// Verdicts on files given as one line each.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "fil/pla_reader.h"
#include "run/command_line.h"
#include "verify/compare/judge.h"

namespace ostrel::verify {

inline std::vector<std::string> wordsOf(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

/// A file: "pins|nodes|type|inputs|outputs|rows", rows like "1-0 1~" with a comma between two.
inline std::string plaText(const std::string& design) {
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

inline PlaFile fileOf(const std::string& design) {
  std::istringstream stream(plaText(design));
  PlaFile file;
  EXPECT_EQ(readPla(stream, standardConsole(), file), Status::Ok) << design;
  return file;
}

inline Verdict judge(const std::string& in, const std::string& out,
                     const std::string& options = "") {
  return verify(fileOf(in), fileOf(out),
                parseCommandLine(wordsOf("ostrel -input - " + options)).options, {});
}

inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

/// The verdict in one line: "=" for all proven, else what is not, as "subject: detail" in front of
/// a ! for different and a ? for undecided, with the head of the loss's heading.
inline std::string summary(const Verdict& verdict) {
  std::string text;
  for (const Finding& f : verdict.findings) {
    if (f.outcome == Outcome::Proven) continue;
    text += (f.outcome == Outcome::Different ? "!" : "?") + f.subject + ": " + f.detail;
    text += f.loss.empty() ? "\n" : " (" + std::string(f.loss) + ")\n";
  }
  return text.empty() ? "=" : text;
}

inline const std::string base =
    "A B C Y Z|N|f|A B C N|Y Z- N.X1 N.X2|11-- 1~~~,--01 1~~~,0-1- ~1~~,1--- ~~1~,-0-- ~~~1";

struct Case {
  std::string in, out, options, expected;  // expected: the whole summary, or a part of it
};

inline void expectAll(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    const std::string seen = summary(judge(c.in, c.out, c.options));
    EXPECT_TRUE(c.expected == "=" ? seen == "=" : seen.find(c.expected) != std::string::npos)
        << c.in << "\n"
        << c.out << "\n"
        << c.options << "\n"
        << seen;
  }
}

// The parity of eight inputs as 128 terms and as four pairs.
inline std::pair<std::string, std::string> parity() {
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

}  // namespace ostrel::verify
